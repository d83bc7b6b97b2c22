#pragma once

#include "adapters/eds/calendar_client.h"
#include "adapters/eds/call.h"
#include "adapters/eds/item_identifier.h"

namespace bridge {

// What is done with reminders on a list's worker. These block and throw PlatformError.

std::vector<Reminder> readReminders(CalendarClient& client, const Call& call);
std::optional<Reminder> readReminder(CalendarClient& client, const Call& call, const ItemIdentifier& identifier);

Reminder addReminder(CalendarClient& client, const Call& call, const Reminder& reminder);
Reminder changeReminder(CalendarClient& client, const Call& call, const ItemIdentifier& identifier,
                        const Reminder& reminder);
// Into another list, with the changes.
Reminder moveReminder(CalendarClient& client, Call& call, const ItemIdentifier& identifier, const Reminder& reminder,
                      const Calendar& target);
void removeReminder(CalendarClient& client, const Call& call, const ItemIdentifier& identifier);

} // namespace bridge
