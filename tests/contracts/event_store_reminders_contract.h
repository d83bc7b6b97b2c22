#pragma once

#include "tests/contracts/event_store_fixture.h"

#include <limits>

// Reminders.

namespace bridge {

TEST_P(EventStoreContract, AddsAReminderWithAllItsFields) {
    const auto list = addList();
    auto given = seeds(list);
    given.notes = "Chard, peas.\nNot the old ones.";
    given.dueDate = componentsToTheMinute(at("2026-08-14T09:30:00Z"));
    given.priority = 5;
    const auto saved = save(given);
    EXPECT_FALSE(saved.identifier.empty());
    ASSERT_TRUE(saved.externalIdentifier);
    EXPECT_FALSE(saved.externalIdentifier->empty());
    EXPECT_EQ(saved.listID, list);
    EXPECT_EQ(saved.title, given.title);
    EXPECT_EQ(saved.notes, given.notes);
    ASSERT_TRUE(saved.dueDate);
    EXPECT_EQ(dateFrom(*saved.dueDate), at("2026-08-14T09:30:00Z"));
    EXPECT_EQ(saved.dueDate->timeZone, "Europe/Lisbon");
    EXPECT_FALSE(saved.isCompleted);
    EXPECT_EQ(saved.completionDate, std::nullopt);
    EXPECT_EQ(saved.priority, 5);

    EXPECT_EQ(onlyReminder(list), saved);
    EXPECT_EQ(reminder(saved.identifier), saved);
    setting->reopen();
    EXPECT_EQ(onlyReminder(list), saved);
    EXPECT_EQ(reminder(saved.identifier), saved);
}

TEST_P(EventStoreContract, AddsABareReminder) {
    const auto list = addList();
    Reminder given;
    given.listID = list;
    const auto saved = save(given);
    EXPECT_EQ(saved.title, std::nullopt);
    EXPECT_EQ(saved.notes, std::nullopt);
    EXPECT_EQ(saved.dueDate, std::nullopt);
    EXPECT_EQ(saved.priority, 0);
    EXPECT_EQ(onlyReminder(list), saved);
}

TEST_P(EventStoreContract, ChangesAndTakesAwayFieldsOfAReminder) {
    const auto list = addList();
    auto given = seeds(list);
    given.notes = "Chard";
    given.dueDate = DateComponents{2026, 8, 14};
    given.priority = 1;
    auto expected = save(given);
    const auto check = [&] {
        EXPECT_EQ(save(expected), expected);
        EXPECT_EQ(onlyReminder(list), expected);
        EXPECT_EQ(reminder(expected.identifier), expected);
    };
    check();
    expected.title = "Plants";
    check();
    expected.notes = std::nullopt;
    check();
    expected.priority = 9;
    check();
    expected.dueDate = DateComponents{2026, 8, 15};
    check();
    expected.dueDate = std::nullopt;
    check();
    expected.notes = "Again";
    expected.title = std::nullopt;
    check();
    setting->reopen();
    EXPECT_EQ(onlyReminder(list), expected);
}

TEST_P(EventStoreContract, KeepsEveryFormOfADueDate) {
    const auto list = addList();
    const DateComponents forms[] = {
        {2026, 8, 14},                               // a day
        {2026, 8, 14, 9, 30, 0},                     // floating
        {2026, 8, 14, 9, 30, 0, "Europe/Lisbon"},    // the user's zone
        {2026, 8, 14, 9, 30, 0, "America/New_York"}, // another
        {2026, 8, 14, 9, 30, 15, "Asia/Kolkata"},    // to the second
        {2026, 8, 14, 0, 0, 0, "Europe/Lisbon"},     // midnight is a time
        {2028, 2, 29, 23, 59, 0, "Pacific/Auckland"},
        {2026, 10, 25, 1, 30, 0, "Europe/Lisbon"}, // comes twice
        {2026, 3, 29, 1, 30, 0, "Europe/Lisbon"},  // is skipped
        {1999, 12, 31, 23, 59, 0, "UTC"},
    };
    for (const auto& form : forms) {
        auto given = seeds(list);
        given.dueDate = form;
        auto saved = save(given);
        ASSERT_TRUE(saved.dueDate);
        EXPECT_EQ(saved.dueDate->hour.has_value(), form.hour.has_value());
        EXPECT_EQ(dateFrom(*saved.dueDate), dateFrom(form));
        EXPECT_EQ(reminder(saved.identifier), saved);
        saved.title = "Changed";
        EXPECT_EQ(save(saved), saved);
        {
            const UserTimeZone moved("America/New_York");
            const auto there = reminder(saved.identifier);
            ASSERT_TRUE(there && there->dueDate);
            EXPECT_EQ(dateFrom(*there->dueDate), dateFrom(form));
        }
        EXPECT_EQ(saved.dueDate->timeZone, form.timeZone);
    }
}

TEST_P(EventStoreContract, TakesAMissingPartOfADueTimeAsNought) {
    const auto list = addList();
    auto given = seeds(list);
    given.dueDate = DateComponents{2026, 8, 14, 9};
    EXPECT_EQ(dateFrom(save(given).dueDate.value()), at("2026-08-14T08:00:00Z"));
}

TEST_P(EventStoreContract, HoldsOrRefusesAnImpossibleDueDate) {
    const auto list = addList();
    const DateComponents forms[] = {{2026, 2, 30},
                                    {2026, 13, 1},
                                    {0, 0, 0},
                                    {-1, -1, -1},
                                    {2026, 8, 14, 25, 61, 99},
                                    {2026, 8, 14, 9, 0, 0, "Moon/Crater"},
                                    {2026, 8, 14, 9, 0, 0, ""},
                                    {2026, 8, 14, 9, 0, 0, "a\nb;c:d\"e"},
                                    {std::numeric_limits<int>::max(), 1, 1},
                                    {std::numeric_limits<int>::min(), 1, 1},
                                    {12345, 1, 1}};
    const auto before = save(seeds(list));
    for (const auto& form : forms) {
        auto given = before;
        given.dueDate = form;
        given.title = "Changed";
        Reminder saved;
        if (!failure([&] { saved = save(given); }).empty()) {
            EXPECT_EQ(onlyReminder(list), before);
            continue;
        }
        if (saved.dueDate) {
            EXPECT_EQ(dateFrom(*saved.dueDate), dateFrom(form));
        }
        EXPECT_EQ(onlyReminder(list), saved);
        save(before);
    }
}

TEST_P(EventStoreContract, ReadsDueDatesOfOtherPrograms) {
    const struct {
        const char* property;
        std::optional<DateComponents> expected;
    } forms[] = {{"DUE;VALUE=DATE:20260814", DateComponents{2026, 8, 14}},
                 {"DUE:20260814T093000", DateComponents{2026, 8, 14, 9, 30, 0}},
                 {"DUE:20260814T093000Z", DateComponents{2026, 8, 14, 9, 30, 0, "UTC"}},
                 {"DUE;TZID=Europe/Berlin:20260814T093000", DateComponents{2026, 8, 14, 9, 30, 0, "Europe/Berlin"}},
                 {"DTSTART:20260814T093000Z", std::nullopt},
                 {"X-DUE:20260814", std::nullopt}};
    for (const auto& form : forms) {
        const auto list = addList();
        putTask(list, "task", std::string("SUMMARY:Task\n") + form.property);
        const auto found = onlyReminder(list);
        ASSERT_EQ(found.dueDate.has_value(), form.expected.has_value()) << form.property;
        if (!form.expected) continue;
        EXPECT_EQ(found.dueDate->hour.has_value(), form.expected->hour.has_value()) << form.property;
        EXPECT_EQ(dateFrom(*found.dueDate), dateFrom(*form.expected)) << form.property;
    }
}

TEST_P(EventStoreContract, ClampsThePriority) {
    const auto list = addList();
    const std::pair<int64_t, int64_t> priorities[] = {{-3, 0},
                                                      {0, 0},
                                                      {1, 1},
                                                      {9, 9},
                                                      {12, 9},
                                                      {std::numeric_limits<int64_t>::max(), 9},
                                                      {std::numeric_limits<int64_t>::min(), 0}};
    for (const auto& [given, stored] : priorities) {
        auto reminder = seeds(list);
        reminder.priority = given;
        auto saved = save(reminder);
        EXPECT_EQ(saved.priority, stored);
        saved.priority = 4;
        saved = save(saved);
        saved.priority = given;
        EXPECT_EQ(save(saved).priority, stored);
        EXPECT_EQ(onlyReminder(list).priority, stored);
        wait(store().removeReminder(saved.identifier));
    }
}

TEST_P(EventStoreContract, CompletesAReminderAndTakesItBack) {
    const auto list = addList();
    auto open = save(seeds(list));
    auto given = open;
    given.isCompleted = true;
    given.completionDate = at("1999-01-01T00:00:00Z"); // not the caller's to say
    const auto done = save(given);
    EXPECT_TRUE(done.isCompleted);
    ASSERT_TRUE(done.completionDate);
    EXPECT_GT(*done.completionDate, at("2020-01-01T00:00:00Z"));
    EXPECT_EQ(onlyReminder(list), done);
    setting->reopen();
    EXPECT_EQ(onlyReminder(list), done);

    auto retitled = done;
    retitled.title = "Bought";
    EXPECT_EQ(save(retitled), retitled) << "the completion date stays";
    auto back = retitled;
    back.isCompleted = false;
    const auto reopened = save(back);
    EXPECT_FALSE(reopened.isCompleted);
    EXPECT_EQ(reopened.completionDate, std::nullopt);
    EXPECT_EQ(onlyReminder(list), reopened);
}

TEST_P(EventStoreContract, AddsACompletedReminder) {
    const auto list = addList();
    auto given = seeds(list);
    given.isCompleted = true;
    const auto saved = save(given);
    EXPECT_TRUE(saved.isCompleted);
    EXPECT_TRUE(saved.completionDate);
    EXPECT_EQ(onlyReminder(list), saved);
}

TEST_P(EventStoreContract, ReadsCompletionOfOtherPrograms) {
    const auto list = addList();
    putTask(list, "done", "SUMMARY:Done\nSTATUS:COMPLETED\nCOMPLETED:20260801T120000Z\nPERCENT-COMPLETE:100");
    const auto found = onlyReminder(list);
    EXPECT_TRUE(found.isCompleted);
    EXPECT_EQ(found.completionDate, at("2026-08-01T12:00:00Z"));
    const auto open = addList("Open");
    putTask(open, "half", "SUMMARY:Half\nSTATUS:IN-PROCESS\nPERCENT-COMPLETE:50\nPRIORITY:3");
    EXPECT_FALSE(onlyReminder(open).isCompleted);
    EXPECT_EQ(onlyReminder(open).priority, 3);
}

TEST_P(EventStoreContract, MovesARepeatingReminderOnWhenItIsCompleted) {
    const auto list = addList();
    putTask(list, "water", "SUMMARY:Water\nDTSTART:20260814T090000Z\nDUE:20260814T090000Z\nRRULE:FREQ=DAILY;COUNT=3");
    auto present = onlyReminder(list);
    const auto identifier = present.identifier;
    for (const auto* due : {"2026-08-14T09:00:00Z", "2026-08-15T09:00:00Z", "2026-08-16T09:00:00Z"}) {
        ASSERT_TRUE(present.dueDate);
        EXPECT_EQ(dateFrom(*present.dueDate), at(due));
        EXPECT_FALSE(present.isCompleted);
        EXPECT_EQ(present.completionDate, std::nullopt);
        present.isCompleted = true;
        present = save(present);
        EXPECT_EQ(onlyReminder(list), present) << "once, with its present due date";
        EXPECT_EQ(present.identifier, identifier);
    }
    EXPECT_TRUE(present.isCompleted) << "there is no next due date";
    EXPECT_TRUE(present.completionDate);
}

TEST_P(EventStoreContract, MovesAReminderOfDaysOnWithoutLosingADay) {
    const auto list = addList();
    putTask(list, "bins", "SUMMARY:Bins\nDTSTART;VALUE=DATE:20261023\nDUE;VALUE=DATE:20261024\nRRULE:FREQ=WEEKLY");
    auto present = onlyReminder(list);
    present.isCompleted = true;
    present = save(present);
    ASSERT_TRUE(present.dueDate);
    EXPECT_EQ(dateFrom(*present.dueDate), midnight(2026, 10, 31));
    EXPECT_EQ(present.dueDate->hour, std::nullopt);
}

TEST_P(EventStoreContract, LeavesWhatAReminderHasNoFieldFor) {
    const auto list = addList();
    putTask(list, "task", R"(
SUMMARY:Task
DESCRIPTION:Notes
DUE:20260814T093000Z
CATEGORIES:HOME,GARDEN
PERCENT-COMPLETE:20
URL:https://example.com/task
X-COLOUR:green
BEGIN:VALARM
ACTION:DISPLAY
DESCRIPTION:Now
TRIGGER;RELATED=END:-PT15M
END:VALARM
)");
    auto changed = onlyReminder(list);
    changed.title = "Other task";
    EXPECT_EQ(save(changed), changed);
    const auto text = storedText(list, "task");
    for (const auto* part :
         {"SUMMARY:Other task\n", "DESCRIPTION:Notes\n", "HOME", "GARDEN", "https://example.com/task", "X-COLOUR:green",
          "BEGIN:VALARM", "-PT15M", "DUE:20260814T093000Z"})
        EXPECT_TRUE(has(text, part)) << part << " in\n" << text;
}

TEST_P(EventStoreContract, MovesAReminderToAnotherList) {
    const auto from = addList("From");
    const auto to = addList("To");
    auto given = seeds(from);
    given.notes = "Chard";
    given.dueDate = DateComponents{2026, 8, 14};
    const auto before = save(given);
    auto moving = before;
    moving.listID = to;
    moving.priority = 2;
    const auto moved = save(moving);
    moving.identifier = moved.identifier;
    EXPECT_EQ(moved, moving);
    EXPECT_TRUE(remindersOf(from).empty());
    EXPECT_EQ(onlyReminder(to), moved);
    setting->reopen();
    EXPECT_EQ(onlyReminder(to), moved);
}

TEST_P(EventStoreContract, RemovesAReminder) {
    const auto list = addList();
    const auto kept = save(seeds(list));
    const auto removed = save(seeds(list));
    wait(store().removeReminder(removed.identifier));
    EXPECT_EQ(onlyReminder(list), kept);
    EXPECT_EQ(wait(store().item(removed.identifier)), std::nullopt);
    EXPECT_NE(failure([&] { wait(store().removeReminder(removed.identifier)); }), "");
    EXPECT_NE(failure([&] { save(removed); }), "");
    setting->reopen();
    EXPECT_EQ(onlyReminder(list), kept);
}

TEST_P(EventStoreContract, TellsEventsAndRemindersApart) {
    const auto calendar = addCalendar();
    const auto list = addList();
    const auto event = save(sowing(calendar));
    const auto reminder = save(seeds(list));
    EXPECT_NE(failure([&] { wait(store().removeReminder(event.identifier)); }), "");
    EXPECT_NE(failure([&] { wait(store().removeEvent(reminder.identifier)); }), "");
    auto falseEvent = event;
    falseEvent.identifier = reminder.identifier;
    EXPECT_NE(failure([&] { save(falseEvent); }), "");
    auto falseReminder = reminder;
    falseReminder.identifier = event.identifier;
    EXPECT_NE(failure([&] { save(falseReminder); }), "");
    auto misplaced = reminder;
    misplaced.listID = calendar;
    EXPECT_NE(failure([&] { save(misplaced); }), "");
    misplaced.identifier.clear();
    EXPECT_NE(failure([&] { save(misplaced); }), "");
    EXPECT_EQ(onlyEvent(calendar), event);
    EXPECT_EQ(onlyReminder(list), reminder);
}

TEST_P(EventStoreContract, KeepsOddTextsOfReminders) {
    const auto list = addList();
    const std::string texts[] = {"🦊 👩‍👩‍👧",
                                 "שלום עולם",
                                 "one\ntwo\n",
                                 "a\\b \\n",
                                 "\"q\" 'q'",
                                 "a,b;c:d",
                                 std::string(10'000, 'x'),
                                 "BEGIN:VTODO\nEND:VCALENDAR"};
    for (const auto& text : texts) {
        auto given = seeds(list);
        given.title = text;
        given.notes = text;
        const auto saved = save(given);
        EXPECT_EQ(saved.title, text);
        EXPECT_EQ(saved.notes, text);
        EXPECT_EQ(onlyReminder(list), saved);
        wait(store().removeReminder(saved.identifier));
    }
}

TEST_P(EventStoreContract, KeepsManyReminders) {
    const auto list = addList();
    const auto many = GetParam().many;
    std::string components;
    for (size_t number = 0; number < many; ++number)
        components += component("VTODO", "many-" + std::to_string(number), "SUMMARY:Task " + std::to_string(number));
    put(list, components);
    const auto found = remindersOf(list);
    EXPECT_EQ(found.size(), many);
    EXPECT_EQ(remindersOf(list), found) << "in an order that stays";
    setting->reopen();
    EXPECT_EQ(remindersOf(list), found);
}

TEST_P(EventStoreContract, SearchesTheListsNamedAndNoOthers) {
    const auto first = addList("First");
    const auto second = addList("Second");
    const auto third = addList("Third");
    const auto one = save(seeds(first));
    save(seeds(second));
    const auto three = save(seeds(third));
    const auto found = wait(store().reminders({first, third}));
    EXPECT_TRUE(std::ranges::is_permutation(found, std::vector{one, three}));
    EXPECT_TRUE(wait(store().reminders({})).empty());
    EXPECT_NE(failure([&] { wait(store().reminders({first, "unknown"})); }), "");
}

} // namespace bridge
