#include "base/time_zone.h"

#include "base/date_components.h"
#include "base/time_zone_file.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <string>

namespace bridge {

namespace {

constexpr int64_t secondsIn400Years = int64_t{146097} * 86400;

} // namespace

TimeZone::TimeZone(int initialOffset, std::vector<Transition> transitions)
    : m_initialOffset(initialOffset), m_transitions(std::move(transitions)) {
    std::stable_sort(m_transitions.begin(), m_transitions.end(),
                     [](const Transition& a, const Transition& b) { return a.moment < b.moment; });
}

TimeZone::TimeZone(int initialOffset, std::vector<Transition> transitions, int64_t repeatsFrom)
    : TimeZone(initialOffset, std::move(transitions)) {
    m_repeatsFrom = repeatsFrom;
}

int TimeZone::offsetAt(int64_t moment) const {
    if (m_repeatsFrom && moment >= *m_repeatsFrom + secondsIn400Years)
        moment = *m_repeatsFrom + (moment - *m_repeatsFrom) % secondsIn400Years;
    const auto next =
        std::upper_bound(m_transitions.begin(), m_transitions.end(), moment,
                         [](int64_t sought, const Transition& transition) { return sought < transition.moment; });
    return next == m_transitions.begin() ? m_initialOffset : std::prev(next)->offset;
}

int64_t TimeZone::momentOf(int64_t local) const {
    // No clock is more than 26 hours from UTC, so these are the offsets before and after any change that matters.
    constexpr int64_t farEnough = 26 * 3600;
    const int before = offsetAt(local - farEnough);
    const int after = offsetAt(local + farEnough);
    if (before == after && offsetAt(local - before) == before) return local - before;

    const auto first =
        std::lower_bound(m_transitions.begin(), m_transitions.end(), local - 2 * farEnough,
                         [](const Transition& transition, int64_t sought) { return transition.moment < sought; });
    std::optional<int64_t> found;
    const auto take = [&](int offset) {
        const int64_t moment = local - offset;
        if (offsetAt(moment) == offset && (!found || moment < *found)) found = moment;
    };
    take(before);
    take(after);
    for (auto change = first; change != m_transitions.end() && change->moment <= local + 2 * farEnough; ++change)
        take(change->offset);
    return found.value_or(local - before);
}

const std::shared_ptr<const TimeZone>& TimeZone::utc() {
    static const auto zone = std::make_shared<const TimeZone>(0, std::vector<Transition>{});
    return zone;
}

std::shared_ptr<const TimeZone> TimeZone::named(std::string_view identifier) {
    static std::mutex mutex;
    static std::map<std::string, std::shared_ptr<const TimeZone>, std::less<>> known;
    if (identifier == "UTC") return utc();
    if (!isTimeZoneName(identifier)) return nullptr;
    const std::lock_guard lock(mutex);
    const auto found = known.find(identifier);
    if (found != known.end()) return found->second;
    auto zone = readTimeZone(std::string(identifier));
    // Only what exists is kept: names come from outside, and there is no end to wrong ones.
    if (zone) known.emplace(identifier, zone);
    return zone;
}

std::shared_ptr<const TimeZone> TimeZone::user() {
    auto zone = named(userTimeZone());
    return zone ? zone : utc();
}

} // namespace bridge
