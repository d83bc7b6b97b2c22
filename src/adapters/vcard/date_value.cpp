#include "adapters/vcard/date_value.h"

#include "base/text.h"

#include <charconv>
#include <chrono>
#include <fmt/format.h>

namespace bridge::vcard {

namespace {

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

int number(std::string_view digits) {
    int value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

bool isADay(const Birthday& day) {
    // A leap year, so that 29 February may go without one.
    const int year = day.year.value_or(2000);
    return std::chrono::year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(day.month)),
                                       std::chrono::day(static_cast<unsigned>(day.day)))
        .ok();
}

// YYYYMMDD, YYYY-MM-DD, --MMDD or --MM-DD.
std::optional<Birthday> readDay(std::string_view date) {
    Birthday day;
    if (date.starts_with("--")) {
        date.remove_prefix(2);
    } else {
        if (date.size() < 4 || !isNumber(date.substr(0, 4))) return std::nullopt;
        day.year = number(date.substr(0, 4));
        date.remove_prefix(date.substr(4).starts_with('-') ? 5 : 4);
    }
    if (date.size() == 5 && date[2] == '-') {
        day.month = number(date.substr(0, 2));
        day.day = number(date.substr(3));
        return isNumber(date.substr(0, 2)) && isNumber(date.substr(3)) ? std::optional(day) : std::nullopt;
    }
    if (date.size() != 4 || !isNumber(date)) return std::nullopt;
    day.month = number(date.substr(0, 2));
    day.day = number(date.substr(2));
    return day;
}

} // namespace

std::optional<Birthday> dayOf(const ContentLine& line) {
    if (equalsIgnoringCase(line.parameterValue("VALUE"), "text")) return std::nullopt;
    const auto calendar = line.parameterValue("CALSCALE");
    if (!calendar.empty() && !equalsIgnoringCase(calendar, "gregorian")) return std::nullopt;
    const auto text = trim(line.value);
    auto day = readDay(text.substr(0, text.find_first_of("T ")));
    if (!day) return std::nullopt;
    // The year that a program writes when it means none.
    const auto omitted = line.parameterValue("X-APPLE-OMIT-YEAR");
    if (day->year == 0 || (isNumber(omitted) && omitted.size() <= 4 && number(omitted) == day->year)) day->year.reset();
    return isADay(*day) ? day : std::nullopt;
}

std::string dayValue(const Birthday& day) {
    return day.year ? fmt::format("{:04}{:02}{:02}", *day.year, day.month, day.day)
                    : fmt::format("--{:02}{:02}", day.month, day.day);
}

std::string basicForm(std::string_view dateTime) {
    const size_t time = dateTime.find('T');
    const auto date = dateTime.substr(0, time);
    std::string basic;
    for (const char byte : date)
        if (byte != '-') basic += byte;
    if (basic.size() != 8 || !isNumber(basic)) return std::string(dateTime);
    if (time == dateTime.npos) return basic;
    for (const char byte : dateTime.substr(time))
        if (byte != ':') basic += byte;
    return basic;
}

} // namespace bridge::vcard
