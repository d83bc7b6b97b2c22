#include "bridges/calendar/descriptions.h"

namespace bridge {

std::string_view nameOf(SourceType type) {
    switch (type) {
    case SourceType::local:
        return "local";
    case SourceType::exchange:
        return "exchange";
    case SourceType::calDAV:
        return "calDAV";
    case SourceType::cloud:
        return "cloud";
    case SourceType::subscribed:
        return "subscribed";
    case SourceType::birthdays:
        return "birthdays";
    }
    return "unknown";
}

AppleSourceDescriptor describe(const CalendarSource& source) {
    return {source.id, source.title, std::string(nameOf(source.type))};
}

AppleListDescriptor describe(const Calendar& calendar) {
    return {calendar.id, calendar.title, calendar.source.title, std::string(nameOf(calendar.source.type)),
            calendar.allowsContentModifications};
}

CalendarEventDescriptor describe(CalendarEvent event, std::string calendarTitle) {
    CalendarEventDescriptor described{.id = std::move(event.identifier),
                                      .externalIdentifier = std::move(event.externalIdentifier),
                                      .calendarID = std::move(event.calendarID),
                                      .calendarTitle = std::move(calendarTitle),
                                      .title = std::move(event.title).value_or(""),
                                      .startDate = event.startDate,
                                      .endDate = event.endDate,
                                      .isAllDay = event.isAllDay,
                                      .location = std::move(event.location),
                                      .notes = std::move(event.notes),
                                      .url = std::nullopt,
                                      .hasRecurrenceRules = event.hasRecurrenceRules};
    if (event.url && canBeURL(*event.url)) described.url = URL{std::move(*event.url)};
    return described;
}

ReminderDescriptor describe(Reminder reminder, std::string listTitle) {
    return {.id = std::move(reminder.identifier),
            .externalIdentifier = std::move(reminder.externalIdentifier),
            .listID = std::move(reminder.listID),
            .listTitle = std::move(listTitle),
            .title = std::move(reminder.title).value_or(""),
            .notes = std::move(reminder.notes),
            .dueDate = reminder.dueDate ? dateFrom(*reminder.dueDate) : std::nullopt,
            .isCompleted = reminder.isCompleted,
            .completionDate = reminder.completionDate,
            .priority = reminder.priority};
}

} // namespace bridge
