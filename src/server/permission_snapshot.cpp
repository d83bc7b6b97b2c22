#include "server/permission_snapshot.h"

#include "bridges/files/file_data_bridge.h"
#include "platform/application_info.h"
#include "policy/bridge_capability_policy.h"

namespace bridge {

BridgePermissionSnapshot BridgeStatus::permissions() const {
    return {.calendar = permissionState(m_authorization, PrivacyService::calendar),
            .reminders = permissionState(m_authorization, PrivacyService::reminders),
            .calendarResources = {},
            .reminderListResources = {},
            .contacts = permissionState(m_authorization, PrivacyService::contacts),
            .music = permissionState(m_authorization, PrivacyService::music),
            .health = BridgePermissionState::unavailable,
            .home = BridgePermissionState::unavailable,
            .location = permissionState(m_authorization, PrivacyService::location),
            .fileRoots = static_cast<int64_t>(m_files.roots.get().size()),
            .capabilities = m_policy.capabilityStates()};
}

BridgeHealth BridgeStatus::health() const {
    return {"Brindlefox Apple Bridge", m_application.shortVersion().value_or("unknown"), permissions()};
}

} // namespace bridge
