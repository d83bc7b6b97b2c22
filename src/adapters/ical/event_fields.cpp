#include "adapters/ical/event_fields.h"

#include "adapters/ical/alarms.h"
#include "adapters/ical/library.h"
#include "base/platform_error.h"

#include <algorithm>

namespace bridge {

namespace {

bool hasSameTimes(const CalendarEvent& a, const CalendarEvent& b) {
    return a.startDate == b.startDate && a.endDate == b.endDate && a.isAllDay == b.isAllDay;
}

void writeDays(icalcomponent* component, const CalendarEvent& event) {
    const int64_t start = event.startDate.secondsSince1970;
    const int64_t lastSecond = std::max(event.endDate.secondsSince1970 - 1, start);
    const auto first = ItemTime::at(start, TimeForm::date());
    auto end = ItemTime::at(lastSecond, TimeForm::date());
    end.local += secondsOfDay;
    icalTime(end.local, true); // throws before anything is written
    setTime(component, ICAL_DTSTART_PROPERTY, first);
    setTime(component, ICAL_DTEND_PROPERTY, end);
    removeProperties(component, ICAL_DURATION_PROPERTY);
}

void writeTimes(icalcomponent* component, const CalendarEvent& before, const CalendarEvent& event, const Zones& zones) {
    if (event.endDate < event.startDate) throw PlatformError("An event can't end before it starts.");
    // Before anything is counted with them; what the clock there says is looked at when it is written.
    if (event.startDate < earliestDate || event.endDate > latestDate)
        throw PlatformError("A calendar item can only have times of the years 1 to 9999.");
    if (event.isAllDay) return writeDays(component, event);

    const auto storedStart = readTime(component, ICAL_DTSTART_PROPERTY, zones);
    const auto storedEnd = readTime(component, ICAL_DTEND_PROPERTY, zones);
    const bool isTimed = storedStart && !storedStart->form.isDate;
    const auto startForm = isTimed ? storedStart->form : TimeForm::user();
    const auto endForm = isTimed && storedEnd && !storedEnd->form.isDate ? storedEnd->form : startForm;
    const auto start = ItemTime::at(event.startDate.secondsSince1970, startForm);
    const auto end = ItemTime::at(event.endDate.secondsSince1970, endForm);
    icalTime(start.local, false);
    icalTime(end.local, false);

    if (!isTimed || event.startDate != before.startDate) setTime(component, ICAL_DTSTART_PROPERTY, start);
    if (isTimed && storedEnd && event.endDate == before.endDate) return;
    removeProperties(component, ICAL_DURATION_PROPERTY);
    removeProperties(component, ICAL_DTEND_PROPERTY);
    // Without one it ends as it starts; DTEND itself has to be later (RFC 5545, 3.8.2.2).
    if (event.endDate != event.startDate) setTime(component, ICAL_DTEND_PROPERTY, end);
}

} // namespace

CalendarEvent readEvent(icalcomponent* component, const EventTime& start, const EventTime& end, const Zones& zones) {
    CalendarEvent event;
    event.title = textOf(component, ICAL_SUMMARY_PROPERTY);
    event.startDate = start.date();
    event.endDate = end.date();
    auto time = readTime(component, ICAL_DTSTART_PROPERTY, zones);
    if (!time) time = readTime(component, ICAL_RECURRENCEID_PROPERTY, zones);
    event.isAllDay = time && time->form.isDate;
    event.location = textOf(component, ICAL_LOCATION_PROPERTY);
    event.notes = textOf(component, ICAL_DESCRIPTION_PROPERTY);
    event.url = textOf(component, ICAL_URL_PROPERTY);
    event.alarms = readAlarms(component, start, end, zones);
    return event;
}

Changed writeEvent(icalcomponent* component, const CalendarEvent& before, const CalendarEvent& after,
                   const Zones& zones) {
    auto changed = Changed::nothing;
    const auto write = [&](icalproperty_kind kind, const auto& former, const auto& text) {
        if (former == text) return;
        setText(component, kind, text);
        changed = Changed::text;
    };
    write(ICAL_SUMMARY_PROPERTY, before.title, after.title);
    write(ICAL_LOCATION_PROPERTY, before.location, after.location);
    write(ICAL_DESCRIPTION_PROPERTY, before.notes, after.notes);
    write(ICAL_URL_PROPERTY, before.url, after.url);
    if (before.alarms != after.alarms) {
        writeAlarms(component, after.alarms);
        changed = Changed::text;
    }
    if (!hasSameTimes(before, after)) {
        for (const auto date : {after.startDate, after.endDate})
            if (date < earliestDate || date > latestDate) throw PlatformError("The event is outside of the calendar.");
        writeTimes(component, before, after, zones);
        changed = Changed::times;
    }
    return changed;
}

void noteChange(icalcomponent* component, Changed changed, Date now) {
    const ItemTime time{now.secondsSince1970, TimeForm::utc()};
    setTime(component, ICAL_DTSTAMP_PROPERTY, time);
    setTime(component, ICAL_LASTMODIFIED_PROPERTY, time);
    if (changed != Changed::times) return;
    auto* former = firstProperty(component, ICAL_SEQUENCE_PROPERTY);
    const int sequence = former ? std::clamp(icalproperty_get_sequence(former), 0, 1'000'000'000) : 0;
    removeProperties(component, ICAL_SEQUENCE_PROPERTY);
    icalcomponent_add_property(component, icalproperty_new_sequence(sequence + 1));
}

} // namespace bridge
