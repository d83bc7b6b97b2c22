#include "adapters/ical/rule_parts.h"

#include <algorithm>
#include <chrono>

namespace bridge {

namespace {

using namespace std::chrono;

constexpr int64_t secondsOfDay = 86400;

int64_t floorDivide(int64_t value, int64_t by) {
    return value / by - (value % by < 0 ? 1 : 0);
}

template <size_t Size> std::vector<int> valuesOf(const short (&list)[Size]) {
    return {list, std::find(list, list + Size, ICAL_RECURRENCE_ARRAY_MAX)};
}

template <size_t Size> void clear(short (&list)[Size]) {
    std::fill(list, list + Size, ICAL_RECURRENCE_ARRAY_MAX);
}

template <size_t Size> std::vector<int> take(short (&list)[Size]) {
    auto values = valuesOf(list);
    clear(list);
    return values;
}

template <size_t Size> bool isEmpty(const short (&list)[Size]) {
    return list[0] == ICAL_RECURRENCE_ARRAY_MAX;
}

template <size_t Size> void sort(short (&list)[Size]) {
    auto values = valuesOf(list);
    std::sort(values.begin(), values.end());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    clear(list);
    std::copy(values.begin(), values.end(), list);
}

// In the order of the week: libical goes through the days of a week as they come.
void sortDays(icalrecurrencetype& rule) {
    sort(rule.by_day);
    const auto distance = [&](short day) {
        return (icalrecurrencetype_day_day_of_week(day) - rule.week_start + 7) % 7;
    };
    const auto end = std::find(rule.by_day, rule.by_day + ICAL_BY_DAY_SIZE, ICAL_RECURRENCE_ARRAY_MAX);
    std::stable_sort(rule.by_day, end, [&](short a, short b) { return distance(a) < distance(b); });
}

bool isAmong(int value, const std::vector<int>& values) {
    return std::find(values.begin(), values.end(), value) != values.end();
}

// Counted from the first, or from the last when negative.
bool isAmong(int value, int last, const std::vector<int>& values) {
    return isAmong(value, values) || isAmong(value - last - 1, values);
}

} // namespace

namespace {

// The day 0, in 1970, was a Thursday.
constexpr int64_t weekdayOfDay0 = 4;

// 0 is Sunday.
int firstWeekday(const icalrecurrencetype& rule) {
    return rule.week_start == ICAL_NO_WEEKDAY ? 1 : rule.week_start - ICAL_SUNDAY_WEEKDAY;
}

// A week belongs to the year that has most of its days, so that of its fourth.
sys_days fourthDay(int64_t local, int firstWeekday) {
    const int64_t day = floorDivide(local, secondsOfDay);
    const int64_t week = floorDivide(day + weekdayOfDay0 - firstWeekday, 7);
    return sys_days(days(week * 7 - weekdayOfDay0 + firstWeekday + 3));
}

int weekYear(int64_t local, int firstWeekday) {
    return int(year_month_day(fourthDay(local, firstWeekday)).year());
}

int weekNumber(sys_days fourthDay) {
    const auto newYear = sys_days(year_month_day(fourthDay).year() / January / 1);
    return static_cast<int>((fourthDay - newYear).count() / 7) + 1;
}

} // namespace

RuleLimits RuleLimits::takeFrom(icalrecurrencetype& rule, int64_t start) {
    RuleLimits limits;
    const bool hasWeeks = rule.freq == ICAL_YEARLY_RECURRENCE && !isEmpty(rule.by_week_no);
    if (rule.freq > ICAL_DAILY_RECURRENCE && !hasWeeks) return limits;
    limits.m_months = take(rule.by_month);
    limits.m_monthDays = take(rule.by_month_day);
    limits.m_yearDays = take(rule.by_year_day);
    for (const int day : take(rule.by_day))
        limits.m_weekdays.push_back(icalrecurrencetype_day_day_of_week(static_cast<short>(day)) - ICAL_SUNDAY_WEEKDAY);
    if (rule.freq <= ICAL_HOURLY_RECURRENCE) limits.m_hours = take(rule.by_hour);
    if (rule.freq <= ICAL_MINUTELY_RECURRENCE) limits.m_minutes = take(rule.by_minute);
    if (rule.freq == ICAL_SECONDLY_RECURRENCE) limits.m_seconds = take(rule.by_second);
    if (!hasWeeks) return limits;

    limits.m_weeks = take(rule.by_week_no);
    limits.m_firstWeekday = firstWeekday(rule);
    limits.m_firstYear = weekYear(start, limits.m_firstWeekday);
    limits.m_interval = rule.interval;
    rule.freq = ICAL_WEEKLY_RECURRENCE;
    rule.interval = 1;
    for (short day = 0; day < 7; ++day)
        rule.by_day[day] = static_cast<short>((limits.m_firstWeekday + day) % 7 + ICAL_SUNDAY_WEEKDAY);
    return limits;
}

bool RuleLimits::allowWeek(int64_t local) const {
    const auto day = fourthDay(local, m_firstWeekday);
    const int year = int(year_month_day(day).year());
    if ((year - m_firstYear) % m_interval != 0) return false;
    // The 28th of December is in the last week, or three days before it.
    const int last = weekNumber(fourthDay(
        sys_days(std::chrono::year(year) / December / 28).time_since_epoch().count() * secondsOfDay, m_firstWeekday));
    return isAmong(weekNumber(day), last, m_weeks);
}

bool RuleLimits::allow(int64_t local) const {
    const int64_t dayNumber = floorDivide(local, secondsOfDay);
    const int second = static_cast<int>(local - dayNumber * secondsOfDay);
    if (!m_hours.empty() && !isAmong(second / 3600, m_hours)) return false;
    if (!m_minutes.empty() && !isAmong(second / 60 % 60, m_minutes)) return false;
    if (!m_seconds.empty() && !isAmong(second % 60, m_seconds)) return false;

    const sys_days day{days(dayNumber)};
    if (!m_weeks.empty() && !allowWeek(local)) return false;
    if (!m_weekdays.empty() && !isAmong(static_cast<int>(weekday(day).c_encoding()), m_weekdays)) return false;
    const year_month_day date(day);
    if (!m_months.empty() && !isAmong(static_cast<int>(unsigned(date.month())), m_months)) return false;
    if (!m_monthDays.empty()) {
        const auto last = year_month_day_last(date.year(), month_day_last(date.month())).day();
        if (!isAmong(static_cast<int>(unsigned(date.day())), static_cast<int>(unsigned(last)), m_monthDays))
            return false;
    }
    if (m_yearDays.empty()) return true;
    const auto dayOfYear = (day - sys_days(date.year() / January / 1)).count() + 1;
    return isAmong(static_cast<int>(dayOfYear), date.year().is_leap() ? 366 : 365, m_yearDays);
}

RulePositions RulePositions::takeFrom(icalrecurrencetype& rule) {
    RulePositions positions;
    positions.m_positions = take(rule.by_set_pos);
    return positions;
}

std::vector<int64_t> RulePositions::choose(const std::vector<int64_t>& period) const {
    const auto count = static_cast<int64_t>(period.size());
    std::vector<int64_t> chosen;
    for (const int position : m_positions) {
        const int64_t index = position > 0 ? position - 1 : count + position;
        if (index >= 0 && index < count) chosen.push_back(period[static_cast<size_t>(index)]);
    }
    std::sort(chosen.begin(), chosen.end());
    chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
    return chosen;
}

RulePeriods::RulePeriods(const icalrecurrencetype& rule)
    : m_frequency(rule.freq), m_isOfWeeks(!isEmpty(rule.by_week_no)), m_firstWeekday(firstWeekday(rule)) {}

int64_t RulePeriods::number(int64_t local) const {
    const int64_t day = floorDivide(local, secondsOfDay);
    const year_month_day date(sys_days{days(day)});
    switch (m_frequency) {
    case ICAL_SECONDLY_RECURRENCE:
        return local;
    case ICAL_MINUTELY_RECURRENCE:
        return floorDivide(local, 60);
    case ICAL_HOURLY_RECURRENCE:
        return floorDivide(local, 3600);
    case ICAL_WEEKLY_RECURRENCE:
        return floorDivide(day + weekdayOfDay0 - m_firstWeekday, 7);
    case ICAL_MONTHLY_RECURRENCE:
        return int64_t{int(date.year())} * 12 + unsigned(date.month()) - 1;
    case ICAL_YEARLY_RECURRENCE:
        return m_isOfWeeks ? weekYear(local, m_firstWeekday) : int(date.year());
    default:
        return day;
    }
}

int64_t RulePeriods::start(int64_t number) const {
    const auto startOf = [](int64_t yearNumber, unsigned monthNumber) {
        const sys_days day = year(static_cast<int>(yearNumber)) / month(monthNumber) / 1;
        return int64_t{day.time_since_epoch().count()} * secondsOfDay;
    };
    switch (m_frequency) {
    case ICAL_SECONDLY_RECURRENCE:
        return number;
    case ICAL_MINUTELY_RECURRENCE:
        return number * 60;
    case ICAL_HOURLY_RECURRENCE:
        return number * 3600;
    case ICAL_WEEKLY_RECURRENCE:
        return (number * 7 - weekdayOfDay0 + m_firstWeekday) * secondsOfDay;
    case ICAL_MONTHLY_RECURRENCE:
        return startOf(floorDivide(number, 12), static_cast<unsigned>(number - floorDivide(number, 12) * 12) + 1);
    case ICAL_YEARLY_RECURRENCE:
        // The first week with four days of January begins on the 29th of December at the earliest.
        return m_isOfWeeks
                   ? (fourthDay(startOf(number, 1) + 3 * secondsOfDay, m_firstWeekday).time_since_epoch().count() - 3) *
                         secondsOfDay
                   : startOf(number, 1);
    default:
        return number * secondsOfDay;
    }
}

void writeOut(icalrecurrencetype& rule, const icaltimetype& start) {
    if (start.is_date) {
        clear(rule.by_hour);
        clear(rule.by_minute);
        clear(rule.by_second);
    }
    sort(rule.by_second);
    sort(rule.by_minute);
    sort(rule.by_hour);
    sort(rule.by_month_day);
    sort(rule.by_year_day);
    sort(rule.by_week_no);
    sort(rule.by_month);
    sortDays(rule);
    if (!start.is_date) {
        if (rule.freq > ICAL_SECONDLY_RECURRENCE && isEmpty(rule.by_second))
            rule.by_second[0] = static_cast<short>(start.second);
        if (rule.freq > ICAL_MINUTELY_RECURRENCE && isEmpty(rule.by_minute))
            rule.by_minute[0] = static_cast<short>(start.minute);
        if (rule.freq > ICAL_HOURLY_RECURRENCE && isEmpty(rule.by_hour))
            rule.by_hour[0] = static_cast<short>(start.hour);
    }
    const auto day = static_cast<short>(start.day);
    const auto weekday = static_cast<short>(icaltime_day_of_week(start));
    const bool hasDay = !isEmpty(rule.by_day) || !isEmpty(rule.by_month_day) || !isEmpty(rule.by_year_day);
    if (hasDay) return;
    if (rule.freq == ICAL_WEEKLY_RECURRENCE) rule.by_day[0] = weekday;
    if (rule.freq == ICAL_MONTHLY_RECURRENCE) rule.by_month_day[0] = day;
    if (rule.freq != ICAL_YEARLY_RECURRENCE) return;
    if (!isEmpty(rule.by_week_no)) {
        rule.by_day[0] = weekday;
    } else {
        rule.by_month_day[0] = day;
        if (isEmpty(rule.by_month)) rule.by_month[0] = static_cast<short>(start.month);
    }
}

} // namespace bridge
