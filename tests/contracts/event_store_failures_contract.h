#pragma once

#include "tests/contracts/event_store_fixture.h"

// Calendars that take no changes, a store that is gone, calls that are dropped.

namespace bridge {

TEST_P(EventStoreContract, ReadsACalendarThatTakesNoChanges) {
    const auto calendar = setting->addReadOnlyCalendar(EntityType::event, "Holidays");
    putEvent(calendar, "holiday", "DTSTART;VALUE=DATE:20260815\nSUMMARY:Assumption");
    const auto found = onlyEvent(calendar);
    EXPECT_EQ(found.title, "Assumption");
    EXPECT_EQ(event(found.identifier), found);
}

TEST_P(EventStoreContract, ChangesNothingInACalendarThatTakesNoChanges) {
    const auto calendar = setting->addReadOnlyCalendar(EntityType::event, "Holidays");
    const auto own = addCalendar();
    putEvent(calendar, "holiday", "DTSTART:20260815T090000Z\nDURATION:PT1H\nRRULE:FREQ=DAILY;COUNT=2\nSUMMARY:Holiday");
    const auto before = eventsOf(calendar);
    ASSERT_EQ(before.size(), 2u);
    const auto mine = save(sowing(own));

    EXPECT_NE(failure([&] { save(sowing(calendar)); }), "");
    auto changed = before[0];
    changed.title = "Changed";
    EXPECT_NE(failure([&] { save(changed); }), "");
    EXPECT_NE(failure([&] { wait(store().removeEvent(before[0].identifier)); }), "");
    auto out = before[0];
    out.calendarID = own;
    EXPECT_NE(failure([&] { save(out); }), "");
    auto in = mine;
    in.calendarID = calendar;
    EXPECT_NE(failure([&] { save(in); }), "");

    for (const bool restarted : {false, true}) {
        if (restarted) setting->reopen();
        EXPECT_EQ(eventsOf(calendar), before);
        EXPECT_EQ(onlyEvent(own), mine);
    }
}

TEST_P(EventStoreContract, ChangesNothingInAListThatTakesNoChanges) {
    const auto list = setting->addReadOnlyCalendar(EntityType::reminder, "Chores");
    const auto own = addList();
    putTask(list, "chore", "SUMMARY:Sweep\nDUE:20260815T090000Z");
    const auto before = onlyReminder(list);
    const auto mine = save(seeds(own));

    EXPECT_NE(failure([&] { save(seeds(list)); }), "");
    auto changed = before;
    changed.isCompleted = true;
    EXPECT_NE(failure([&] { save(changed); }), "");
    EXPECT_NE(failure([&] { wait(store().removeReminder(before.identifier)); }), "");
    auto out = before;
    out.listID = own;
    EXPECT_NE(failure([&] { save(out); }), "");
    auto in = mine;
    in.listID = list;
    EXPECT_NE(failure([&] { save(in); }), "");
    EXPECT_EQ(onlyReminder(list), before);
    EXPECT_EQ(onlyReminder(own), mine);
}

TEST_P(EventStoreContract, RenamesOrRefusesACalendarThatTakesNoChanges) {
    const auto identifier = setting->addReadOnlyCalendar(EntityType::event, "Holidays");
    const bool isRefused = !failure([&] { wait(store().renameCalendar(identifier, "Days off")); }).empty();
    EXPECT_EQ(wait(store().calendar(identifier)).value().title, isRefused ? "Holidays" : "Days off");
}

TEST_P(EventStoreContract, FailsWhileItIsGoneAndWorksAgainAfterwards) {
    const auto calendar = addCalendar();
    const auto list = addList();
    const auto event = save(sowing(calendar));
    const auto reminder = save(seeds(list));
    const auto source = account().id;
    const auto calendars = wait(store().calendars(EntityType::event));

    setting->lose();
    EXPECT_NE(failure([&] { wait(store().sources()); }), "");
    for (const auto type : {EntityType::event, EntityType::reminder}) {
        EXPECT_NE(failure([&] { wait(store().calendars(type)); }), "");
        EXPECT_NE(failure([&] { wait(store().defaultCalendar(type)); }), "");
        EXPECT_NE(failure([&] { wait(store().addCalendar(type, source, "Lost")); }), "");
    }
    EXPECT_NE(failure([&] { wait(store().calendar(calendar)); }), "");
    EXPECT_NE(failure([&] { wait(store().renameCalendar(calendar, "Lost")); }), "");
    EXPECT_NE(failure([&] { wait(store().removeCalendar(list)); }), "");
    EXPECT_NE(failure([&] { eventsOf(calendar); }), "");
    EXPECT_NE(failure([&] { remindersOf(list); }), "");
    EXPECT_NE(failure([&] { wait(store().item(event.identifier)); }), "");
    EXPECT_NE(failure([&] { save(sowing(calendar)); }), "");
    auto changed = event;
    changed.title = "Lost";
    EXPECT_NE(failure([&] { save(changed); }), "");
    EXPECT_NE(failure([&] { wait(store().removeEvent(event.identifier)); }), "");
    EXPECT_NE(failure([&] { save(seeds(list)); }), "");
    EXPECT_NE(failure([&] { wait(store().removeReminder(reminder.identifier)); }), "");
    EXPECT_FALSE(store().description().empty());

    setting->restore();
    EXPECT_EQ(wait(store().calendars(EntityType::event)), calendars);
    EXPECT_EQ(onlyEvent(calendar), event);
    EXPECT_EQ(onlyReminder(list), reminder);
    EXPECT_EQ(save(changed), changed);
    EXPECT_EQ(onlyEvent(calendar), changed);
}

TEST_P(EventStoreContract, KeepsAllOrNothingOfADroppedEvent) {
    const auto calendar = addCalendar();
    const auto given = fullSowing(calendar);
    {
        auto dropped = store().saveEvent(given);
        dropped.start();
    }
    for (auto saved : eventsOf(calendar)) {
        saved.identifier.clear();
        saved.externalIdentifier.reset();
        EXPECT_EQ(saved, given);
    }
    EXPECT_LE(eventsOf(calendar).size(), 1u);
    const auto next = save(given);
    EXPECT_EQ(event(next.identifier), next);
}

TEST_P(EventStoreContract, KeepsAllOrNothingOfADroppedChange) {
    const auto calendar = addCalendar();
    const auto other = addCalendar("Other");
    const auto before = save(fullSowing(calendar));
    auto changed = before;
    changed.title = "Changed";
    changed.notes = "Changed";
    {
        auto dropped = store().saveEvent(changed);
        dropped.start();
    }
    const auto found = onlyEvent(calendar);
    EXPECT_TRUE(found == before || found == changed);
    auto moving = found;
    moving.calendarID = other;
    {
        auto dropped = store().saveEvent(moving);
        dropped.start();
    }
    EXPECT_EQ(eventsOf(calendar).size() + eventsOf(other).size(), 1u);
}

TEST_P(EventStoreContract, KeepsAllOrNothingOfADroppedRemoval) {
    const auto calendar = addCalendar();
    const auto event = save(sowing(calendar));
    {
        auto dropped = store().removeEvent(event.identifier);
        dropped.start();
    }
    const auto left = eventsOf(calendar);
    EXPECT_TRUE(left.empty() || left == std::vector{event});
    {
        auto dropped = store().removeCalendar(calendar);
        dropped.start();
    }
    if (isListed(calendar, EntityType::event))
        EXPECT_EQ(eventsOf(calendar), left);
    else
        EXPECT_EQ(wait(store().calendar(calendar)), std::nullopt);
}

TEST_P(EventStoreContract, DoesNothingForATaskThatNeverStarted) {
    const auto calendar = addCalendar();
    { const auto never = store().saveEvent(sowing(calendar)); }
    EXPECT_TRUE(eventsOf(calendar).empty());
}

TEST_P(EventStoreContract, AnswersSeveralCallsAtOnce) {
    const auto calendar = addCalendar();
    std::vector<Task<CalendarEvent>> running;
    for (int number = 0; number < 20; ++number) {
        running.push_back(store().saveEvent(sowing(calendar)));
        running.back().start();
    }
    for (auto& each : running) {
        while (!each.done())
            setting->loop().waitOnce();
        EXPECT_FALSE(each.take().identifier.empty());
    }
    EXPECT_EQ(eventsOf(calendar).size(), 20u);
}

} // namespace bridge
