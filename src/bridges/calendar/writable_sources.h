#pragma once

#include "platform/event_store.h"

namespace bridge {

// The accounts that can take a new calendar: not subscribed ones nor birthdays, but those of the default calendar and
// of any calendar that takes changes. By title as the user's locale orders it, without regard to case.
std::vector<CalendarSource> writableSources(const std::vector<CalendarSource>& sources,
                                            const std::vector<Calendar>& calendars,
                                            const std::optional<Calendar>& defaultCalendar);

// The account for a new calendar: the one asked for, else the default calendar's, else the first. Throws
// AppleBridgeError resourceNotFound when the one asked for is not among them, operationFailed when there is none.
CalendarSource sourceForNewCalendar(const std::vector<CalendarSource>& writable,
                                    const std::optional<std::string>& asked,
                                    const std::optional<Calendar>& defaultCalendar);

} // namespace bridge
