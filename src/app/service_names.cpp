#include "app/service_names.h"

namespace bridge {

void nameScriptedServices(Platform& platform, const ScriptApplications& applications,
                          std::shared_ptr<const musicapp::Player> player) {
    using Group = BridgeCapabilityGroup;
    for (const auto group : {Group::pages, Group::numbers, Group::keynote})
        platform.services[group] = [&applications] { return applications.whyNoOffice().value_or("LibreOffice"); };
    platform.services[Group::music] = [player = std::move(player)] { return player->whyUnavailable().value_or("MPD"); };
}

} // namespace bridge
