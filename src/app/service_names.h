#pragma once

#include "app/platform.h"
#include "app/script_applications.h"

namespace bridge {

// Has the platform say what plays its music and what opens its documents, or what to install. It keeps both.
void nameScriptedServices(Platform& platform, const ScriptApplications& applications,
                          std::shared_ptr<const musicapp::Player> player);

} // namespace bridge
