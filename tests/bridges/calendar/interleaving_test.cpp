#include "calendar_bridge_test.h"
#include "tests/fakes/gated_event_store.h"

namespace bridge {
namespace {

using When = GatedEventStore::When;

// Requests that wait in the store, each as far as it comes.
class Interleaving : public CalendarBridgeTest {
protected:
    Interleaving() {
        addEvent("event", "personal", 100, 200);
        addEvent("other", "personal", 100, 200);
        addEvent("elsewhere", "team", 100, 200);
        addReminder("reminder", "errands", "Reminder");
        allowAll();
        slow.emplace(gated, authorization, defaults);
    }

    using Text = std::optional<std::string>;

    Task<CalendarEventDescriptor> update(const std::string& id, Text UpdateCalendarEventRequest::*field,
                                         const std::string& text) {
        UpdateCalendarEventRequest request;
        request.identifier = id;
        request.*field = text;
        return started(slow->updateEvent(std::move(request)));
    }
    Task<ReminderDescriptor> setReminderTitle(const std::string& title) {
        UpdateReminderRequest request;
        request.identifier = "reminder";
        request.title = title;
        return started(slow->updateReminder(std::move(request)));
    }
    Task<ReminderDescriptor> complete() {
        UpdateReminderRequest request;
        request.identifier = "reminder";
        request.isCompleted = true;
        return started(slow->updateReminder(std::move(request)));
    }
    Task<CalendarEventDescriptor> setTitle(const std::string& id, const std::string& title) {
        return update(id, &UpdateCalendarEventRequest::title, title);
    }
    Task<CalendarEventDescriptor> setNotes(const std::string& id, const std::string& notes) {
        return update(id, &UpdateCalendarEventRequest::notes, notes);
    }
    Task<CalendarEventDescriptor> move(const std::string& id, const std::string& calendarID) {
        return update(id, &UpdateCalendarEventRequest::calendarID, calendarID);
    }
    template <typename T> static Task<T> started(Task<T> task) {
        task.start();
        return task;
    }
    const CalendarEvent& event(size_t index = 0) const { return store.allEvents[index]; }

