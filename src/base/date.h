#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bridge {

// A moment, in whole seconds since 1970-01-01T00:00:00Z (no leap seconds, as POSIX counts).
struct Date {
    int64_t secondsSince1970 = 0;
    auto operator<=>(const Date&) const = default;
};

// What the four digits of a year can say: 0001-01-01T00:00:00Z to 9999-12-31T23:59:59Z.
constexpr Date earliestDate{-62135596800};
constexpr Date latestDate{253402300799};

// Reads an RFC 3339 internet date-time: YYYY-MM-DDTHH:MM:SS followed by "Z" or a numeric offset such as +02:00.
// Fractions, a missing zone, lower-case letters, days that no calendar has, second 60 and years outside 0001...9999
// are refused (nothing is returned).
std::optional<Date> parseDate(std::string_view text);

// The same form in UTC, without fractions: 2026-08-14T11:28:41Z. It has room for four digits of the year: a date beyond
// 0001...9999, which a file system may well answer, is written as the nearest one that fits.
std::string formatDate(Date date);

} // namespace bridge
