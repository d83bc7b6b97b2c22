#include "base/date_components.h"

#include "base/time_zone.h"

#include <chrono>
#include <cstdlib>
#include <mutex>
#include <sys/stat.h>
#include <unicode/timezone.h>

namespace bridge {

namespace {

using namespace std::chrono;

// What the answer of detectHostTimeZone() depends on; looking at it costs less than detecting again.
struct ZoneSetting {
    std::string variable;
    ino_t file = 0;
    timespec changed{};

    static ZoneSetting now() {
        ZoneSetting setting;
        const char* variable = std::getenv("TZ");
        setting.variable = variable ? variable : "";
        struct stat localtime {};
        if (::lstat("/etc/localtime", &localtime) == 0) {
            setting.file = localtime.st_ino;
            setting.changed = localtime.st_mtim;
        }
        return setting;
    }
    bool operator==(const ZoneSetting& other) const {
        return variable == other.variable && file == other.file && changed.tv_sec == other.changed.tv_sec &&
               changed.tv_nsec == other.changed.tv_nsec;
    }
};

std::string detectedTimeZone() {
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    icu::UnicodeString name;
    zone->getID(name);
    std::string identifier;
    name.toUTF8String(identifier);
    return TimeZone::named(identifier) ? identifier : "UTC";
}

} // namespace

std::string userTimeZone() {
    static std::mutex mutex;
    static std::optional<ZoneSetting> seen;
    static std::string identifier;
    const std::lock_guard lock(mutex);
    auto setting = ZoneSetting::now();
    if (seen && *seen == setting) return identifier;
    identifier = detectedTimeZone();
    seen = std::move(setting);
    return identifier;
}

DateComponents componentsToTheMinute(Date date) {
    DateComponents components;
    components.timeZone = userTimeZone();
    const sys_seconds local{seconds(TimeZone::user()->localAt(date.secondsSince1970))};
    const auto midnight = floor<days>(local);
    const year_month_day day(midnight);
    const hh_mm_ss clock(local - midnight);
    components.year = int(day.year());
    components.month = static_cast<int>(unsigned(day.month()));
    components.day = static_cast<int>(unsigned(day.day()));
    components.hour = static_cast<int>(clock.hours().count());
    components.minute = static_cast<int>(clock.minutes().count());
    return components;
}

std::optional<Date> dateFrom(const DateComponents& components) {
    const auto zone = components.timeZone ? TimeZone::named(*components.timeZone) : TimeZone::user();
    const int hour = components.hour.value_or(0);
    const int minute = components.minute.value_or(0);
    const int second = components.second.value_or(0);
    // A year of more digits than a calendar's would be cut to the 16 bits that chrono counts in.
    if (!zone || components.year < 0 || components.year > 10'000 || hour < 0 || hour > 23 || minute < 0 ||
        minute > 59 || second < 0 || second > 60 || components.month < 1 || components.month > 12 || components.day < 1)
        return std::nullopt;
    const year_month_day day{year(components.year), month(static_cast<unsigned>(components.month)),
                             std::chrono::day(static_cast<unsigned>(components.day))};
    if (!day.ok()) return std::nullopt;
    const auto local = sys_days(day) + hours(hour) + minutes(minute) + seconds(second);
    const Date date{zone->momentOf(local.time_since_epoch().count())};
    if (date < earliestDate || date > latestDate) return std::nullopt;
    return date;
}

} // namespace bridge
