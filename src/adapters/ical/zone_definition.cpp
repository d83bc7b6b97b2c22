#include "adapters/ical/item_time.h"
#include "adapters/ical/library.h"
#include "adapters/ical/zones.h"

#include <algorithm>
#include <mutex>

namespace bridge {

namespace {

// A real zone changes its clocks some thousand times in the years that libical counts (to 2582). One that does more is
// no zone, and is not let grow.
constexpr size_t mostChanges = 5000;
constexpr int largestOffset = 26 * 3600;

struct Change {
    int64_t local = 0;
    int from = 0;
    int to = 0;
};

// A rule by the hour or shorter would have libical count for minutes, and changes no clock on earth.
bool canBeOfAZone(const icalrecurrencetype& rule) {
    return rule.freq == ICAL_YEARLY_RECURRENCE || rule.freq == ICAL_MONTHLY_RECURRENCE ||
           rule.freq == ICAL_WEEKLY_RECURRENCE || rule.freq == ICAL_DAILY_RECURRENCE;
}

void addRule(icalproperty* property, icaltimetype start, const Change& change, std::vector<Change>& changes) {
    auto rule = icalproperty_get_rrule(property);
    if (!canBeOfAZone(rule)) return;
    // UNTIL is in UTC (RFC 5545, 3.6.5); the iterator counts local times.
    const auto until = localSeconds(rule.until);
    if (until && icaltime_is_utc(rule.until)) rule.until = icalTime(*until + change.from, false);
    const ICalPointer<icalrecur_iterator> iterator(icalrecur_iterator_new(rule, start));
    if (!iterator) return;
    while (changes.size() < mostChanges) {
        const auto local = localSeconds(icalrecur_iterator_next(iterator.get()));
        if (!local) return;
        changes.push_back({*local, change.from, change.to});
    }
}

void addObservance(icalcomponent* observance, std::vector<Change>& changes) {
    auto* startProperty = firstProperty(observance, ICAL_DTSTART_PROPERTY);
    auto* toProperty = firstProperty(observance, ICAL_TZOFFSETTO_PROPERTY);
    if (!startProperty || !toProperty) return;
    auto* fromProperty = firstProperty(observance, ICAL_TZOFFSETFROM_PROPERTY);
    const auto start = readTime(startProperty, Zones());
    if (!start) return;
    Change change{.local = start->local, .to = icalproperty_get_tzoffsetto(toProperty)};
    change.from = fromProperty ? icalproperty_get_tzoffsetfrom(fromProperty) : change.to;
    if (std::abs(change.from) > largestOffset || std::abs(change.to) > largestOffset) return;

    changes.push_back(change);
    for (auto* property : properties(observance, ICAL_RRULE_PROPERTY))
        addRule(property, icalTime(start->local, false), change, changes);
    for (auto* property : properties(observance, ICAL_RDATE_PROPERTY))
        if (const auto date = readTime(property, Zones())) {
            const int64_t timeOfDay = date->form.isDate ? start->local % secondsOfDay : 0;
            const int64_t local = date->local + timeOfDay + (date->form.isUTC() ? change.from : 0);
            changes.push_back({local, change.from, change.to});
        }
}

std::shared_ptr<const TimeZone> workOut(const std::string& definition) {
    const ICalPointer<icalcomponent> component(icalparser_parse_string(definition.c_str()));
    if (!component || icalcomponent_isa(component.get()) != ICAL_VTIMEZONE_COMPONENT) return nullptr;
    std::vector<Change> changes;
    for (auto* observance : components(component.get())) {
        const auto kind = icalcomponent_isa(observance);
        if (kind == ICAL_XSTANDARD_COMPONENT || kind == ICAL_XDAYLIGHT_COMPONENT) addObservance(observance, changes);
        if (changes.size() > mostChanges) return nullptr;
    }
    if (changes.empty()) return nullptr;
    const auto first = std::min_element(changes.begin(), changes.end(), [](const Change& a, const Change& b) {
        return a.local - a.from < b.local - b.from;
    });
    const int initial = first->from;
    std::vector<TimeZone::Transition> transitions;
    int64_t last = 0;
    for (const auto& change : changes) {
        transitions.push_back({change.local - change.from, change.to});
        last = std::max(last, change.local - change.from);
    }
    // Only an endless rule comes this far; the 400 years before libical's last year are those that repeat.
    constexpr int64_t year2570 = 18934214400;
    constexpr int64_t year2182 = 6690124800;
    if (last < year2570) return std::make_shared<const TimeZone>(initial, std::move(transitions));
    return std::make_shared<const TimeZone>(initial, std::move(transitions), year2182);
}

} // namespace

std::shared_ptr<const TimeZone> zoneFromDefinition(const std::string& definition) {
    static std::mutex mutex;
    static std::map<std::string, std::shared_ptr<const TimeZone>> known;
    const std::lock_guard lock(mutex);
    const auto found = known.find(definition);
    if (found != known.end()) return found->second;
    // Calendars come with a handful of zones; whoever sends thousands shall not fill the memory.
    if (known.size() >= 64) known.clear();
    return known[definition] = workOut(definition);
}

} // namespace bridge
