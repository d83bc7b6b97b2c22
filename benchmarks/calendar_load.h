#pragma once

#include "adapters/ical/calendar_object.h"

namespace bridge::bench {

struct Month {
    Date start;
    Date end;
};

// The one that is searched: March 2026.
Month measuredMonth();

// So many events. In the measured month there are always the same: 100 single ones, and ten weekly series. The rest
// lies in other months of twenty years; of 100,000, 990 are series, half of them over, half yearly without an end.
std::vector<CalendarObject> eventLoad(size_t count);

// So many reminders, half of them due on some day, a third with notes, each with the word "water" somewhere in it.
std::vector<CalendarObject> reminderLoad(size_t count);

} // namespace bridge::bench
