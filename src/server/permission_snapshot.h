#pragma once

#include "base/task.h"
#include "bridges/calendar/calendar_results.h"
#include "bridges/common/permission_state.h"

namespace bridge {

// Everything the user has granted, at one moment.
struct BridgePermissionSnapshot {
    BridgePermissionState calendar = BridgePermissionState::unknown;
    BridgePermissionState reminders = BridgePermissionState::unknown;
    BridgeResourceAccessSnapshot calendarResources;
    BridgeResourceAccessSnapshot reminderListResources;
    BridgePermissionState contacts = BridgePermissionState::unknown;
    BridgePermissionState music = BridgePermissionState::unknown;
    BridgePermissionState health = BridgePermissionState::unavailable; // always
    BridgePermissionState home = BridgePermissionState::unavailable;   // always
    BridgePermissionState location = BridgePermissionState::unknown;
    int64_t fileRoots = 0;
    std::map<std::string, bool> capabilities; // raw value to enabled

    static constexpr auto fields() {
        return std::tuple{required("calendar", &BridgePermissionSnapshot::calendar),
                          required("reminders", &BridgePermissionSnapshot::reminders),
                          required("calendarResources", &BridgePermissionSnapshot::calendarResources),
                          required("reminderListResources", &BridgePermissionSnapshot::reminderListResources),
                          required("contacts", &BridgePermissionSnapshot::contacts),
                          required("music", &BridgePermissionSnapshot::music),
                          required("health", &BridgePermissionSnapshot::health),
                          required("home", &BridgePermissionSnapshot::home),
                          required("location", &BridgePermissionSnapshot::location),
                          required("fileRoots", &BridgePermissionSnapshot::fileRoots),
                          required("capabilities", &BridgePermissionSnapshot::capabilities)};
    }
};
static_assert(listsEveryMember<BridgePermissionSnapshot>());

// The result of GET /health.
struct BridgeHealth {
    std::string name;
    std::string version;
    BridgePermissionSnapshot permissions;

    static constexpr auto fields() {
        return std::tuple{required("name", &BridgeHealth::name), required("version", &BridgeHealth::version),
                          required("permissions", &BridgeHealth::permissions)};
    }
};
static_assert(listsEveryMember<BridgeHealth>());

class AppleDataBridge;
class Authorization;
class ApplicationInfo;
class BridgeCapabilityPolicy;
class FileDataBridge;
class LocationDataBridge;

// Answers for the bridge as a whole. What it reads from must outlive it, and it its tasks.
class BridgeStatus {
public:
    BridgeStatus(const Authorization& authorization, const ApplicationInfo& application,
                 const BridgeCapabilityPolicy& policy, AppleDataBridge& dataBridge, const LocationDataBridge& location,
                 const FileDataBridge& files)
        : m_authorization(authorization),
          m_application(application),
          m_policy(policy),
          m_dataBridge(dataBridge),
          m_location(location),
          m_files(files) {}

    // Neither ever throws: what can't be counted counts as nothing.
    Task<BridgePermissionSnapshot> permissions() const;
    Task<BridgeHealth> health() const;

private:
    const Authorization& m_authorization;
    const ApplicationInfo& m_application;
    const BridgeCapabilityPolicy& m_policy;
    AppleDataBridge& m_dataBridge;
    const LocationDataBridge& m_location;
    const FileDataBridge& m_files;
};

} // namespace bridge
