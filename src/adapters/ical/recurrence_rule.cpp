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

// What the BY parts of a rule by the month or the year make of one day. libical goes through all of them from the
// beginning of the period; more than one a minute would take it seconds to come to a day in December.
constexpr size_t mostTimesOfDay = 1440;

template <size_t Size> size_t valueCount(const short (&values)[Size]) {
    return static_cast<size_t>(std::find(values, values + Size, ICAL_RECURRENCE_ARRAY_MAX) - values);
}

size_t timesOfDay(const icalrecurrencetype& rule) {
    const auto atLeastOne = [](size_t count) { return std::max<size_t>(count, 1); };
    return atLeastOne(valueCount(rule.by_hour)) * atLeastOne(valueCount(rule.by_minute)) *
           atLeastOne(valueCount(rule.by_second));
}

} // namespace

std::optional<RecurrenceRule> RecurrenceRule::read(icalproperty* property, const ItemTime& start) {
    const auto* value = icalproperty_get_value(property);
    if (!value || icalvalue_isa(value) != ICAL_RECUR_VALUE) return std::nullopt;
    RecurrenceRule read(icalvalue_get_recur(value), start);
    auto& rule = read.m_rule;
    if (rule.freq < ICAL_SECONDLY_RECURRENCE || rule.freq > ICAL_YEARLY_RECURRENCE) return std::nullopt;
    if (rule.interval < 1) rule.interval = 1;
    if (rule.count < 0 || timesOfDay(rule) > mostTimesOfDay) return std::nullopt;

    if (!icaltime_is_null_time(rule.until)) {
        const auto until = localSeconds(rule.until);
        if (!until) return std::nullopt;
        if (rule.until.is_date || start.form.isDate) {
            // The whole of that day, whatever time of day the series has.
            read.m_until = *until - ((*until % secondsOfDay) + secondsOfDay) % secondsOfDay + secondsOfDay - 1;
        } else if (icaltime_is_utc(rule.until)) {
            const auto zone = start.form.zone ? start.form.zone : TimeZone::user();
            read.m_until = zone->localAt(*until);
            read.m_untilMoment = *until;
        } else {
            read.m_until = *until;
        }
        rule.until = icaltime_null_time();
    }
    while (read.m_start.local > lastStart) {
        read.m_start.local -= cycle;
        ++read.m_cycles;
    }
    const ICalPointer<icalrecur_iterator> iterator(
        icalrecur_iterator_new(rule, icalTime(read.m_start.local, start.form.isDate)));
    if (!iterator) return std::nullopt;
    return read;
}

int64_t RecurrenceRule::period() const {
    constexpr int64_t seconds[]{1, 60, 3600, secondsOfDay, 7 * secondsOfDay, 31 * secondsOfDay, 366 * secondsOfDay};
    return seconds[m_rule.freq] * m_rule.interval;
}

bool RecurrenceRule::canBeginAnywhere() const {
    return m_rule.count == 0 && !m_rule.rscale;
}

RecurrenceRule::Instances::Instances(const RecurrenceRule& rule, int64_t from, int64_t to, WorkLimit& limit)
    : m_rule(&rule),
      m_limit(&limit),
      m_from(from - rule.m_cycles * cycle),
      m_to(std::min(to - rule.m_cycles * cycle, lastTime)) {
    if (rule.m_until) m_to = std::min(m_to, *rule.m_until - rule.m_cycles * cycle + (rule.m_untilMoment ? slack : 0));
    begin();
}

// The years and months of a series that begins later are not always those of the series itself (think of the 31st), so
// there libical has to find the way. By the week and shorter, whole periods make no difference; and there libical's own
// way goes wrong when an interval doesn't divide the day.
void RecurrenceRule::Instances::begin() {
    const int64_t period = m_rule->period();
    int64_t start = m_rule->m_start.local;
    const bool isLong = m_rule->m_rule.freq >= ICAL_MONTHLY_RECURRENCE;
    // Two periods earlier: the first may be cut by the start, which counts where BYSETPOS does.
    if (m_rule->canBeginAnywhere() && !isLong && m_from - 2 * period > start)
        start += (m_from - 2 * period - start) / period * period;
    if (start > m_to) return;
    // libical looks on by itself for as long as nothing matches. UNTIL is what stops it.
    const int64_t farthest = start + std::min(m_limit->left() + 1, (lastTime - start) / period + 1) * period;
    m_horizon = std::min(m_to, farthest);
    auto rule = m_rule->m_rule;
    rule.until = icalTime(m_horizon, false);
    if (m_rule->m_start.form.isDate) rule.until.is_date = 1;
    m_iterator.reset(icalrecur_iterator_new(rule, icalTime(start, m_rule->m_start.form.isDate)));
    if (m_iterator && isLong && m_rule->canBeginAnywhere() && m_from - 2 * period > start)
        icalrecur_iterator_set_start(m_iterator.get(), icalTime(m_from - 2 * period, m_rule->m_start.form.isDate));
    m_seen = start;
}

void RecurrenceRule::Instances::stop() {
    m_limit->spend((m_horizon - m_seen) / m_rule->period());
    // There may be more, but not within the limit.
    if (m_horizon < m_to) m_limit->spend(m_limit->left() + 1);
    m_iterator.reset();
}

std::optional<int64_t> RecurrenceRule::Instances::next() {
    while (m_iterator) {
        const auto local = localSeconds(icalrecur_iterator_next(m_iterator.get()));
        if (!local || *local > m_horizon) {
            stop();
            break;
        }
        const bool isAffordable = m_limit->spend(1 + (*local - m_seen) / m_rule->period());
        m_seen = *local;
        if (!isAffordable) {
            m_iterator.reset();
            break;
        }
        if (*local < m_from) continue;
        const int64_t found = *local + m_rule->m_cycles * cycle;
        if (m_rule->m_untilMoment) {
            const auto& form = m_rule->m_start.form;
            const auto zone = form.zone ? form.zone : TimeZone::user();
            if (zone->momentOf(found) > *m_rule->m_untilMoment) continue;
        }
        return found;
    }
    return std::nullopt;
}

} // namespace bridge
