#pragma once

#include "bridges/calendar/apple_data_bridge.h"

#include <functional>

namespace bridge {

struct NamedOperation {
    const char* name;
    EntityType entityType;
    std::function<Task<>(AppleDataBridge&)> call;
};

template <typename T> Task<> withoutResult(Task<T> task) {
    const auto result = co_await std::move(task);
    static_cast<void>(result);
}

// The operations of the wire, each with a request that succeeds over a store with the event "event" in "personal" and
// the reminder "reminder" in "errands", everything allowed.
inline const std::vector<NamedOperation>& everyOperation() {
    using Bridge = AppleDataBridge;
    using enum EntityType;
    static const std::vector<NamedOperation> operations{
        {"calendar.list", event, [](Bridge& bridge) { return withoutResult(bridge.authorizedCalendars()); }},
        {"calendar.sources.list", event, [](Bridge& bridge) { return withoutResult(bridge.listCalendarSources()); }},
        {"calendar.create", event,
         [](Bridge& bridge) {
             return withoutResult(bridge.createCalendar({"Garden", std::nullopt}));
         }},
        {"calendar.update", event,
         [](Bridge& bridge) {
             return withoutResult(bridge.updateCalendar({"personal", "Mine"}));
         }},
        {"calendar.delete", event, [](Bridge& bridge) { return bridge.deleteCalendar("personal"); }},
        {"calendar.events.search", event,
         [](Bridge& bridge) {
             return withoutResult(bridge.searchEvents({{0}, {1000}, {}, {}}));
         }},
        {"calendar.events.create", event,
         [](Bridge& bridge) {
             CreateCalendarEventRequest request;
             request.calendarID = "personal";
             request.title = "New";
             request.endDate = {60};
             return withoutResult(bridge.createEvent(std::move(request)));
         }},
        {"calendar.events.update", event,
         [](Bridge& bridge) {
             UpdateCalendarEventRequest request;
             request.identifier = "event";
             request.notes = "changed";
             return withoutResult(bridge.updateEvent(std::move(request)));
         }},
        {"calendar.events.delete", event, [](Bridge& bridge) { return bridge.deleteEvent("event"); }},
        {"reminders.lists.list", reminder,
         [](Bridge& bridge) { return withoutResult(bridge.authorizedReminderLists()); }},
        {"reminders.sources.list", reminder,
         [](Bridge& bridge) { return withoutResult(bridge.listReminderSources()); }},
        {"reminders.lists.create", reminder,
         [](Bridge& bridge) {
             return withoutResult(bridge.createReminderList({"Garden", std::nullopt}));
         }},
        {"reminders.lists.update", reminder,
         [](Bridge& bridge) {
             return withoutResult(bridge.updateReminderList({"errands", "Mine"}));
         }},
        {"reminders.lists.delete", reminder, [](Bridge& bridge) { return bridge.deleteReminderList("errands"); }},
        {"reminders.search", reminder, [](Bridge& bridge) { return withoutResult(bridge.searchReminders({})); }},
        {"reminders.create", reminder,
         [](Bridge& bridge) {
             CreateReminderRequest request;
             request.listID = "errands";
             request.title = "New";
             return withoutResult(bridge.createReminder(std::move(request)));
         }},
        {"reminders.update", reminder,
         [](Bridge& bridge) {
             UpdateReminderRequest request;
             request.identifier = "reminder";
             request.notes = "changed";
             return withoutResult(bridge.updateReminder(std::move(request)));
         }},
        {"reminders.delete", reminder, [](Bridge& bridge) { return bridge.deleteReminder("reminder"); }},
        // Those of the user.
        {"listCalendars", event, [](Bridge& bridge) { return withoutResult(bridge.listCalendars()); }},
        {"setCalendar", event, [](Bridge& bridge) { return bridge.setCalendar("personal", false); }},
        {"setAllCalendars", event, [](Bridge& bridge) { return bridge.setAllCalendars(true); }},
        {"listReminderLists", reminder, [](Bridge& bridge) { return withoutResult(bridge.listReminderLists()); }},
        {"setReminderList", reminder, [](Bridge& bridge) { return bridge.setReminderList("errands", false); }},
        {"setAllReminderLists", reminder, [](Bridge& bridge) { return bridge.setAllReminderLists(true); }},
    };
    return operations;
}

} // namespace bridge