    GatedEventStore gated{store};
    std::optional<AppleDataBridge> slow;
};

TEST_F(Interleaving, TwoUpdatesOfOneEventNeverMix) {
    gated.hold("saveEvent", "personal", When::beforeEffect);
    auto first = setTitle("event", "New title");
    auto second = setNotes("event", "New notes");
    EXPECT_EQ(gated.waiting(), 1u);
    gated.release();
    EXPECT_EQ(gated.waiting(), 1u);
    gated.release();
    EXPECT_EQ(first.take().title, "New title");
    const auto described = second.take();
    EXPECT_EQ(described.title, "New title");
    EXPECT_EQ(described.notes, "New notes");
    EXPECT_EQ(event().title, "New title");
    EXPECT_EQ(event().notes, "New notes");
}

TEST_F(Interleaving, WhatWasReadBeforeTheOtherWroteIsReadAgain) {
    gated.hold("item", "event", When::afterEffect);
    auto late = setNotes("event", "New notes"); // has read, its answer is on the way
    gated.holdNoMore();
    auto quick = setTitle("event", "New title");
    ASSERT_TRUE(quick.done());
    gated.release();
    ASSERT_TRUE(late.done());
    EXPECT_EQ(late.take().title, "New title");
    EXPECT_EQ(event().title, "New title");
    EXPECT_EQ(event().notes, "New notes");
}

TEST_F(Interleaving, TwoUpdatesOfOneReminderNeverMix) {
    gated.hold("saveReminder", "errands", When::beforeEffect);
    auto first = setReminderTitle("New title");
    auto second = complete();
    gated.release();
    gated.release();
    EXPECT_EQ(first.take().title, "New title");
    EXPECT_EQ(second.take().title, "New title");
    EXPECT_EQ(store.allReminders[0].title, "New title");
    EXPECT_TRUE(store.allReminders[0].isCompleted);
}

TEST_F(Interleaving, OccurrencesOfOneSeriesAreChangedOneAfterTheOther) {
    store.allEvents[0].externalIdentifier = "series";
    store.allEvents[1].externalIdentifier = "series";
    gated.hold("saveEvent", "personal", When::beforeEffect);
    auto first = setTitle("event", "First");
    auto second = setTitle("other", "Second");
    EXPECT_EQ(gated.waiting(), 1u);
    gated.release();
    gated.release();
    EXPECT_TRUE(first.done());
    EXPECT_TRUE(second.done());
    EXPECT_EQ(event(1).title, "Second");
}

TEST_F(Interleaving, AnUpdateGoesOnWhereTheEventWasMovedMeanwhile) {
    gated.hold("saveEvent", "team", When::beforeEffect);
    auto moving = move("event", "team");
    auto update = setTitle("event", "New title");
    EXPECT_EQ(gated.waiting(), 1u);
    gated.release();
    EXPECT_EQ(gated.waiting(), 1u);
    // Whoever comes now finds it there, and does not mix with the one that came from elsewhere.
    auto late = setNotes("event", "New notes");
    EXPECT_EQ(gated.waiting(), 1u);
    gated.release();
    gated.release();
    EXPECT_EQ(moving.take().calendarID, "team");
    const auto described = update.take();
    EXPECT_EQ(described.calendarID, "team");
    EXPECT_EQ(described.calendarTitle, "Team");
    EXPECT_EQ(late.take().title, "New title");
    EXPECT_EQ(event().title, "New title");
    EXPECT_EQ(event().notes, "New notes");
    EXPECT_EQ(event().calendarID, "team");
}

TEST_F(Interleaving, AnUpdateIsRefusedWhenTheEventWasMovedOutOfReachMeanwhile) {
    gated.hold("saveEvent", "team", When::beforeEffect);
    auto moving = move("event", "team");
    auto update = setTitle("event", "New title");
    run(slow->setCalendar("team", false));
    gated.release();
    EXPECT_TRUE(moving.done());
    EXPECT_THROW(update.take(), AppleBridgeError);
    EXPECT_EQ(event().title, "Event event");
}

TEST_F(Interleaving, AnUpdateThatWaitedForADeletionFindsNothing) {
    gated.hold("removeEvent", "event", When::beforeEffect);
    auto deletion = started(slow->deleteEvent("event"));
    auto update = setTitle("event", "New title");
    auto again = started(slow->deleteEvent("event"));
    gated.release();
    EXPECT_NO_THROW(deletion.take());
    EXPECT_THROW(update.take(), AppleBridgeError);
    EXPECT_THROW(again.take(), AppleBridgeError);
    EXPECT_EQ(store.allEvents.size(), 2u);
}

TEST_F(Interleaving, AnEventThatHangsHoldsUpNothingElse) {
    gated.hold("saveEvent", "personal", When::beforeEffect);
    const auto hanging = setTitle("event", "Never");
    gated.holdNoMore();
    EXPECT_TRUE(setTitle("other", "Other").done());
    EXPECT_TRUE(setTitle("elsewhere", "Elsewhere").done());
    EXPECT_TRUE(started(slow->deleteEvent("elsewhere")).done());
    EXPECT_TRUE(started(slow->searchEvents({{0}, {1000}, {}, {}})).done());
    EXPECT_TRUE(started(slow->updateCalendar({"personal", "Renamed"})).done());
    EXPECT_TRUE(started(slow->createCalendar({"New", std::nullopt})).done());
    EXPECT_TRUE(complete().done());
    EXPECT_FALSE(hanging.done());
}

TEST_F(Interleaving, ACalendarThatHangsHoldsUpNoOther) {
    for (const auto* call : {"saveEvent", "removeCalendar", "renameCalendar", "calendar"}) {
        gated.hold(call, "team", When::beforeEffect);
        gated.hold(call, "team", When::afterEffect);
    }
    const auto update = setTitle("elsewhere", "Never");
    const auto into = move("event", "team");
    const auto renaming = started(slow->updateCalendar({"team", "Never"}));
    const auto deletion = started(slow->deleteCalendar("team"));
    EXPECT_TRUE(setTitle("other", "Other").done());
    EXPECT_TRUE(started(slow->updateCalendar({"personal", "Renamed"})).done());
    EXPECT_TRUE(started(slow->deleteReminderList("errands")).done());
    EXPECT_TRUE(started(slow->calendarResources()).done());
    EXPECT_FALSE(update.done());
    EXPECT_FALSE(into.done());
    EXPECT_FALSE(renaming.done());
    EXPECT_FALSE(deletion.done());
}

TEST_F(Interleaving, TheSameEventInTwoCalendarsIsTwoEvents) {
    store.allEvents[0].externalIdentifier = "invitation";
    store.allEvents[2].externalIdentifier = "invitation";
    gated.hold("saveEvent", "team", When::beforeEffect);
    const auto hanging = setTitle("elsewhere", "Never");
    EXPECT_TRUE(setTitle("event", "Title").done());
    EXPECT_FALSE(hanging.done());
}

TEST_F(Interleaving, ADroppedUpdateLetsTheNextOneIn) {
    gated.hold("saveEvent", "personal", When::beforeEffect);
    std::optional holder = setTitle("event", "Dropped");
    std::optional queued = setTitle("event", "Dropped too");
    auto last = setNotes("event", "New notes");
    gated.holdNoMore();
    queued.reset();
    EXPECT_FALSE(last.done());
    holder.reset();
    ASSERT_TRUE(last.done());
    EXPECT_EQ(last.take().title, "Event event");
    EXPECT_EQ(event().notes, "New notes");
}

TEST_F(Interleaving, EveryRequestCanBeDroppedWhileItWaits) {
    for (const auto* call : {"sources", "calendars", "defaultCalendar", "events", "reminders"})
        gated.hold(call, "", When::afterEffect);
    const auto before = everything();
    {
        const auto search = started(slow->searchEvents({{0}, {1000}, {}, {}}));
        const auto reminders = started(slow->searchReminders({}));
        const auto sources = started(slow->listCalendarSources());
        const auto creation = started(slow->createCalendar({"New", std::nullopt}));
        const auto lists = started(slow->authorizedReminderLists());
        const auto switching = started(slow->setAllCalendars(false));
        EXPECT_EQ(gated.waiting(), 5u);
        EXPECT_TRUE(switching.done());
    }
    EXPECT_EQ(gated.waiting(), 0u);
    EXPECT_EQ(store.allCalendars, std::get<0>(before));
}

TEST_F(Interleaving, TwoDeletionsOfOneCalendarAreOneAndAnUnknownCalendar) {
    gated.hold("removeCalendar", "team", When::beforeEffect);
    auto first = started(slow->deleteCalendar("team"));
    auto second = started(slow->deleteCalendar("team"));
    auto renaming = started(slow->updateCalendar({"team", "New"}));
    gated.release();
    EXPECT_NO_THROW(first.take());
    EXPECT_THROW(second.take(), AppleBridgeError);
    EXPECT_THROW(renaming.take(), AppleBridgeError);
}

} // namespace
} // namespace bridge
