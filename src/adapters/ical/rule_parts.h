#pragma once

#include "adapters/ical/ical_pointer.h"

#include <cstdint>
#include <vector>

namespace bridge {

// Parts of a recurrence rule (RFC 5545, 3.3.10) in which libical 3.0 goes wrong. They are taken out of the rule that it
// follows, and applied to what it finds.

// The parts that only leave out instances in a rule by the day or shorter. libical counts no days from the end of the
// month or the year there, and with an interval loses its way. BYWEEKNO goes with them: libical misses the weeks that
// two years share, so such a rule becomes one by the week that leaves out most of them.
class RuleLimits {
public:
    RuleLimits() = default;
    // `start` is DTSTART's.
    static RuleLimits takeFrom(icalrecurrencetype& rule, int64_t start);

    bool allow(int64_t local) const;

private:
    bool allowWeek(int64_t local) const;

    std::vector<int> m_months, m_monthDays, m_yearDays, m_weekdays, m_hours, m_minutes, m_seconds;
    std::vector<int> m_weeks;
    int m_firstWeekday = 0;
    int m_firstYear = 0; // of the years' weeks; every m_interval-th year has instances
    int m_interval = 1;
};

// BYSETPOS: which of the instances of one period count. libical knows them only where each day has one instance.
class RulePositions {
public:
    RulePositions() = default;
    static RulePositions takeFrom(icalrecurrencetype& rule);

    bool isEmpty() const { return m_positions.empty(); }
    std::vector<int64_t> choose(const std::vector<int64_t>& period) const;

private:
    std::vector<int> m_positions;
};

// The periods of a rule, by their number: its weeks, from WKST on, where FREQ is WEEKLY.
class RulePeriods {
public:
    explicit RulePeriods(const icalrecurrencetype& rule);
    int64_t number(int64_t local) const;
    int64_t start(int64_t number) const;

private:
    icalrecurrencetype_frequency m_frequency;
    bool m_isOfWeeks;   // by the year, in weeks
    int m_firstWeekday; // 0 is Sunday
};

// The rule with the same meaning, in a form that libical follows: lists in order and without repetitions, no times of
// day for a day, and said in full what else comes from DTSTART.
void writeOut(icalrecurrencetype& rule, const icaltimetype& start);

} // namespace bridge
