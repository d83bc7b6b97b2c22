#pragma once

#include "base/keyed_mutex.h"
#include "bridges/calendar/calendar_requests.h"
#include "bridges/calendar/calendar_results.h"
#include "bridges/calendar/container_kind.h"
#include "policy/apple_resource_access_policy.h"

namespace bridge {

// The calendars, or the reminder lists, and which of them may be used. Each operation reads the permission, then the
// store, then checks, and changes something only when all checks have passed. Throws as AppleDataBridge says. What it
// is made of outlives it, and it outlives its tasks.
class Containers {
public:
    Containers(const ContainerKind& kind, EventStore& store, Authorization& authorization,
               AppleResourceAccessPolicy& policy)
        : m_kind(kind), m_store(store), m_authorization(authorization), m_policy(policy) {}

    const ContainerKind& kind() const { return m_kind; }
    void requireFullAccess() const;
    Task<> requestAccess();

    Task<std::vector<AppleListDescriptor>> list();
    Task<std::vector<AppleListDescriptor>> authorized();
    Task<BridgeResourceAccessSnapshot> resources();
    Task<> setAuthorized(std::string identifier, bool authorized);
    Task<> setAllAuthorized(bool authorized);

    Task<std::vector<AppleSourceDescriptor>> sources();
    Task<AppleListDescriptor> create(CreateAppleListRequest request);
    Task<AppleListDescriptor> rename(UpdateAppleListRequest request);
    Task<> remove(std::string identifier);

    // Those that a search looks into, in the store's order; all that may be used when none is named.
    Task<std::vector<Calendar>> forSearch(std::vector<std::string> identifiers);
    // Where a new item goes; and where one goes that the request names a place for.
    Task<Calendar> forNewItem(std::optional<std::string> identifier);
    Task<Calendar> target(std::string identifier);
    // Throws unless items of this container may be reached.
    void requireAllowed(const std::string& identifier) const;
    // "" when it is gone.
    Task<std::string> title(std::string identifier);

private:
    bool isAllowed(const std::string& identifier) const;
    Task<Calendar> existing(std::string identifier);

    const ContainerKind& m_kind;
    EventStore& m_store;
    Authorization& m_authorization;
    AppleResourceAccessPolicy& m_policy;
    KeyedMutex m_changing;
};

} // namespace bridge
