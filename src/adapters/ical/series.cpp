#include "adapters/ical/series.h"

#include "adapters/ical/library.h"

#include <algorithm>
#include <limits>

namespace bridge {

namespace {

constexpr int64_t distantPast = earliestDate.secondsSince1970;
constexpr int64_t distantFuture = latestDate.secondsSince1970;

int64_t dayOf(int64_t local) {
    return local - ((local % secondsOfDay) + secondsOfDay) % secondsOfDay;
}

bool isCancelled(icalcomponent* component) {
    auto* property = firstProperty(component, ICAL_STATUS_PROPERTY);
    const auto status = property ? icalproperty_get_status(property) : ICAL_STATUS_NONE;
    const bool isTaskDone = icalcomponent_isa(component) == ICAL_VTODO_COMPONENT && status == ICAL_STATUS_COMPLETED;
    return status == ICAL_STATUS_CANCELLED || isTaskDone;
}

// Compares and filters in the user's zone of one moment: asking for it again for every occurrence would be slow.
class Clock {
public:
    int64_t moment(const EventTime& time) const {
        return time.isFloating ? m_user->momentOf(time.seconds) : time.seconds;
    }
    bool isBefore(const Occurrence& a, const Occurrence& b) const {
        const int64_t left = moment(a.start);
        const int64_t right = moment(b.start);
        return left != right ? left < right : a.recurrenceID < b.recurrenceID;
    }
    bool isWithin(const Occurrence& occurrence, Date from, Date to) const {
        const int64_t start = moment(occurrence.start);
        const int64_t end = moment(occurrence.end);
        if (start >= to.secondsSince1970) return false;
        return end > from.secondsSince1970 || (start == end && start >= from.secondsSince1970);
    }
    const TimeZone& user() const { return *m_user; }

private:
    std::shared_ptr<const TimeZone> m_user = TimeZone::user();
};

} // namespace

Series::Series(const std::vector<icalcomponent*>& components, const Zones& zones) : m_zones(zones) {
    if (components.empty()) return;
    const bool hasMaster = !firstProperty(components.front(), ICAL_RECURRENCEID_PROPERTY);
    m_isRecurring = !hasMaster || components.size() > 1;
    if (hasMaster)
        readMaster(components.front());
    else if (const auto id = readTime(components.front(), ICAL_RECURRENCEID_PROPERTY, zones))
        m_form = id->form;
    for (size_t i = hasMaster ? 1 : 0; i < components.size(); ++i)
        readException(components[i], i);
}

void Series::readMaster(icalcomponent* master) {
    m_isCancelled = isCancelled(master);
    for (const auto kind : {ICAL_RRULE_PROPERTY, ICAL_RDATE_PROPERTY, ICAL_EXDATE_PROPERTY, ICAL_EXRULE_PROPERTY})
        if (firstProperty(master, kind)) m_isRecurring = true;
    m_times = ComponentTimes::read(master, m_zones);
    if (!m_times) return;
    m_form = m_times->start().form;
    for (auto* property : properties(master, ICAL_RRULE_PROPERTY))
        if (auto rule = RecurrenceRule::read(property, m_times->start())) m_rules.push_back(*rule);
    for (auto* property : properties(master, ICAL_RDATE_PROPERTY)) {
        const auto time = readTime(property, m_zones);
        if (!time) continue;
        Period length;
        if (icalvalue_isa(icalproperty_get_value(property)) != ICAL_DATE_VALUE) {
            const auto period = icalproperty_get_rdate(property).period;
            if (!icaltime_is_null_time(period.start)) {
                if (const auto end = localSeconds(period.end); end && !icaltime_is_null_time(period.end))
                    length.end = ItemTime{*end, time->form};
                else
                    length.duration = readDuration(period.duration);
            }
        }
        m_dates.emplace(keyOf(*time), length);
    }
    readExclusions(master);
}

void Series::readExclusions(icalcomponent* master) {
    for (auto* property : properties(master, ICAL_EXRULE_PROPERTY))
        if (auto rule = RecurrenceRule::read(property, m_times->start())) m_excludingRules.push_back(*rule);
    for (auto* property : properties(master, ICAL_EXDATE_PROPERTY)) {
        const auto time = readTime(property, m_zones);
        if (!time) continue;
        if (time->form.isDate && !m_form.isDate)
            m_excludedDays.insert(time->local);
        else
            m_excludedKeys.insert(keyOf(*time));
        if (time->form.zone && m_form.zone && time->form.tzid != m_form.tzid) m_excludedMoments.insert(time->moment());
    }
}

void Series::readException(icalcomponent* component, size_t index) {
    const auto id = readTime(component, ICAL_RECURRENCEID_PROPERTY, m_zones);
    if (!id) return;
    Exception exception{.component = index, .key = keyOf(*id), .occurrence = std::nullopt};
    const auto times = ComponentTimes::read(component, m_zones);
    if (!isCancelled(component)) {
        Occurrence occurrence;
        occurrence.recurrenceID = timeText(exception.key, m_form);
        occurrence.component = index;
        if (times) {
            occurrence.start = times->start().eventTime();
            occurrence.end = times->endAfter(times->start());
        } else {
            // It happens when the series has it.
            occurrence.start = timeOf(exception.key).eventTime();
            occurrence.end = m_times ? m_times->endAfter(timeOf(exception.key)) : occurrence.start;
        }
        exception.occurrence = occurrence;
    }
    if (id->form.zone && m_form.zone && id->form.tzid != m_form.tzid) m_exceptedMoments.insert(id->moment());
    m_exceptions.insert_or_assign(exception.key, std::move(exception));
}

int64_t Series::keyOf(const ItemTime& time) const {
    if (m_form.isDate) {
        if (time.form.isUTC()) return dayOf(TimeZone::user()->localAt(time.local));
        return dayOf(time.local);
    }
    if (time.form.isDate) {
        const int64_t start = m_times ? m_times->start().local : 0;
        return time.local + (start - dayOf(start));
    }
    if (time.form.tzid == m_form.tzid && time.form.isFloating() == m_form.isFloating()) return time.local;
    if (time.form.isFloating()) return time.local;
    const auto zone = m_form.zone ? m_form.zone : TimeZone::user();
    return zone->localAt(time.moment());
}

std::optional<int64_t> Series::keyFromText(std::string_view recurrenceID) const {
    if (recurrenceID.size() < 8 || recurrenceID.size() > 16) return std::nullopt;
    const auto local = localSeconds(icaltime_from_string(std::string(recurrenceID).c_str()));
    if (!local || timeText(*local, m_form) != recurrenceID) return std::nullopt;
    return local;
}

bool Series::isExcluded(int64_t key) const {
    if (m_excludedKeys.contains(key) || m_excludedDays.contains(dayOf(key))) return true;
    return !m_excludedMoments.empty() && m_excludedMoments.contains(timeOf(key).moment());
}

std::optional<Occurrence> Series::occurrenceAt(int64_t key) const {
    if (key < distantPast || key > distantFuture) return std::nullopt;
    Occurrence occurrence;
    if (m_isRecurring) occurrence.recurrenceID = timeText(key, m_form);
    occurrence.start = timeOf(key).eventTime();
    const auto date = m_dates.find(key);
    if (date != m_dates.end() && date->second.end) {
        occurrence.end = date->second.end->eventTime();
        occurrence.end.seconds = std::max(occurrence.end.seconds, occurrence.start.seconds);
    } else if (date != m_dates.end() && date->second.duration) {
        occurrence.end = date->second.duration->after(timeOf(key)).eventTime();
        occurrence.end.seconds = std::max(occurrence.end.seconds, occurrence.start.seconds);
    } else {
        occurrence.end = m_times->endAfter(timeOf(key));
    }
    return occurrence;
}

void Series::visitKeys(int64_t from, int64_t to, WorkLimit& limit, const std::function<bool(int64_t)>& take) const {
    constexpr int64_t none = std::numeric_limits<int64_t>::max();
    if (!m_times) return;
    struct Source {
        RecurrenceRule::Instances instances;
        int64_t next = none;
    };
    const auto open = [&](const std::vector<RecurrenceRule>& rules) {
        std::vector<Source> sources;
        for (const auto& rule : rules) {
            Source source{RecurrenceRule::Instances(rule, from, to, limit)};
            source.next = source.instances.next().value_or(none);
            sources.push_back(std::move(source));
        }
        return sources;
    };
    auto sources = open(m_rules);
    auto excluding = open(m_excludingRules);
    const int64_t start = m_times->start().local;
    bool isStartDue = start >= from && start <= to;
    auto date = m_dates.lower_bound(from);
    for (;;) {
        int64_t key = isStartDue ? start : none;
        if (date != m_dates.end()) key = std::min(key, date->first);
        for (const auto& source : sources)
            key = std::min(key, source.next);
        if (key == none || key > to) return;

        if (key == start) isStartDue = false;
        if (date != m_dates.end() && date->first == key) ++date;
        for (auto& source : sources)
            while (source.next <= key)
                source.next = source.instances.next().value_or(none);
        bool isLeft = true;
        for (auto& source : excluding) {
            while (source.next < key)
                source.next = source.instances.next().value_or(none);
            if (source.next == key) isLeft = false;
        }
        if (isLeft && !isExcluded(key) && !take(key)) return;
    }
}

void Series::visit(int64_t from, int64_t to, WorkLimit& limit,
                   const std::function<bool(const Occurrence&)>& take) const {
    if (m_isCancelled) return;
    visitKeys(from, to, limit, [&](int64_t key) {
        if (m_exceptions.contains(key)) return true;
        if (!m_exceptedMoments.empty() && m_exceptedMoments.contains(timeOf(key).moment())) return true;
        const auto occurrence = occurrenceAt(key);
        return !occurrence || take(*occurrence);
    });
}

FoundOccurrences Series::between(Date from, Date to, size_t limit) const {
    FoundOccurrences answer;
    if (to <= from || limit == 0) return answer;
    auto& found = answer.occurrences;
    const Clock clock;
    for (const auto& [key, exception] : m_exceptions)
        if (exception.occurrence && clock.isWithin(*exception.occurrence, from, to))
            found.push_back(*exception.occurrence);

    if (m_times) {
        // Local times run some hours ahead and behind when clocks change, so a little more is looked at than asked for.
        const int64_t slack = m_form.isUTC() ? 0 : 26 * 3600;
        int64_t reach = m_times->reach();
        for (const auto& [key, period] : m_dates) {
            const auto occurrence = occurrenceAt(key);
            if (occurrence) reach = std::max(reach, occurrence->end.seconds - occurrence->start.seconds);
        }
        const TimeZone& zone = m_form.zone ? *m_form.zone : clock.user();
        const int64_t first = zone.localAt(from.secondsSince1970) - reach - slack;
        const int64_t last = zone.localAt(to.secondsSince1970) + slack;
        WorkLimit work;
        size_t taken = 0;
        int64_t enough = last;
        visit(first, last, work, [&](const Occurrence& occurrence) {
            if (occurrence.start.seconds > enough) return false;
            if (!clock.isWithin(occurrence, from, to)) return true;
            found.push_back(occurrence);
            if (++taken == limit) enough = occurrence.start.seconds + slack;
            return true;
        });
        answer.isCutShort = work.isReached();
    }
    std::sort(found.begin(), found.end(),
              [&](const Occurrence& a, const Occurrence& b) { return clock.isBefore(a, b); });
    if (found.size() > limit) found.resize(limit);
    return answer;
}

std::optional<Occurrence> Series::first() const {
    const Clock clock;
    std::optional<Occurrence> earliest;
    const auto consider = [&](const Occurrence& occurrence) {
        if (!earliest || clock.isBefore(occurrence, *earliest)) earliest = occurrence;
    };
    for (const auto& [key, exception] : m_exceptions)
        if (exception.occurrence) consider(*exception.occurrence);
    WorkLimit work;
    visit(distantPast, distantFuture, work, [&](const Occurrence& occurrence) {
        consider(occurrence);
        return false;
    });
    return earliest;
}

std::optional<Occurrence> Series::find(int64_t key) const {
    const auto exception = m_exceptions.find(key);
    if (exception != m_exceptions.end()) return exception->second.occurrence;
    std::optional<Occurrence> found;
    WorkLimit work;
    visit(key, key, work, [&](const Occurrence& occurrence) {
        found = occurrence;
        return false;
    });
    return found;
}

std::optional<Occurrence> Series::lastOfRule(WorkLimit& limit) const {
    int64_t last = m_times->start().local;
    if (!m_dates.empty()) last = std::max(last, m_dates.rbegin()->first);
    const bool hasCount = std::any_of(m_rules.begin(), m_rules.end(), [](const auto& rule) { return rule.hasCount(); });
    for (const auto& rule : m_rules)
        last = std::max(last, rule.until().value_or(last));
    if (hasCount) last = distantFuture;
    std::optional<Occurrence> found;
    // What ends with UNTIL is looked for from there back; what ends with COUNT has to be counted from the start.
    const int64_t start = std::min(m_times->start().local, m_dates.empty() ? last : m_dates.begin()->first);
    int64_t window = hasCount ? last - start : 60 * secondsOfDay;
    for (;; window *= 8) {
        visit(std::max(last - window, start), last, limit, [&](const Occurrence& occurrence) {
            if (!found || occurrence.end.seconds >= found->end.seconds) found = occurrence;
            return true;
        });
        if (found || last - window <= start) return found;
    }
}

std::optional<EventSpan> Series::span() const {
    const auto start = first();
    if (!start) return std::nullopt;
    EventSpan span{.start = start->start, .end = std::nullopt};
    const bool isEndless =
        std::any_of(m_rules.begin(), m_rules.end(), [](const auto& rule) { return rule.isEndless(); });
    if (isEndless && !m_isCancelled) return span;

    const Clock clock;
    EventTime end = start->end;
    const auto consider = [&](const EventTime& time) {
        if (clock.moment(time) > clock.moment(end)) end = time;
    };
    for (const auto& [key, exception] : m_exceptions)
        if (exception.occurrence) consider(exception.occurrence->end);
    if (m_times) {
        WorkLimit work;
        if (const auto last = lastOfRule(work)) consider(last->end);
        if (work.isReached()) return span;
    }
    span.end = end;
    return span;
}

std::optional<int64_t> Series::after(int64_t key) const {
    std::optional<int64_t> found;
    WorkLimit work;
    visitKeys(key + 1, distantFuture, work, [&](int64_t next) {
        const auto exception = m_exceptions.find(next);
        if (exception != m_exceptions.end() && !exception->second.occurrence) return true;
        found = next;
        return false;
    });
    return found;
}

} // namespace bridge
