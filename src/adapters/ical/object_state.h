#pragma once

#include "adapters/ical/calendar_object.h"
#include "adapters/ical/library.h"
#include "adapters/ical/series.h"
#include "adapters/ical/zones.h"

namespace bridge {

struct CalendarObject::State {
    // Takes a VCALENDAR. Throws PlatformError when its items are not those of one UID.
    explicit State(ICalPointer<icalcomponent> calendar);

    static std::unique_ptr<State> parse(std::string_view text);
    // A VCALENDAR with nothing in it.
    static ICalPointer<icalcomponent> emptyCalendar();

    std::unique_ptr<State> copy() const;
    Series series() const { return Series(items, zones); }
    icalcomponent* master() const;
    // Throws PlatformError for a component that the object hasn't got.
    icalcomponent* item(size_t component) const;

    ICalPointer<icalcomponent> calendar;
    std::vector<icalcomponent*> items; // the master, then the exceptions; all in `calendar`
    EntityType entityType = EntityType::event;
    std::string uid;
    Zones zones;
};

} // namespace bridge
