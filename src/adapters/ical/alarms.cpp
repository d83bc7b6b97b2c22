#include "adapters/ical/alarms.h"

#include "adapters/ical/library.h"
#include "base/platform_error.h"

#include <cmath>
#include <limits>

namespace bridge {

namespace {

std::optional<Alarm> readAlarm(icalcomponent* alarm, const EventTime& start, const EventTime& end, const Zones& zones) {
    auto* action = firstProperty(alarm, ICAL_ACTION_PROPERTY);
    // How some programs say that an event shall have no alarm although their user has a default one.
    if (action && valueText(action) == "NONE") return std::nullopt;
    auto* property = firstProperty(alarm, ICAL_TRIGGER_PROPERTY);
    const auto* value = property ? icalproperty_get_value(property) : nullptr;
    if (!value) return std::nullopt;
    if (icalvalue_isa(value) == ICAL_DATETIME_VALUE || icalvalue_isa(value) == ICAL_DATE_VALUE) {
        const auto time = readTime(property, zones);
        return time ? std::optional(Alarm{Date{time->moment()}}) : std::nullopt;
    }

    icaltriggertype trigger{};
    if (icalvalue_isa(value) == ICAL_DURATION_VALUE)
        trigger.duration = icalvalue_get_duration(value);
    else if (icalvalue_isa(value) == ICAL_TRIGGER_VALUE)
        trigger = icalvalue_get_trigger(value);
    else
        return std::nullopt;
    if (!icaltime_is_null_time(trigger.time)) {
        const auto local = localSeconds(trigger.time);
        if (!local) return std::nullopt;
        const bool isUTC = icaltime_is_utc(trigger.time);
        return Alarm{Date{isUTC ? *local : ItemTime{*local, TimeForm::floating()}.moment()}};
    }
    if (icaldurationtype_is_bad_duration(trigger.duration)) return std::nullopt;
    const auto duration = readDuration(trigger.duration);
    int64_t seconds = duration.days * secondsOfDay + duration.seconds;
    auto* related = icalproperty_get_first_parameter(property, ICAL_RELATED_PARAMETER);
    if (related && icalparameter_get_related(related) == ICAL_RELATED_END) seconds += end.seconds - start.seconds;
    return Alarm{static_cast<double>(seconds)};
}

ICalPointer<icalproperty> triggerOf(const Alarm& alarm) {
    if (const auto* date = std::get_if<Date>(&alarm.trigger)) {
        auto property = makeTimeProperty(ICAL_TRIGGER_PROPERTY, {date->secondsSince1970, TimeForm::utc()});
        icalproperty_set_parameter(property.get(), icalparameter_new_value(ICAL_VALUE_DATETIME));
        return property;
    }
    const double seconds = std::round(std::get<double>(alarm.trigger));
    if (!(std::abs(seconds) <= std::numeric_limits<int>::max()))
        throw PlatformError("An alarm can't be that far from its event.");
    icaltriggertype trigger{};
    trigger.time = icaltime_null_time();
    trigger.duration = icaldurationtype_from_int(static_cast<int>(seconds));
    return ICalPointer<icalproperty>(icalproperty_new_trigger(trigger));
}

} // namespace

std::vector<Alarm> readAlarms(icalcomponent* component, const EventTime& start, const EventTime& end,
                              const Zones& zones) {
    std::vector<Alarm> alarms;
    for (auto* alarm : components(component, ICAL_VALARM_COMPONENT))
        if (auto read = readAlarm(alarm, start, end, zones)) alarms.push_back(*read);
    return alarms;
}

void writeAlarms(icalcomponent* component, const std::vector<Alarm>& alarms) {
    std::vector<ICalPointer<icalproperty>> triggers;
    for (const auto& alarm : alarms)
        triggers.push_back(triggerOf(alarm));

    for (auto* former : components(component, ICAL_VALARM_COMPONENT)) {
        icalcomponent_remove_component(component, former);
        icalcomponent_free(former);
    }
    const std::string message = textOf(component, ICAL_SUMMARY_PROPERTY).value_or("Alarm");
    for (auto& trigger : triggers) {
        auto* alarm = icalcomponent_new_valarm();
        icalcomponent_add_component(component, alarm);
        icalcomponent_add_property(alarm, icalproperty_new_action(ICAL_ACTION_DISPLAY));
        addProperty(alarm, std::move(trigger));
        setText(alarm, ICAL_DESCRIPTION_PROPERTY, message);
    }
}

} // namespace bridge
