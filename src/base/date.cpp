#include "base/date.h"

#include <algorithm>
#include <chrono>
#include <fmt/format.h>

namespace bridge {

namespace {

class Reader {
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    std::optional<int> digits(size_t count) {
        if (m_rest.size() < count) return std::nullopt;
        int value = 0;
        for (const char digit : m_rest.substr(0, count)) {
            if (digit < '0' || digit > '9') return std::nullopt;
            value = value * 10 + (digit - '0');
        }
        m_rest.remove_prefix(count);
        return value;
    }
    bool literal(char expected) {
        if (m_rest.empty() || m_rest.front() != expected) return false;
        m_rest.remove_prefix(1);
        return true;
    }
    bool atEnd() const { return m_rest.empty(); }

private:
    std::string_view m_rest;
};

// Seconds to subtract to come to UTC.
std::optional<int> readOffset(Reader& reader) {
    if (reader.literal('Z')) return 0;
    const int sign = reader.literal('+') ? 1 : reader.literal('-') ? -1 : 0;
    if (sign == 0) return std::nullopt;
    const auto hours = reader.digits(2);
    if (!hours || !reader.literal(':')) return std::nullopt;
    const auto minutes = reader.digits(2);
    if (!minutes || *hours > 23 || *minutes > 59) return std::nullopt;
    return sign * (*hours * 3600 + *minutes * 60);
}

} // namespace

std::optional<Date> parseDate(std::string_view text) {
    using namespace std::chrono;
    Reader reader(text);
    const auto yearNumber = reader.digits(4);
    if (!yearNumber || !reader.literal('-')) return std::nullopt;
    const auto monthNumber = reader.digits(2);
    if (!monthNumber || !reader.literal('-')) return std::nullopt;
    const auto dayNumber = reader.digits(2);
    if (!dayNumber || !reader.literal('T')) return std::nullopt;
    const auto hour = reader.digits(2);
    if (!hour || !reader.literal(':')) return std::nullopt;
    const auto minute = reader.digits(2);
    if (!minute || !reader.literal(':')) return std::nullopt;
    const auto second = reader.digits(2);
    if (!second) return std::nullopt;
    const auto offset = readOffset(reader);
    if (!offset || !reader.atEnd()) return std::nullopt;

    const year_month_day day{year(*yearNumber), month(static_cast<unsigned>(*monthNumber)),
                             std::chrono::day(static_cast<unsigned>(*dayNumber))};
    if (!day.ok() || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    const int64_t days = sys_days(day).time_since_epoch().count();
    const Date date{days * 86400 + *hour * 3600 + *minute * 60 + *second - *offset};
    if (date < earliestDate || date > latestDate) return std::nullopt;
    return date;
}

std::string formatDate(Date date) {
    using namespace std::chrono;
    const sys_seconds moment{seconds(std::clamp(date, earliestDate, latestDate).secondsSince1970)};
    const auto midnight = floor<days>(moment);
    const year_month_day day(midnight);
    const hh_mm_ss time(moment - midnight);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", int(day.year()), unsigned(day.month()),
                       unsigned(day.day()), time.hours().count(), time.minutes().count(), time.seconds().count());
}

} // namespace bridge
