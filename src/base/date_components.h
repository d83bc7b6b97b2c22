#pragma once

#include "base/date.h"

#include <optional>
#include <string>

namespace bridge {

// A day, or a time of day on it, as a calendar on the wall says it (Gregorian, also before 1582). Without a zone it
// means the user's, wherever the user is.
struct DateComponents {
    int year = 0;
    int month = 0; // 1 ... 12
    int day = 0;   // 1 ... 31
    std::optional<int> hour = std::nullopt;
    std::optional<int> minute = std::nullopt;
    std::optional<int> second = std::nullopt;
    std::optional<std::string> timeZone = std::nullopt; // an identifier of the IANA time zone database
    bool operator==(const DateComponents&) const = default;
};

// The identifier of the zone that the user's clock shows, of the IANA time zone database. Read afresh at every call.
std::string userTimeZone();

// The day and time of day in the user's zone, which the components name, to the minute.
DateComponents componentsToTheMinute(Date date);

// The moment; nothing when there is no such day or time, or the zone is unknown. A part of the time that is not given
// is 0. A time that the clocks skip is taken as if they had not changed yet, a time that comes twice as the first.
std::optional<Date> dateFrom(const DateComponents& components);

} // namespace bridge
