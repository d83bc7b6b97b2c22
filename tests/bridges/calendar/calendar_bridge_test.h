#pragma once

#include "bridges/calendar/apple_data_bridge.h"
#include "tests/fakes/memory_user_defaults.h"
#include "tests/fakes/sample_event_store.h"
#include "tests/fakes/scripted_authorization.h"

#include <gmock/gmock.h>

namespace bridge {

// Runs what needs no waiting.
template <typename T> T run(Task<T> task) {
    task.start();
    EXPECT_TRUE(task.done());
    return task.take();
}

// What the task failed with, as the user reads it; "" when it went well.
template <typename T> std::string failureOf(Task<T> task) {
    try {
        run(std::move(task));
    } catch (const AppleBridgeError& error) {
        return error.message();
    } catch (const PlatformError& error) {
        return std::string("platform: ") + error.what();
    }
    return "";
}

inline const std::string denied = "Brindlefox resource access denied: ";
inline const std::string malformed = "Malformed bridge request: ";

// A bridge over sample calendars with full access; nothing is on the allow-lists.
class CalendarBridgeTest : public testing::Test {
protected:
    void allowAll() {
        run(bridge.setAllCalendars(true));
        run(bridge.setAllReminderLists(true));
    }
    void allowOnly(std::vector<std::string> calendars) {
        run(bridge.setAllCalendars(false));
        for (auto& each : calendars)
            run(bridge.setCalendar(each, true));
    }
    void allowOnlyLists(std::vector<std::string> lists) {
        run(bridge.setAllReminderLists(false));
        for (auto& each : lists)
            run(bridge.setReminderList(each, true));
    }
    // An identifier that was allowed once and is no longer in the store.
    void allowVanished(const std::string& id) {
        const auto sources = store.allSources;
        store.add(EntityType::event, id, "Vanished", sources.front());
        run(bridge.setCalendar(id, true));
        store.allCalendars.pop_back();
        store.add(EntityType::reminder, id, "Vanished", sources.front());
        run(bridge.setReminderList(id, true));
        store.allCalendars.pop_back();
    }
    CalendarEvent& addEvent(const std::string& id, const std::string& calendarID, int64_t start, int64_t end) {
        CalendarEvent event;
        event.identifier = id;
        event.calendarID = calendarID;
        event.title = "Event " + id;
        event.startDate = {start};
        event.endDate = {end};
        return store.allEvents.emplace_back(std::move(event));
    }
    Reminder& addReminder(const std::string& id, const std::string& listID, const std::string& title) {
        Reminder reminder;
        reminder.identifier = id;
        reminder.listID = listID;
        reminder.title = title;
        return store.allReminders.emplace_back(std::move(reminder));
    }
    // Everything that an operation could have changed.
    auto everything(const AppleDataBridge& over) const {
        return std::tuple(store.allCalendars, store.allEvents, store.allReminders, over.accessPolicy().calendarIDs(),
                          over.accessPolicy().reminderListIDs(),
                          defaults.strings(AppleResourceAccessPolicy::calendarsKey),
                          defaults.strings(AppleResourceAccessPolicy::reminderListsKey));
    }
    auto everything() const { return everything(bridge); }

    SampleEventStore store;
    ScriptedAuthorization authorization;
    MemoryUserDefaults defaults;
    AppleDataBridge bridge{store, authorization, defaults};
};

template <typename Descriptor> std::vector<std::string> idsOf(const std::vector<Descriptor>& described) {
    std::vector<std::string> ids;
    for (const auto& each : described)
        ids.push_back(each.id);
    return ids;
}

using Strings = std::vector<std::string>;

} // namespace bridge
