#include "adapters/ical/reminder_fields.h"

#include "adapters/ical/library.h"
#include "adapters/ical/series.h"
#include "base/platform_error.h"

#include <algorithm>

namespace bridge {

namespace {

std::optional<ItemTime> dueTime(icalcomponent* task, const Zones& zones) {
    if (auto* due = firstProperty(task, ICAL_DUE_PROPERTY)) return readTime(due, zones);
    const auto start = readTime(task, ICAL_DTSTART_PROPERTY, zones);
    auto* property = firstProperty(task, ICAL_DURATION_PROPERTY);
    const auto* value = property ? icalproperty_get_value(property) : nullptr;
    if (!start || !value || icalvalue_isa(value) != ICAL_DURATION_VALUE) return std::nullopt;
    return readDuration(icalvalue_get_duration(value)).after(*start);
}

DateComponents componentsOf(ItemTime time) {
    // The zone of a TZID that is not the database's has no name that others know: there it is told in UTC.
    if (time.form.zone && !time.form.isUTC() && TimeZone::named(time.form.tzid) != time.form.zone)
        time = {time.moment(), TimeForm::utc()};
    const auto fields = icalTime(time.local, time.form.isDate);
    DateComponents components{.year = fields.year, .month = fields.month, .day = fields.day};
    if (time.form.isDate) return components;
    components.hour = fields.hour;
    components.minute = fields.minute;
    if (fields.second != 0) components.second = fields.second;
    if (time.form.zone) components.timeZone = time.form.isUTC() ? "UTC" : time.form.tzid;
    return components;
}

ItemTime timeOf(const DateComponents& components) {
    if (!dateFrom(components)) throw PlatformError("The due date of the reminder is no date.");
    icaltimetype fields = icaltime_null_time();
    fields.year = components.year;
    fields.month = components.month;
    fields.day = components.day;
    fields.is_date = !components.hour && !components.minute && !components.second;
    fields.hour = components.hour.value_or(0);
    fields.minute = components.minute.value_or(0);
    fields.second = components.second.value_or(0);
    const auto local = localSeconds(fields);
    if (!local) throw PlatformError("The due date of the reminder is no date.");
    if (fields.is_date) return {*local, TimeForm::date()};
    if (!components.timeZone) return {*local, TimeForm::floating()};
    if (*components.timeZone == "UTC") return {*local, TimeForm::utc()};
    const auto zone = TimeZone::named(*components.timeZone);
    if (!zone) throw PlatformError("The system does not know the time zone " + *components.timeZone + ".");
    return {*local, TimeForm{.zone = zone, .tzid = *components.timeZone}};
}

void writeDue(icalcomponent* task, const std::optional<DateComponents>& dueDate, const Zones& zones) {
    const auto due = dueDate ? std::optional(timeOf(*dueDate)) : std::nullopt;
    const auto start = readTime(task, ICAL_DTSTART_PROPERTY, zones);
    const auto former = readTime(task, ICAL_DUE_PROPERTY, zones);
    const bool isRecurring = firstProperty(task, ICAL_RRULE_PROPERTY) || firstProperty(task, ICAL_RDATE_PROPERTY);
    removeProperties(task, ICAL_DUE_PROPERTY);
    removeProperties(task, ICAL_DURATION_PROPERTY);
    if (due) setTime(task, ICAL_DUE_PROPERTY, *due);
    if (!start) return;

    // Where the task starts when it is due, it goes on doing so; and it can't start after that, or by another kind of
    // time (RFC 5545, 3.8.2.3).
    const bool isSame = former && former->local == start->local && former->form == start->form;
    const bool fits = due && due->form.isDate == start->form.isDate && start->moment() <= due->moment();
    if (due ? fits && !isSame : !isSame) return;
    if (due && (isSame || isRecurring))
        setTime(task, ICAL_DTSTART_PROPERTY, *due);
    else if (!isRecurring)
        removeProperties(task, ICAL_DTSTART_PROPERTY);
}

int64_t priorityOf(icalcomponent* task) {
    auto* property = firstProperty(task, ICAL_PRIORITY_PROPERTY);
    const auto* value = property ? icalproperty_get_value(property) : nullptr;
    if (!value || icalvalue_isa(value) != ICAL_INTEGER_VALUE) return 0;
    return std::clamp(icalvalue_get_integer(value), 0, 9);
}

bool isCompleted(icalcomponent* task) {
    if (auto* status = firstProperty(task, ICAL_STATUS_PROPERTY))
        return icalproperty_get_status(status) == ICAL_STATUS_COMPLETED;
    if (firstProperty(task, ICAL_COMPLETED_PROPERTY)) return true;
    auto* percent = firstProperty(task, ICAL_PERCENTCOMPLETE_PROPERTY);
    return percent && icalproperty_get_percentcomplete(percent) == 100;
}

void setStatus(icalcomponent* task, icalproperty_status status) {
    removeProperties(task, ICAL_STATUS_PROPERTY);
    removeProperties(task, ICAL_COMPLETED_PROPERTY);
    removeProperties(task, ICAL_PERCENTCOMPLETE_PROPERTY);
    icalcomponent_add_property(task, icalproperty_new_status(status));
}

// Counts what of the rule lies before the key, and takes it from COUNT.
void takeFromCount(icalcomponent* task, icalproperty* property, const ItemTime& start, int64_t key) {
    const auto rule = RecurrenceRule::read(property, start);
    if (!rule || !rule->hasCount()) return;
    WorkLimit work;
    RecurrenceRule::Instances instances(*rule, start.local, key - 1, work);
    int past = 0;
    while (instances.next())
        ++past;
    auto counted = icalproperty_get_rrule(property);
    counted.count -= past;
    if (counted.count > 0) {
        icalproperty_set_rrule(property, counted);
    } else {
        icalcomponent_remove_property(task, property);
        icalproperty_free(property);
    }
}

} // namespace

Reminder readReminder(icalcomponent* task, const Zones& zones) {
    Reminder reminder;
    reminder.title = textOf(task, ICAL_SUMMARY_PROPERTY);
    reminder.notes = textOf(task, ICAL_DESCRIPTION_PROPERTY);
    if (const auto due = dueTime(task, zones)) {
        const auto components = componentsOf(*due);
        if (dateFrom(components)) reminder.dueDate = components;
    }
    reminder.isCompleted = isCompleted(task);
    const auto completed = readTime(task, ICAL_COMPLETED_PROPERTY, zones);
    if (reminder.isCompleted && completed) reminder.completionDate = Date{completed->moment()};
    reminder.priority = priorityOf(task);
    return reminder;
}

Changed writeReminder(icalcomponent* task, const Reminder& before, const Reminder& after, const Zones& zones) {
    auto changed = Changed::nothing;
    if (before.dueDate != after.dueDate) {
        writeDue(task, after.dueDate, zones);
        changed = Changed::times;
    }
    const auto note = [&] { changed = std::max(changed, Changed::text); };
    if (before.title != after.title) {
        setText(task, ICAL_SUMMARY_PROPERTY, after.title);
        note();
    }
    if (before.notes != after.notes) {
        setText(task, ICAL_DESCRIPTION_PROPERTY, after.notes);
        note();
    }
    const int priority = static_cast<int>(std::clamp<int64_t>(after.priority, 0, 9));
    if (before.priority != priority) {
        removeProperties(task, ICAL_PRIORITY_PROPERTY);
        if (priority != 0) icalcomponent_add_property(task, icalproperty_new_priority(priority));
        note();
    }
    return changed;
}

void complete(icalcomponent* task, Date now) {
    setStatus(task, ICAL_STATUS_COMPLETED);
    setTime(task, ICAL_COMPLETED_PROPERTY, {now.secondsSince1970, TimeForm::utc()});
    icalcomponent_add_property(task, icalproperty_new_percentcomplete(100));
}

void reopen(icalcomponent* task) {
    setStatus(task, ICAL_STATUS_NEEDSACTION);
}

bool moveOn(const std::vector<icalcomponent*>& tasks, const Zones& zones) {
    auto* task = tasks.front();
    const auto times = ComponentTimes::read(task, zones);
    if (!times) return false;
    const ItemTime start = times->start();
    const auto next = Series(tasks, zones).after(start.local);
    if (!next) return false;
    for (auto* rule : properties(task, ICAL_RRULE_PROPERTY))
        takeFromCount(task, rule, start, *next);
    const auto due = readTime(task, ICAL_DUE_PROPERTY, zones);
    if (firstProperty(task, ICAL_DTSTART_PROPERTY)) setTime(task, ICAL_DTSTART_PROPERTY, {*next, start.form});
    if (due) setTime(task, ICAL_DUE_PROPERTY, {due->local + *next - start.local, due->form});
    reopen(task);
    return true;
}

} // namespace bridge
