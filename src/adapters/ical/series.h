#pragma once

#include "adapters/ical/component_times.h"
#include "adapters/ical/recurrence_rule.h"

#include <functional>
#include <map>
#include <set>
#include <vector>

namespace bridge {

// When the components of one UID happen. Made afresh for each question: it holds on to the components.
//
// An occurrence is known by its key: the local time, in the form of the series' DTSTART, at which the rule has it; so
// it stays the same wherever an exception moves it to. DTSTART itself is always one of them (RFC 5545, 3.8.2.4).
class Series {
public:
    // The master comes first, unless there are exceptions only.
    Series(const std::vector<icalcomponent*>& components, const Zones& zones);

    bool isRecurring() const { return m_isRecurring; }
    // Of its keys.
    const TimeForm& form() const { return m_form; }

    FoundOccurrences between(Date from, Date to, size_t limit) const;
    std::optional<Occurrence> first() const;
    std::optional<Occurrence> find(int64_t key) const;
    std::optional<EventSpan> span() const;
    // Nothing for a text that is no RECURRENCE-ID in the form of the series.
    std::optional<int64_t> keyFromText(std::string_view recurrenceID) const;

    // The next one after that key; without one of which an exception says that it is over.
    std::optional<int64_t> after(int64_t key) const;

private:
    struct Exception {
        size_t component = 0;
        int64_t key = 0;
        std::optional<Occurrence> occurrence; // none where it is cancelled
    };
    struct Period {
        std::optional<ItemTime> end;
        std::optional<Duration> duration;
    };

    void readMaster(icalcomponent* master);
    void readExclusions(icalcomponent* master);
    void readException(icalcomponent* component, size_t index);
    int64_t keyOf(const ItemTime& time) const;
    ItemTime timeOf(int64_t key) const { return {key, m_form}; }
    bool isExcluded(int64_t key) const;
    std::optional<Occurrence> occurrenceAt(int64_t key) const;
    // Those of the rule and the dates that are left, exceptions not counted, in order of their keys. Ends when `take`
    // answers false.
    void visit(int64_t from, int64_t to, WorkLimit& limit, const std::function<bool(const Occurrence&)>& take) const;
    void visitKeys(int64_t from, int64_t to, WorkLimit& limit, const std::function<bool(int64_t)>& take) const;
    std::optional<Occurrence> lastOfRule(WorkLimit& limit) const;

    const Zones& m_zones;
    TimeForm m_form;
    bool m_isRecurring = false;
    bool m_isCancelled = false;
    std::optional<ComponentTimes> m_times; // the master's
    std::vector<RecurrenceRule> m_rules;
    std::vector<RecurrenceRule> m_excludingRules;
    std::map<int64_t, Period> m_dates; // RDATE; those without a length of their own have an empty period
    std::set<int64_t> m_excludedKeys;
    std::set<int64_t> m_excludedDays;
    std::set<int64_t> m_excludedMoments;
    std::map<int64_t, Exception> m_exceptions;
    std::set<int64_t> m_exceptedMoments; // of exceptions whose RECURRENCE-ID names the moment in another zone
};

} // namespace bridge
