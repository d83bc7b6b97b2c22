#pragma once

#include "adapters/ical/event_fields.h"

#include <vector>

namespace bridge {

// A VTODO as a reminder; without what the store knows of it.
Reminder readReminder(icalcomponent* task, const Zones& zones);

// Writes those fields in which the two differ, but for completion. Throws PlatformError, before it changes anything,
// for a due date that is none.
Changed writeReminder(icalcomponent* task, const Reminder& before, const Reminder& after, const Zones& zones);

void complete(icalcomponent* task, Date now);
void reopen(icalcomponent* task);

// Makes the next occurrence of a series the present one, still to be done: moves DTSTART and DUE on, and takes from
// COUNT what has been. False, with nothing changed, when the task does not repeat or was at its last. The master comes
// first.
bool moveOn(const std::vector<icalcomponent*>& tasks, const Zones& zones);

} // namespace bridge
