#include "adapters/ical/recurrence_rule.h"

#include <algorithm>

namespace bridge {

namespace {

// The Gregorian calendar, days of the week included, repeats after this time.
constexpr int64_t cycle = int64_t{146097} * secondsOfDay;
// libical counts years up to 2582; a series that starts after 2182 would not have a cycle before it.
constexpr int64_t lastStart = 6721660799; // 2182-12-31T23:59:59
constexpr int64_t lastTime = 19344268799; // 2582-12-30T23:59:59

// The clock's own changes make local times differ from true ones by less than this.
constexpr int64_t slack = 26 * 3600;

// libical goes through all instances of a month or a year that come before the first one asked for; more than these
// would take it seconds.
constexpr size_t mostInstancesOfPeriod = 700'000;

template <size_t Size> size_t valueCount(const short (&values)[Size]) {
    const auto count = static_cast<size_t>(std::find(values, values + Size, ICAL_RECURRENCE_ARRAY_MAX) - values);
    return std::max<size_t>(count, 1);
}

bool hasTooManyInstances(const icalrecurrencetype& rule) {
    const size_t days = rule.freq == ICAL_YEARLY_RECURRENCE ? 366 : rule.freq == ICAL_MONTHLY_RECURRENCE ? 31 : 0;
    return days * valueCount(rule.by_hour) * valueCount(rule.by_minute) * valueCount(rule.by_second) >
           mostInstancesOfPeriod;
}

} // namespace

std::optional<RecurrenceRule> RecurrenceRule::read(icalproperty* property, const ItemTime& start) {
    const auto* value = icalproperty_get_value(property);
    if (!value || icalvalue_isa(value) != ICAL_RECUR_VALUE) return std::nullopt;
    RecurrenceRule read(icalvalue_get_recur(value), start);
    auto& rule = read.m_rule;
    if (rule.freq < ICAL_SECONDLY_RECURRENCE || rule.freq > ICAL_YEARLY_RECURRENCE) return std::nullopt;
    if (rule.interval < 1) rule.interval = 1;
    if (rule.count < 0 || hasTooManyInstances(rule) || !read.readUntil()) return std::nullopt;
    read.m_count = rule.count;
    rule.count = 0;
    while (read.m_start.local > lastStart) {
        read.m_start.local -= cycle;
        ++read.m_cycles;
    }
    read.m_begin = read.m_start.local;
    const auto first = icalTime(read.m_start.local, start.form.isDate);
    // Another calendar's months and years are left to libical whole.
    if (!rule.rscale) {
        writeOut(rule, first);
        read.m_limits = RuleLimits::takeFrom(rule, read.m_start.local);
        read.m_positions = RulePositions::takeFrom(rule);
        if (!read.m_positions.isEmpty()) read.m_begin = read.m_periods.start(read.m_periods.number(read.m_start.local));
    }
    if (!ICalPointer<icalrecur_iterator>(icalrecur_iterator_new(rule, first))) return std::nullopt;
    return read;
}

bool RecurrenceRule::readUntil() {
    if (icaltime_is_null_time(m_rule.until)) return true;
    const auto until = localSeconds(m_rule.until);
    if (!until) return false;
    if (m_rule.until.is_date || m_start.form.isDate) {
        // The whole of that day, whatever time of day the series has.
        m_until = *until - ((*until % secondsOfDay) + secondsOfDay) % secondsOfDay + secondsOfDay - 1;
    } else if (icaltime_is_utc(m_rule.until)) {
        const auto zone = m_start.form.zone ? m_start.form.zone : TimeZone::user();
        m_until = zone->localAt(*until);
        m_untilMoment = *until;
    } else {
        m_until = *until;
    }
    m_rule.until = icaltime_null_time();
    return true;
}

int64_t RecurrenceRule::period() const {
    constexpr int64_t seconds[]{1, 60, 3600, secondsOfDay, 7 * secondsOfDay, 31 * secondsOfDay, 366 * secondsOfDay};
    return seconds[m_rule.freq] * m_rule.interval;
}

bool RecurrenceRule::canBeginAnywhere() const {
    return m_count == 0 && !m_rule.rscale;
}

RecurrenceRule::Instances::Instances(const RecurrenceRule& rule, int64_t from, int64_t to, WorkLimit& limit)
    : m_rule(&rule),
      m_limit(&limit),
      m_from(std::max(from - rule.m_cycles * cycle, rule.m_start.local)),
      m_to(std::min(to - rule.m_cycles * cycle, lastTime)) {
    if (rule.m_until) m_to = std::min(m_to, *rule.m_until - rule.m_cycles * cycle + (rule.m_untilMoment ? slack : 0));
    begin();
}

// The years and months of a series that begins later are not always those of the series itself (think of the 31st), so
// there libical has to find the way. By the week and shorter, whole periods make no difference; and there libical's own
// way goes wrong when an interval doesn't divide the day.
void RecurrenceRule::Instances::begin() {
    const bool isDate = m_rule->m_start.form.isDate;
    const bool isLong = m_rule->m_rule.freq >= ICAL_MONTHLY_RECURRENCE;
    const int64_t period = m_rule->period();
    int64_t start = m_rule->m_begin;
    // Two periods earlier: the first is cut by the start, which counts where BYSETPOS does.
    const bool isFar = m_rule->canBeginAnywhere() && m_from - 2 * period > start;
    if (isFar && !isLong) start += (m_from - 2 * period - start) / period * period;
    if (start > m_to) return;

    // The period has to be gone through to its end before it is known which is its last.
    const int64_t wanted = m_rule->m_positions.isEmpty() ? m_to : std::min(m_to + period, lastTime);
    // libical looks on by itself for as long as nothing matches. UNTIL is what stops it.
    const int64_t seen = isFar && isLong ? m_from - 2 * period : start;
    const int64_t affordable = std::min(m_limit->left() + 1, (lastTime - seen) / period + 1);
    m_horizon = std::min(wanted, seen + affordable * period);
    auto rule = m_rule->m_rule;
    rule.until = icalTime(m_horizon, isDate);
    m_iterator.reset(icalrecur_iterator_new(rule, icalTime(start, isDate)));
    if (m_iterator && isFar && isLong) icalrecur_iterator_set_start(m_iterator.get(), icalTime(seen, isDate));
    m_seen = seen;
}

void RecurrenceRule::Instances::stop() {
    m_limit->spend((m_horizon - m_seen) / m_rule->period());
    // There may be more, but not within the limit.
    if (m_horizon < m_to) m_limit->spend(m_limit->left() + 1);
    m_iterator.reset();
}

std::optional<int64_t> RecurrenceRule::Instances::nextOfLibical() {
    if (!m_iterator) return std::nullopt;
    const auto local = localSeconds(icalrecur_iterator_next(m_iterator.get()));
    if (!local || *local > m_horizon) {
        stop();
        return std::nullopt;
    }
    const bool isAffordable = m_limit->spend(1 + (*local - m_seen) / m_rule->period());
    m_seen = *local;
    if (isAffordable) return local;
    m_iterator.reset();
    return std::nullopt;
}

std::optional<int64_t> RecurrenceRule::Instances::nextAllowed() {
    auto local = nextOfLibical();
    while (local && !m_rule->m_limits.allow(*local))
        local = nextOfLibical();
    return local;
}

std::optional<int64_t> RecurrenceRule::Instances::nextChosen() {
    if (m_rule->m_positions.isEmpty()) return nextAllowed();
    while (m_chosen.empty()) {
        const auto local = nextAllowed();
        if (!local && m_period.empty()) return std::nullopt;
        if (local &&
            (m_period.empty() || m_rule->m_periods.number(m_period.front()) == m_rule->m_periods.number(*local))) {
            m_period.push_back(*local);
            continue;
        }
        m_chosen = m_rule->m_positions.choose(m_period);
        std::reverse(m_chosen.begin(), m_chosen.end());
        m_period.clear();
        if (local) m_period.push_back(*local);
    }
    const int64_t chosen = m_chosen.back();
    m_chosen.pop_back();
    return chosen;
}

std::optional<int64_t> RecurrenceRule::Instances::next() {
    for (auto local = nextChosen(); local && *local <= m_to; local = nextChosen()) {
        if (*local < m_rule->m_start.local) continue;
        // The start counts as the first, whether the rule has it or not (RFC 5545, 3.3.10).
        if (m_counted == 0 && *local > m_rule->m_start.local) m_counted = 1;
        if (m_rule->m_count > 0 && ++m_counted > m_rule->m_count) break;
        if (*local < m_from) continue;
        const int64_t found = *local + m_rule->m_cycles * cycle;
        if (m_rule->m_untilMoment) {
            const auto& form = m_rule->m_start.form;
            const auto zone = form.zone ? form.zone : TimeZone::user();
            if (zone->momentOf(found) > *m_rule->m_untilMoment) continue;
        }
        return found;
    }
    m_iterator.reset();
    return std::nullopt;
}

} // namespace bridge
