#pragma once

#include "adapters/ical/calendar_object.h"
#include "adapters/ical/zones.h"

#include <optional>

namespace bridge {

// How a DATE or DATE-TIME is written: the day alone, or the clock of a zone, of UTC, or of wherever the user is.
struct TimeForm {
    bool isDate = false;
    std::shared_ptr<const TimeZone> zone = nullptr; // none where the time is floating, and for a day
    std::string tzid = {};                          // as the property names the zone, also one that means nothing here

    bool isFloating() const { return !zone; }
    bool isUTC() const { return zone && tzid.empty(); }
    bool operator==(const TimeForm&) const = default;

    static TimeForm date() { return {.isDate = true}; }
    static TimeForm utc() { return {.zone = TimeZone::utc()}; }
    static TimeForm floating() { return {}; }
    // The user's zone, or UTC where that is the user's.
    static TimeForm user();
};

// The value of a property such as DTSTART: what the clock of its form shows, as seconds as if that were UTC.
struct ItemTime {
    int64_t local = 0;
    TimeForm form;

    EventTime eventTime() const;
    // In the user's zone where it is floating.
    int64_t moment() const;

    // What the clock of that form shows then. Where it can't say this moment, since it shows the same time twice, the
    // answer is in UTC.
    static ItemTime at(int64_t moment, const TimeForm& form);
};

constexpr int64_t secondsOfDay = 86400;

// Nothing for what is no day or no time of day.
std::optional<int64_t> localSeconds(const icaltimetype& time);
// Without a zone. Throws PlatformError beyond the years 1 to 9999, for which iCalendar has no digits.
icaltimetype icalTime(int64_t local, bool isDate);

// 20260814, 20260814T090000 or 20260814T090000Z
std::string timeText(int64_t local, const TimeForm& form);

// Of DTSTART, DTEND, DUE, RECURRENCE-ID, EXDATE, RDATE, COMPLETED ...; nothing for what is none.
std::optional<ItemTime> readTime(icalproperty* property, const Zones& zones);
std::optional<ItemTime> readTime(icalcomponent* component, icalproperty_kind kind, const Zones& zones);

ICalPointer<icalproperty> makeTimeProperty(icalproperty_kind kind, const ItemTime& time);
// In place of all of that kind.
void setTime(icalcomponent* component, icalproperty_kind kind, const ItemTime& time);

// A DURATION: days and weeks are those of the wall, the rest passes on the clock (RFC 5545, 3.3.6).
struct Duration {
    int64_t days = 0;
    int64_t seconds = 0;

    ItemTime after(const ItemTime& start) const;
};
Duration readDuration(const icaldurationtype& duration);

} // namespace bridge
