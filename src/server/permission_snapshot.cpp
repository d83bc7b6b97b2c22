#include "server/permission_snapshot.h"

#include "bridges/calendar/apple_data_bridge.h"
#include "bridges/files/file_data_bridge.h"
#include "bridges/location/location_data_bridge.h"
#include "platform/application_info.h"
#include "policy/bridge_capability_policy.h"

namespace bridge {

Task<BridgePermissionSnapshot> BridgeStatus::permissions() const {
    BridgePermissionSnapshot snapshot;
    snapshot.calendar = permissionState(m_authorization, PrivacyService::calendar);
    snapshot.reminders = permissionState(m_authorization, PrivacyService::reminders);
    snapshot.calendarResources = co_await m_dataBridge.calendarResources();
    snapshot.reminderListResources = co_await m_dataBridge.reminderListResources();
    snapshot.contacts = permissionState(m_authorization, PrivacyService::contacts);
    snapshot.music = permissionState(m_authorization, PrivacyService::music);
    snapshot.location = m_location.locationPermission();
    snapshot.fileRoots = static_cast<int64_t>(m_files.roots.get().size());
    snapshot.capabilities = m_policy.capabilityStates();
    co_return snapshot;
}

Task<BridgeHealth> BridgeStatus::health() const {
    BridgeHealth health;
    health.name = "Brindlefox Apple Bridge";
    health.version = m_application.shortVersion().value_or("unknown");
    health.permissions = co_await permissions();
    co_return health;
}

} // namespace bridge
