#pragma once

#include "platform/event_store.h"
#include "platform/user_defaults.h"

#include <set>
#include <string>
#include <vector>

namespace bridge {

// Which calendars and which reminder lists the agent may touch, by the store's identifiers. Nothing at first; each
// change is stored at once. An identifier that the store no longer knows stays until all are set anew. Main thread
// only.
class AppleResourceAccessPolicy {
public:
    using Identifiers = std::set<std::string>;

    static constexpr std::string_view calendarsKey = "appleBridge.allowedCalendarIDs";
    static constexpr std::string_view reminderListsKey = "appleBridge.allowedReminderListIDs";

    // `defaults` must outlive the policy. What is no array of strings counts as nothing.
    explicit AppleResourceAccessPolicy(UserDefaults& defaults);

    const Identifiers& calendarIDs() const { return m_calendarIDs; }
    const Identifiers& reminderListIDs() const { return m_reminderListIDs; }
    const Identifiers& identifiers(EntityType entityType) const;

    void setAllowed(EntityType entityType, const std::string& identifier, bool allowed);
    void replace(EntityType entityType, Identifiers allowed);

private:
    Identifiers load(std::string_view key) const;
    Identifiers& allowList(EntityType entityType);
    void save(EntityType entityType);

    UserDefaults& m_defaults;
    Identifiers m_calendarIDs;
    Identifiers m_reminderListIDs;
};

bool isAllowed(const std::string& identifier, const AppleResourceAccessPolicy::Identifiers& allowList);

// What a search for these may look at; for none in particular that is all that is allowed. Throws AppleBridgeError
// resourceAccessDenied: with `emptyMessage` when nothing is allowed, or for the first identifier that isn't.
AppleResourceAccessPolicy::Identifiers resolveRequestedIDs(const std::vector<std::string>& requested,
                                                           const AppleResourceAccessPolicy::Identifiers& allowList,
                                                           std::string_view emptyMessage);

} // namespace bridge
