#include "adapters/ical/item_time.h"

#include "adapters/ical/library.h"
#include "base/date_components.h"
#include "base/platform_error.h"

#include <algorithm>
#include <chrono>
#include <fmt/format.h>

namespace bridge {

namespace {

using namespace std::chrono;

// Beyond what four digits of the year can say, with room for adding durations.
constexpr int64_t farAway = int64_t{1} << 40;

int64_t clampTime(int64_t seconds) {
    return std::clamp(seconds, -farAway, farAway);
}

} // namespace

TimeForm TimeForm::user() {
    TimeForm form;
    const std::string name = userTimeZone();
    form.zone = TimeZone::named(name);
    if (!form.zone || name == "UTC" || name == "Etc/UTC" || name == "GMT" || name == "Etc/GMT") return utc();
    form.tzid = name;
    return form;
}

EventTime ItemTime::eventTime() const {
    if (!form.zone) return {local, true};
    return {form.zone->momentOf(local), false};
}

int64_t ItemTime::moment() const {
    return eventTime().date().secondsSince1970;
}

Date EventTime::date() const {
    return Date{isFloating ? TimeZone::user()->momentOf(seconds) : seconds};
}

ItemTime ItemTime::at(int64_t moment, const TimeForm& form) {
    const auto zone = form.zone ? form.zone : TimeZone::user();
    const int64_t local = zone->localAt(moment);
    if (form.isDate) return {local - (local % secondsOfDay + secondsOfDay) % secondsOfDay, form};
    if (zone->momentOf(local) != moment) return {moment, TimeForm::utc()};
    return {local, form};
}

std::optional<int64_t> localSeconds(const icaltimetype& time) {
    if (time.year < 1 || time.year > 9999 || time.month < 1 || time.month > 12 || time.day < 1) return std::nullopt;
    const year_month_day day{year(time.year), month(static_cast<unsigned>(time.month)),
                             std::chrono::day(static_cast<unsigned>(time.day))};
    if (!day.ok()) return std::nullopt;
    const int64_t midnight = int64_t{sys_days(day).time_since_epoch().count()} * secondsOfDay;
    if (time.is_date) return midnight;
    // A leap second counts as the one after it.
    if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59 || time.second < 0 || time.second > 60)
        return std::nullopt;
    return midnight + time.hour * 3600 + time.minute * 60 + time.second;
}

icaltimetype icalTime(int64_t local, bool isDate) {
    if (local < earliestDate.secondsSince1970 || local > latestDate.secondsSince1970)
        throw PlatformError("A calendar item can only have times of the years 1 to 9999.");
    const sys_seconds moment{seconds(local)};
    const auto midnight = floor<days>(moment);
    const year_month_day day(midnight);
    icaltimetype time = icaltime_null_time();
    time.year = int(day.year());
    time.month = static_cast<int>(unsigned(day.month()));
    time.day = static_cast<int>(unsigned(day.day()));
    time.is_date = isDate;
    if (isDate) return time;
    const hh_mm_ss clock(moment - midnight);
    time.hour = static_cast<int>(clock.hours().count());
    time.minute = static_cast<int>(clock.minutes().count());
    time.second = static_cast<int>(clock.seconds().count());
    return time;
}

std::string timeText(int64_t local, const TimeForm& form) {
    const auto time = icalTime(local, form.isDate);
    if (form.isDate) return fmt::format("{:04}{:02}{:02}", time.year, time.month, time.day);
    return fmt::format("{:04}{:02}{:02}T{:02}{:02}{:02}{}", time.year, time.month, time.day, time.hour, time.minute,
                       time.second, form.isUTC() ? "Z" : "");
}

std::optional<ItemTime> readTime(icalproperty* property, const Zones& zones) {
    const auto* value = icalproperty_get_value(property);
    if (!value) return std::nullopt;
    icaltimetype time{};
    switch (icalvalue_isa(value)) {
    case ICAL_DATE_VALUE:
        time = icalvalue_get_date(value);
        break;
    case ICAL_DATETIME_VALUE:
        time = icalvalue_get_datetime(value);
        break;
    case ICAL_DATETIMEPERIOD_VALUE:
    case ICAL_PERIOD_VALUE: {
        const auto either = icalvalue_get_datetimeperiod(value);
        time = icaltime_is_null_time(either.time) ? either.period.start : either.time;
        break;
    }
    default:
        return std::nullopt;
    }
    const auto local = localSeconds(time);
    if (!local) return std::nullopt;
    if (time.is_date) return ItemTime{*local, TimeForm::date()};
    if (icaltime_is_utc(time)) return ItemTime{*local, TimeForm::utc()};
    auto* parameter = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    const char* tzid = parameter ? icalparameter_get_tzid(parameter) : nullptr;
    if (!tzid || !*tzid) return ItemTime{*local, TimeForm::floating()};
    return ItemTime{*local, TimeForm{.zone = zones.find(tzid), .tzid = tzid}};
}

std::optional<ItemTime> readTime(icalcomponent* component, icalproperty_kind kind, const Zones& zones) {
    auto* property = firstProperty(component, kind);
    return property ? readTime(property, zones) : std::nullopt;
}

ICalPointer<icalproperty> makeTimeProperty(icalproperty_kind kind, const ItemTime& time) {
    // By its text: libical writes the numbers of a year beyond 3000 as zeros.
    const auto text = timeText(time.local, time.form);
    ICalPointer<icalproperty> property(icalproperty_new(kind));
    const auto valueKind = time.form.isDate ? ICAL_DATE_VALUE : ICAL_DATETIME_VALUE;
    icalproperty_set_value(property.get(), icalvalue_new_from_string(valueKind, text.c_str()));
    if (time.form.isDate) icalproperty_set_parameter(property.get(), icalparameter_new_value(ICAL_VALUE_DATE));
    if (!time.form.tzid.empty())
        icalproperty_set_parameter(property.get(), icalparameter_new_tzid(time.form.tzid.c_str()));
    return property;
}

void setTime(icalcomponent* component, icalproperty_kind kind, const ItemTime& time) {
    auto property = makeTimeProperty(kind, time);
    removeProperties(component, kind);
    addProperty(component, std::move(property));
}

Duration readDuration(const icaldurationtype& duration) {
    const int64_t sign = duration.is_neg ? -1 : 1;
    Duration read;
    read.days = sign * clampTime(int64_t{duration.weeks} * 7 + duration.days);
    read.seconds = sign * clampTime(int64_t{duration.hours} * 3600 + int64_t{duration.minutes} * 60 + duration.seconds);
    return read;
}

ItemTime Duration::after(const ItemTime& start) const {
    const int64_t day = clampTime(start.local + clampTime(days * secondsOfDay));
    if (seconds == 0) return {day, start.form};
    if (!start.form.zone) return {clampTime(day + seconds), start.form};
    const int64_t moment = clampTime(start.form.zone->momentOf(day) + seconds);
    return ItemTime::at(moment, start.form);
}

} // namespace bridge
