#pragma once

#include "bridges/calendar/calendar_results.h"
#include "bridges/calendar/reminder_results.h"
#include "platform/event_store.h"

namespace bridge {

// The store's objects as the agent sees them.
AppleSourceDescriptor describe(const CalendarSource& source);
AppleListDescriptor describe(const Calendar& calendar);
// A stored address that can't be one is left out.
CalendarEventDescriptor describe(CalendarEvent event, std::string calendarTitle);
// The due date as the user's calendar has it now; left out when it names no moment.
ReminderDescriptor describe(Reminder reminder, std::string listTitle);

// Stable names, for the wire.
std::string_view nameOf(SourceType type);

} // namespace bridge
