#include "base/time_zone_rule.h"

#include <chrono>

namespace bridge {

class TimeZoneRule::Reader {
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    bool atEnd() const { return m_rest.empty(); }
    bool literal(char expected) {
        if (m_rest.empty() || m_rest.front() != expected) return false;
        m_rest.remove_prefix(1);
        return true;
    }
    bool name() {
        const bool isQuoted = literal('<');
        size_t length = 0;
        while (length < m_rest.size() && isNamePart(m_rest[length], isQuoted))
            ++length;
        if (length == 0) return false;
        m_rest.remove_prefix(length);
        return !isQuoted || literal('>');
    }
    std::optional<int> number(int most) {
        int value = 0;
        size_t length = 0;
        for (; length < m_rest.size() && m_rest[length] >= '0' && m_rest[length] <= '9'; ++length) {
            value = value * 10 + (m_rest[length] - '0');
            if (value > most) return std::nullopt;
        }
        if (length == 0) return std::nullopt;
        m_rest.remove_prefix(length);
        return value;
    }
    std::optional<int> seconds() { // [+-]h[h[h]][:mm[:ss]]
        const int sign = literal('-') ? -1 : 1;
        if (sign == 1) literal('+');
        const auto hours = number(167);
        if (!hours) return std::nullopt;
        int total = *hours * 3600;
        for (const int unit : {60, 1}) {
            if (!literal(':')) break;
            const auto part = number(59);
            if (!part) return std::nullopt;
            total += *part * unit;
        }
        return sign * total;
    }
    std::optional<Day> day() {
        Day day;
        if (literal('M')) {
            const auto month = number(12);
            if (!month || *month < 1 || !literal('.')) return std::nullopt;
            const auto week = number(5);
            if (!week || *week < 1 || !literal('.')) return std::nullopt;
            const auto weekday = number(6);
            if (!weekday) return std::nullopt;
            day.month = *month, day.week = *week, day.day = *weekday;
        } else {
            day.kind = literal('J') ? 'J' : '0';
            const auto number = this->number(365);
            if (!number) return std::nullopt;
            day.day = *number;
        }
        if (!literal('/')) return day;
        const auto time = seconds();
        if (!time) return std::nullopt;
        day.seconds = *time;
        return day;
    }

private:
    static bool isNamePart(char c, bool isQuoted) {
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) return true;
        return isQuoted && ((c >= '0' && c <= '9') || c == '+' || c == '-');
    }

    std::string_view m_rest;
};

int64_t TimeZoneRule::Day::local(int yearNumber) const {
    using namespace std::chrono;
    const year_month_day newYear{year(yearNumber), January, 1d};
    sys_days date = newYear;
    if (kind == 'M') {
        const weekday sought(static_cast<unsigned>(day));
        const std::chrono::month inMonth(static_cast<unsigned>(month));
        date = week == 5 ? sys_days(year(yearNumber) / inMonth / sought[last])
                         : sys_days(year(yearNumber) / inMonth / sought[static_cast<unsigned>(week)]);
    } else if (kind == 'J') {
        const bool isAfterLeapDay = year(yearNumber).is_leap() && day >= 60;
        date += days(day - 1 + (isAfterLeapDay ? 1 : 0));
    } else {
        date += days(day);
    }
    return int64_t{date.time_since_epoch().count()} * 86400 + seconds;
}

std::optional<TimeZoneRule> TimeZoneRule::parse(std::string_view text) {
    Reader reader(text);
    TimeZoneRule rule;
    if (!reader.name()) return std::nullopt;
    const auto standard = reader.seconds();
    if (!standard) return std::nullopt;
    rule.m_standardOffset = -*standard;
    if (reader.atEnd()) return rule;

    Daylight daylight;
    if (!reader.name()) return std::nullopt;
    daylight.offset = rule.m_standardOffset + 3600;
    if (!reader.literal(',')) {
        const auto offset = reader.seconds();
        if (!offset || !reader.literal(',')) return std::nullopt;
        daylight.offset = -*offset;
    }
    const auto begin = reader.day();
    if (!begin || !reader.literal(',')) return std::nullopt;
    const auto end = reader.day();
    if (!end || !reader.atEnd()) return std::nullopt;
    daylight.begin = *begin;
    daylight.end = *end;
    rule.m_daylight = daylight;
    return rule;
}

std::vector<TimeZone::Transition> TimeZoneRule::transitions(int year) const {
    if (!m_daylight) return {};
    return {{m_daylight->begin.local(year) - m_standardOffset, m_daylight->offset},
            {m_daylight->end.local(year) - m_daylight->offset, m_standardOffset}};
}

} // namespace bridge
