#include "policy/apple_resource_access_policy.h"

#include "base/apple_bridge_error.h"

namespace bridge {

using Identifiers = AppleResourceAccessPolicy::Identifiers;

AppleResourceAccessPolicy::AppleResourceAccessPolicy(UserDefaults& defaults)
    : m_defaults(defaults), m_calendarIDs(load(calendarsKey)), m_reminderListIDs(load(reminderListsKey)) {}

const Identifiers& AppleResourceAccessPolicy::identifiers(EntityType entityType) const {
    return entityType == EntityType::event ? m_calendarIDs : m_reminderListIDs;
}

void AppleResourceAccessPolicy::setAllowed(EntityType entityType, const std::string& identifier, bool allowed) {
    if (allowed)
        allowList(entityType).insert(identifier);
    else
        allowList(entityType).erase(identifier);
    save(entityType);
}

void AppleResourceAccessPolicy::replace(EntityType entityType, Identifiers allowed) {
    allowList(entityType) = std::move(allowed);
    save(entityType);
}

Identifiers AppleResourceAccessPolicy::load(std::string_view key) const {
    const auto stored = m_defaults.strings(key);
    if (!stored) return {};
    return {stored->begin(), stored->end()};
}

Identifiers& AppleResourceAccessPolicy::allowList(EntityType entityType) {
    return entityType == EntityType::event ? m_calendarIDs : m_reminderListIDs;
}

void AppleResourceAccessPolicy::save(EntityType entityType) {
    const auto& sorted = identifiers(entityType);
    m_defaults.setStrings(entityType == EntityType::event ? calendarsKey : reminderListsKey,
                          {sorted.begin(), sorted.end()});
}

bool isAllowed(const std::string& identifier, const Identifiers& allowList) {
    return allowList.contains(identifier);
}

Identifiers resolveRequestedIDs(const std::vector<std::string>& requested, const Identifiers& allowList,
                                std::string_view emptyMessage) {
    if (allowList.empty()) throw AppleBridgeError::resourceAccessDenied(emptyMessage);
    if (requested.empty()) return allowList;
    for (const auto& identifier : requested)
        if (!isAllowed(identifier, allowList))
            throw AppleBridgeError::resourceAccessDenied("Access is not authorized for resource identifier " +
                                                         identifier + ".");
    return {requested.begin(), requested.end()};
}

} // namespace bridge
