#include "base/platform_error.h"
#include "tests/fuzz/calendar_exercise.h"

#include <optional>

namespace bridge {

namespace {

const Date now{1'786'706'921};

std::optional<CalendarObject> parsed(std::string_view text) {
    try {
        return CalendarObject::parse(text);
    } catch (const PlatformError&) {
        return std::nullopt;
    }
}

void changeEvent(CalendarObject& object, std::string_view input) {
    const auto occurrence = object.occurrence("");
    if (!occurrence) return;
    auto event = object.describe(*occurrence);
    must(object.change(*occurrence, event, now) == occurrence->component);
    event.title = input;
    event.notes = std::nullopt;
    event.startDate.secondsSince1970 += static_cast<int64_t>(input.size()) - 500;
    event.endDate.secondsSince1970 += 500;
    event.alarms.push_back({-60.0});
    try {
        object.change(*occurrence, event, now);
        const auto changed = object.occurrence(occurrence->recurrenceID);
        must(changed.has_value());
        if (!event.isAllDay) must(object.describe(*changed).startDate == event.startDate);
        exercise(object.detached(*changed));
        object.remove(*changed, now);
    } catch (const PlatformError&) {
        // Beyond the years that iCalendar has.
    }
    exercise(object);
}

void changeReminder(CalendarObject& object, std::string_view input) {
    auto reminder = object.describeReminder();
    reminder.title = input;
    reminder.isCompleted = !reminder.isCompleted;
    try {
        object.change(reminder, now);
    } catch (const PlatformError&) {
        // The next due date is beyond the years that iCalendar has.
    }
    exercise(object);
}

} // namespace

void fuzz(std::string_view input) {
    auto object = parsed(input);
    if (!object) return;
    exercise(*object);
    if (object->entityType() == EntityType::event)
        changeEvent(*object, input);
    else
        changeReminder(*object, input);
}

} // namespace bridge
