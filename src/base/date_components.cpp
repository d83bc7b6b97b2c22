#include "base/date_components.h"

#include <cstdlib>
#include <limits>
#include <mutex>
#include <sys/stat.h>
#include <unicode/gregocal.h>
#include <unicode/timezone.h>

namespace bridge {

namespace {

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

std::string identifierOf(const icu::TimeZone& zone) {
    icu::UnicodeString name;
    zone.getID(name);
    std::string identifier;
    name.toUTF8String(identifier);
    return identifier;
}

// The Gregorian calendar in a zone. Made once for each thread and zone in turn: making one costs far more than using
// it.
icu::GregorianCalendar* calendarIn(const std::string& zone) {
    thread_local std::string present;
    thread_local std::unique_ptr<icu::GregorianCalendar> calendar;
    if (calendar && present == zone) return calendar.get();

    std::unique_ptr<icu::TimeZone> rules(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(zone)));
    if (*rules == icu::TimeZone::getUnknown()) return nullptr;
    UErrorCode code = U_ZERO_ERROR;
    auto made = std::make_unique<icu::GregorianCalendar>(rules.release(), code);
    made->setGregorianChange(-std::numeric_limits<double>::max(), code);
    made->setRepeatedWallTimeOption(UCAL_WALLTIME_FIRST);
    made->setSkippedWallTimeOption(UCAL_WALLTIME_LAST);
    if (U_FAILURE(code)) return nullptr;
    calendar = std::move(made);
    present = zone;
    return calendar.get();
}

} // namespace

std::string userTimeZone() {
    static std::mutex mutex;
    static std::optional<ZoneSetting> seen;
    static std::string identifier;
    const std::lock_guard lock(mutex);
    auto setting = ZoneSetting::now();
    if (seen && *seen == setting) return identifier;
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
    identifier = identifierOf(*zone);
    if (!calendarIn(identifier)) identifier = "UTC";
    seen = std::move(setting);
    return identifier;
}

DateComponents componentsToTheMinute(Date date) {
    DateComponents components;
    components.timeZone = userTimeZone();
    auto* calendar = calendarIn(*components.timeZone);
    UErrorCode code = U_ZERO_ERROR;
    calendar->setLenient(true);
    calendar->setTime(static_cast<double>(date.secondsSince1970) * 1000, code);
    components.year = calendar->get(UCAL_EXTENDED_YEAR, code);
    components.month = calendar->get(UCAL_MONTH, code) + 1;
    components.day = calendar->get(UCAL_DATE, code);
    components.hour = calendar->get(UCAL_HOUR_OF_DAY, code);
    components.minute = calendar->get(UCAL_MINUTE, code);
    return components;
}

std::optional<Date> dateFrom(const DateComponents& components) {
    auto* calendar = calendarIn(components.timeZone ? *components.timeZone : userTimeZone());
    if (!calendar) return std::nullopt;
    UErrorCode code = U_ZERO_ERROR;
    const int hour = components.hour.value_or(0);
    const int minute = components.minute.value_or(0);
    const int second = components.second.value_or(0);
    // Checked without the zone: a time that the clocks skip is no mistake, the thirtieth of February is.
    if (components.month < 1 || components.month > 12 || hour < 0 || hour > 23 || minute < 0 || minute > 59 ||
        second < 0 || second > 60)
        return std::nullopt;
    calendar->clear();
    calendar->set(UCAL_EXTENDED_YEAR, components.year);
    calendar->set(UCAL_MONTH, components.month - 1);
    calendar->set(UCAL_DATE, 1);
    if (components.day < 1 || components.day > calendar->getActualMaximum(UCAL_DATE, code)) return std::nullopt;
    calendar->clear();
    calendar->set(UCAL_EXTENDED_YEAR, components.year);
    calendar->set(UCAL_MONTH, components.month - 1);
    calendar->set(UCAL_DATE, components.day);
    calendar->set(UCAL_HOUR_OF_DAY, hour);
    calendar->set(UCAL_MINUTE, minute);
    calendar->set(UCAL_SECOND, second);
    const double milliseconds = calendar->getTime(code);
    if (U_FAILURE(code)) return std::nullopt;
    const Date date{static_cast<int64_t>(milliseconds / 1000)};
    if (date < earliestDate || date > latestDate) return std::nullopt;
    return date;
}

} // namespace bridge
