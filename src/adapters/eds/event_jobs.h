#pragma once

#include "adapters/eds/calendar_client.h"
#include "adapters/eds/call.h"
#include "adapters/eds/item_identifier.h"

namespace bridge {

// What is done with events on a calendar's worker. These block and throw PlatformError.

std::vector<CalendarEvent> readEvents(CalendarClient& client, const Call& call, Date start, Date end, size_t limit);
std::optional<CalendarEvent> readEvent(CalendarClient& client, const Call& call, const ItemIdentifier& identifier);

CalendarEvent addEvent(CalendarClient& client, const Call& call, const CalendarEvent& event);
CalendarEvent changeEvent(CalendarClient& client, const Call& call, const ItemIdentifier& identifier,
                          const CalendarEvent& event);
// Into another calendar, with the changes.
CalendarEvent moveEvent(CalendarClient& client, Call& call, const ItemIdentifier& identifier,
                        const CalendarEvent& event, const Calendar& target);
void removeEvent(CalendarClient& client, const Call& call, const ItemIdentifier& identifier);

// The same order each time.
bool comesBefore(const CalendarEvent& left, const CalendarEvent& right);

} // namespace bridge
