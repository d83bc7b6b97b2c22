#include "adapters/ical/component_times.h"

#include "adapters/ical/library.h"

#include <algorithm>

namespace bridge {

std::optional<ComponentTimes> ComponentTimes::read(icalcomponent* component, const Zones& zones) {
    auto start = readTime(component, ICAL_DTSTART_PROPERTY, zones);
    if (!start && icalcomponent_isa(component) == ICAL_VTODO_COMPONENT)
        start = readTime(component, ICAL_DUE_PROPERTY, zones);
    if (!start) return std::nullopt;
    ComponentTimes times;
    times.m_start = *start;
    if (const auto end = readTime(component, ICAL_DTEND_PROPERTY, zones)) {
        const bool isOfOneClock = !start->form.zone && !end->form.zone;
        times.m_length = isOfOneClock ? end->local - start->local : end->moment() - start->moment();
        return times;
    }
    auto* property = firstProperty(component, ICAL_DURATION_PROPERTY);
    const auto* value = property ? icalproperty_get_value(property) : nullptr;
    if (value && icalvalue_isa(value) == ICAL_DURATION_VALUE)
        times.m_length = readDuration(icalvalue_get_duration(value));
    return times;
}

EventTime ComponentTimes::endAfter(const ItemTime& start) const {
    const EventTime begin = start.eventTime();
    EventTime end = begin;
    if (const auto* seconds = std::get_if<int64_t>(&m_length))
        end.seconds += *seconds;
    else
        end = std::get<Duration>(m_length).after(start).eventTime();
    if (end.isFloating != begin.isFloating) end = begin;
    if (start.form.isDate) {
        const int64_t wholeDays = (end.seconds - begin.seconds + secondsOfDay - 1) / secondsOfDay;
        return {begin.seconds + std::max<int64_t>(wholeDays, 1) * secondsOfDay, true};
    }
    end.seconds = std::max(end.seconds, begin.seconds);
    return end;
}

int64_t ComponentTimes::reach() const {
    const auto* seconds = std::get_if<int64_t>(&m_length);
    int64_t length = 0;
    if (seconds) {
        length = *seconds;
    } else {
        const auto& duration = std::get<Duration>(m_length);
        length = duration.days * secondsOfDay + duration.seconds;
    }
    return std::max<int64_t>(length, 0) + secondsOfDay;
}

} // namespace bridge
