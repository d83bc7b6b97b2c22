#pragma once

#include "adapters/ical/item_time.h"

#include <vector>

namespace bridge {

// The VALARMs that go off, in their order. One that is related to the end (RFC 5545, 3.8.6.3) is counted from the start
// as long as this occurrence takes.
std::vector<Alarm> readAlarms(icalcomponent* component, const EventTime& start, const EventTime& end,
                              const Zones& zones);

// In place of all VALARMs: a message at each time, to the second. Throws PlatformError for a time that a DURATION or
// DATE-TIME can't say.
void writeAlarms(icalcomponent* component, const std::vector<Alarm>& alarms);

} // namespace bridge
