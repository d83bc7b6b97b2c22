#pragma once

#include "adapters/ical/item_time.h"
#include "adapters/ical/rule_parts.h"

#include <optional>

namespace bridge {

// How much one question may cost, so that no rule, however it is written, keeps a thread busy: counted in the periods
// of a rule (its days, where FREQ is DAILY) that are gone through, and the instances found. A question that comes to
// the limit is answered with what was found until there.
class WorkLimit {
public:
    // Less than a second's work. A rule by the second comes some three days far with it, one by the minute half a year,
    // one by the hour 28 years: counted from what is asked for, but from the start of the series where COUNT counts.
    // Rules by the day and longer never reach it.
    static constexpr int64_t most = 250'000;

    bool spend(int64_t amount) {
        m_left -= amount;
        return m_left >= 0;
    }
    int64_t left() const { return m_left > 0 ? m_left : 0; }
    bool isReached() const { return m_left < 0; }

private:
    int64_t m_left = most;
};

// One RRULE or EXRULE of a series. Local times are those of the series' DTSTART. What it stands for must not go before
// it: the rule uses what the property owns.
class RecurrenceRule {
public:
    // Nothing for a rule that means nothing, or that libical can't follow.
    static std::optional<RecurrenceRule> read(icalproperty* property, const ItemTime& start);

    bool isEndless() const { return !m_until && m_count == 0; }
    bool hasCount() const { return m_count > 0; }
    // Its UNTIL as local time; an instance at that time is the last.
    std::optional<int64_t> until() const { return m_until; }

    // Goes through its instances in order, from the first that is not before `from` to the last that is not after `to`.
    class Instances {
    public:
        Instances(const RecurrenceRule& rule, int64_t from, int64_t to, WorkLimit& limit);
        std::optional<int64_t> next();

    private:
        void begin();
        void stop();
        std::optional<int64_t> nextOfLibical();
        std::optional<int64_t> nextAllowed();
        std::optional<int64_t> nextChosen();

        const RecurrenceRule* m_rule;
        WorkLimit* m_limit;
        int64_t m_from;
        int64_t m_to;
        int64_t m_horizon = 0; // until where the iterator goes
        int64_t m_seen = 0;    // until where it has gone
        int64_t m_counted = 0; // towards COUNT
        ICalPointer<icalrecur_iterator> m_iterator;
        std::vector<int64_t> m_period; // instances of the period that is being gone through
        std::vector<int64_t> m_chosen; // of the one before, the last first
    };

private:
    RecurrenceRule(const icalrecurrencetype& rule, const ItemTime& start)
        : m_rule(rule), m_start(start), m_periods(rule) {}
    bool readUntil();
    int64_t period() const;
    bool canBeginAnywhere() const;

    icalrecurrencetype m_rule; // as libical follows it: without end, and without the parts below
    ItemTime m_start;
    int64_t m_begin = 0;  // where libical begins: the start, or that of its period
    int64_t m_cycles = 0; // how many times 400 years m_start was brought back into the years libical counts
    int64_t m_count = 0;
    std::optional<int64_t> m_until;
    std::optional<int64_t> m_untilMoment; // where UNTIL is in UTC
    RuleLimits m_limits;
    RulePositions m_positions;
    RulePeriods m_periods;
};

} // namespace bridge
