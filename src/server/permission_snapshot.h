#pragma once

#include "base/record.h"
#include "bridges/common/permission_state.h"

namespace bridge {

// How much of one kind of container the agent may touch: those on the allow-list that exist, and those that exist.
struct BridgeResourceAccessSnapshot {
    int64_t allowed = 0;
    int64_t available = 0;

    static constexpr auto fields() {
        return std::tuple{required("allowed", &BridgeResourceAccessSnapshot::allowed),
                          required("available", &BridgeResourceAccessSnapshot::available)};
    }
};
static_assert(listsEveryMember<BridgeResourceAccessSnapshot>());

// Everything the user has granted, at one moment.
struct BridgePermissionSnapshot {
    BridgePermissionState calendar;
    BridgePermissionState reminders;
    BridgeResourceAccessSnapshot calendarResources;
    BridgeResourceAccessSnapshot reminderListResources;
    BridgePermissionState contacts;
    BridgePermissionState music;
    BridgePermissionState health; // always unavailable
    BridgePermissionState home;   // always unavailable
    BridgePermissionState location;
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

class Authorization;
class ApplicationInfo;
class BridgeCapabilityPolicy;
class FileDataBridge;

// Answers for the bridge as a whole. What it reads from must outlive it.
class BridgeStatus {
public:
    BridgeStatus(const Authorization& authorization, const ApplicationInfo& application,
                 const BridgeCapabilityPolicy& policy, const FileDataBridge& files)
        : m_authorization(authorization), m_application(application), m_policy(policy), m_files(files) {}

    BridgePermissionSnapshot permissions() const;
    BridgeHealth health() const;

private:
    const Authorization& m_authorization;
    const ApplicationInfo& m_application;
    const BridgeCapabilityPolicy& m_policy;
    const FileDataBridge& m_files;
};

} // namespace bridge
