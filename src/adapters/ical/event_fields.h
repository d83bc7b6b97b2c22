#pragma once

#include "adapters/ical/item_time.h"

namespace bridge {

// A VEVENT as an event that takes place from start to end; without what the series or the store knows of it.
CalendarEvent readEvent(icalcomponent* component, const EventTime& start, const EventTime& end, const Zones& zones);

enum class Changed { nothing, text, times };

// Writes those fields in which the two differ. Throws PlatformError before it changes anything.
Changed writeEvent(icalcomponent* component, const CalendarEvent& before, const CalendarEvent& after,
                   const Zones& zones);

// Notes in the component that it was changed: DTSTAMP, LAST-MODIFIED, and SEQUENCE where its times are others
// (RFC 5545, 3.8.7.4).
void noteChange(icalcomponent* component, Changed changed, Date now);

} // namespace bridge
