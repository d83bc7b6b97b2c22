#pragma once

#include "bridges/calendar/reminder_requests.h"
#include "bridges/calendar/reminder_results.h"

namespace bridge {

// Those that pass every filter of the request, without regard to its lists and its limit: due ones first, by date,
// equal ones as they came; then the others, by title as the user's locale orders it, without regard to case.
std::vector<ReminderDescriptor> filterReminders(std::vector<ReminderDescriptor> reminders,
                                                const SearchRemindersRequest& request);

} // namespace bridge
