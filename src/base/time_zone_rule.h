#pragma once

#include "base/time_zone.h"

#include <optional>
#include <string_view>

namespace bridge {

// The rule after which a zone's clocks change every year, as the environment variable TZ of POSIX writes it and as it
// ends a time zone file: CET-1CEST,M3.5.0,M10.5.0/3. Years are those of the clock's calendar.
class TimeZoneRule {
public:
    static std::optional<TimeZoneRule> parse(std::string_view text);

    bool changes() const { return m_daylight.has_value(); }
    int standardOffset() const { return m_standardOffset; }
    // The two changes of that year, in any order.
    std::vector<TimeZone::Transition> transitions(int year) const;

private:
    struct Day {
        char kind = 'M'; // M: a weekday of a month; J: of 365 days, without leap days; 0: of 365 or 366, from zero
        int month = 0, week = 0, day = 0;
        int seconds = 7200; // after midnight, also negative and beyond the day

        int64_t local(int year) const;
    };
    struct Daylight {
        int offset = 0;
        Day begin, end;
    };
    class Reader;

    int m_standardOffset = 0;
    std::optional<Daylight> m_daylight;
};

} // namespace bridge
