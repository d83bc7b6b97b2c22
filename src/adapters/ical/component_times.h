#pragma once

#include "adapters/ical/item_time.h"

#include <variant>

namespace bridge {

// When a component happens, by its DTSTART and its DTEND or DURATION.
class ComponentTimes {
public:
    // Nothing without a DTSTART that says when. A task without one happens when it is due.
    static std::optional<ComponentTimes> read(icalcomponent* component, const Zones& zones);

    const ItemTime& start() const { return m_start; }
    // Of an occurrence that starts then: as long after it as here (RFC 5545, 3.8.5.3). An end before the start counts
    // as the start, and a day ends with itself at the earliest.
    EventTime endAfter(const ItemTime& start) const;
    // No occurrence takes longer.
    int64_t reach() const;

private:
    ItemTime m_start;
    std::variant<int64_t, Duration> m_length; // seconds of DTEND, or DURATION
};

} // namespace bridge
