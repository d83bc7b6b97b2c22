#pragma once

#include "adapters/jsonfile/service_settings.h"
#include "app/platform.h"

namespace bridge {

// Places and directions from where the settings say, in the place of any that the platform has; before a model is made
// of it.
void openMaps(EventLoop& loop, Platform& platform, const ServiceSettings& settings);

} // namespace bridge
