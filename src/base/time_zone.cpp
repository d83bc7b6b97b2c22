#include "base/time_zone.h"

#include "base/date_components.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <string>
#include <unicode/basictz.h>

namespace bridge {

namespace {

constexpr int64_t secondsIn400Years = int64_t{146097} * 86400;

// ICU counts in milliseconds.
class NamedTimeZone : public TimeZone {
public:
    explicit NamedTimeZone(std::unique_ptr<const icu::BasicTimeZone> rules)
        : TimeZone(0, {}), m_rules(std::move(rules)) {}

    int offsetAt(int64_t moment) const override {
        int32_t standard = 0;
        int32_t daylight = 0;
        UErrorCode code = U_ZERO_ERROR;
        m_rules->getOffset(static_cast<double>(moment) * 1000, false, standard, daylight, code);
        return (standard + daylight) / 1000;
    }
    int64_t momentOf(int64_t local) const override {
        int32_t standard = 0;
        int32_t daylight = 0;
        UErrorCode code = U_ZERO_ERROR;
        m_rules->getOffsetFromLocal(static_cast<double>(local) * 1000, UCAL_TZ_LOCAL_FORMER, UCAL_TZ_LOCAL_FORMER,
                                    standard, daylight, code);
        return local - (standard + daylight) / 1000;
    }

private:
    std::unique_ptr<const icu::BasicTimeZone> m_rules;
};

// What can be a name at all: ICU takes any run of bytes, and cuts it at a zero byte.
bool isTimeZoneName(std::string_view name) {
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_+-/:";
    return !name.empty() && name.size() <= 100 && name.find_first_not_of(letters) == std::string_view::npos;
}

std::shared_ptr<const TimeZone> makeNamed(std::string_view name) {
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(
        icu::UnicodeString::fromUTF8(icu::StringPiece(name.data(), static_cast<int32_t>(name.size())))));
    const auto* rules = dynamic_cast<const icu::BasicTimeZone*>(zone.get());
    if (!rules || *zone == icu::TimeZone::getUnknown()) return nullptr;
    return std::make_shared<const NamedTimeZone>(
        std::unique_ptr<const icu::BasicTimeZone>(static_cast<icu::BasicTimeZone*>(zone.release())));
}

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
    auto zone = makeNamed(identifier);
    // Only what exists is kept: names come from outside, and there is no end to wrong ones.
    if (zone) known.emplace(identifier, zone);
    return zone;
}

std::shared_ptr<const TimeZone> TimeZone::user() {
    auto zone = named(userTimeZone());
    return zone ? zone : utc();
}

} // namespace bridge
