#pragma once

#include "tests/contracts/event_store_fixture.h"

#include <set>

// Accounts, calendars and reminder lists.

namespace bridge {

TEST_P(EventStoreContract, SaysWhatItIs) {
    EXPECT_FALSE(store().description().empty());
}

TEST_P(EventStoreContract, NamesItsAccounts) {
    const auto sources = wait(store().sources());
    ASSERT_FALSE(sources.empty());
    std::set<std::string> identifiers;
    for (const auto& source : sources) {
        EXPECT_FALSE(source.id.empty());
        EXPECT_FALSE(source.title.empty());
        identifiers.insert(source.id);
    }
    EXPECT_EQ(identifiers.size(), sources.size()) << "two accounts of one identifier";
    EXPECT_EQ(wait(store().sources()), sources);
    setting->reopen();
    EXPECT_EQ(wait(store().sources()), sources);
}

TEST_P(EventStoreContract, AddsACalendarForEachKindOfItem) {
    for (const auto type : {EntityType::event, EntityType::reminder}) {
        const auto other = type == EntityType::event ? EntityType::reminder : EntityType::event;
        const auto source = account();
        const auto calendar = wait(store().addCalendar(type, source.id, "Garden"));
        EXPECT_FALSE(calendar.id.empty());
        EXPECT_EQ(calendar.entityType, type);
        EXPECT_EQ(calendar.title, "Garden");
        EXPECT_EQ(calendar.source, source);
        EXPECT_TRUE(calendar.allowsContentModifications);

        const auto listed = wait(store().calendars(type));
        EXPECT_EQ(std::ranges::count(listed, calendar), 1);
        EXPECT_FALSE(isListed(calendar.id, other));
        EXPECT_EQ(wait(store().calendar(calendar.id)), calendar);
    }
}

TEST_P(EventStoreContract, HasNothingInANewCalendar) {
    EXPECT_EQ(eventsOf(addCalendar()), std::vector<CalendarEvent>{});
    EXPECT_EQ(remindersOf(addList()), std::vector<Reminder>{});
}

TEST_P(EventStoreContract, ListsOnlyWhatItAlsoFinds) {
    addCalendar();
    addList();
    for (const auto type : {EntityType::event, EntityType::reminder}) {
        std::set<std::string> identifiers;
        for (const auto& calendar : wait(store().calendars(type))) {
            EXPECT_EQ(calendar.entityType, type);
            EXPECT_EQ(wait(store().calendar(calendar.id)), calendar);
            EXPECT_TRUE(identifiers.insert(calendar.id).second);
        }
    }
}

TEST_P(EventStoreContract, KeepsTheOrderOfCalendars) {
    for (const auto* title : {"b", "a", "c", "a"})
        addCalendar(title);
    const auto calendars = wait(store().calendars(EntityType::event));
    EXPECT_EQ(wait(store().calendars(EntityType::event)), calendars);
    setting->reopen();
    EXPECT_EQ(wait(store().calendars(EntityType::event)), calendars);
}

TEST_P(EventStoreContract, KeepsCalendarsOfOneTitleApart) {
    const auto first = addCalendar("Garden");
    const auto second = addCalendar("Garden");
    ASSERT_NE(first, second);
    save(sowing(first));
    EXPECT_EQ(eventsOf(first).size(), 1u);
    EXPECT_EQ(eventsOf(second).size(), 0u);
    wait(store().removeCalendar(second));
    EXPECT_TRUE(isListed(first, EntityType::event));
    EXPECT_FALSE(isListed(second, EntityType::event));
    EXPECT_EQ(eventsOf(first).size(), 1u);
}

TEST_P(EventStoreContract, FindsACalendarAgainAfterARestart) {
    const auto calendar = wait(store().addCalendar(EntityType::event, account().id, "Garden"));
    const auto list = wait(store().addCalendar(EntityType::reminder, account().id, "Shopping"));
    setting->reopen();
    EXPECT_EQ(wait(store().calendar(calendar.id)), calendar);
    EXPECT_EQ(wait(store().calendar(list.id)), list);
}

TEST_P(EventStoreContract, RenamesACalendarAndNothingElse) {
    const auto before = wait(store().addCalendar(EntityType::event, account().id, "Garden"));
    const auto event = save(sowing(before.id));
    auto expected = before;
    expected.title = "Allotment";
    EXPECT_EQ(wait(store().renameCalendar(before.id, "Allotment")), expected);
    EXPECT_EQ(wait(store().calendar(before.id)), expected);
    EXPECT_EQ(onlyEvent(before.id), event);
    setting->reopen();
    EXPECT_EQ(wait(store().calendar(before.id)), expected);
}

TEST_P(EventStoreContract, RenamesAList) {
    const auto list = addList();
    EXPECT_EQ(wait(store().renameCalendar(list, "Errands")).title, "Errands");
    EXPECT_EQ(wait(store().calendar(list)).value().title, "Errands");
}

TEST_P(EventStoreContract, KeepsOddTitlesOfCalendars) {
    const std::string titles[] = {"🦊 Füchse 👩‍👩‍👧",
                                  "שלום עולם",
                                  "a\\b\"c'd;e,f=g[h]#i",
                                  "%s%n",
                                  "  spaced  ",
                                  "../../etc/passwd",
                                  std::string(1'000, 'x')};
    for (const auto& title : titles) {
        const auto identifier = addCalendar(title);
        EXPECT_EQ(wait(store().calendar(identifier)).value().title, kept(title));
        EXPECT_EQ(wait(store().renameCalendar(identifier, title + "!")).title, kept(title + "!"));
        setting->reopen();
        EXPECT_EQ(wait(store().calendar(identifier)).value().title, kept(title + "!"));
        wait(store().removeCalendar(identifier));
    }
}

TEST_P(EventStoreContract, RemovesACalendarWithAllThatIsInIt) {
    const auto calendar = addCalendar();
    const auto list = addList();
    const auto event = save(sowing(calendar)).identifier;
    const auto reminder = save(seeds(list)).identifier;
    wait(store().removeCalendar(calendar));
    wait(store().removeCalendar(list));
    for (const bool restarted : {false, true}) {
        if (restarted) setting->reopen();
        EXPECT_EQ(wait(store().calendar(calendar)), std::nullopt);
        EXPECT_EQ(wait(store().calendar(list)), std::nullopt);
        EXPECT_FALSE(isListed(calendar, EntityType::event));
        EXPECT_FALSE(isListed(list, EntityType::reminder));
        EXPECT_EQ(wait(store().item(event)), std::nullopt);
        EXPECT_EQ(wait(store().item(reminder)), std::nullopt);
        EXPECT_NE(failure([&] { eventsOf(calendar); }), "");
        EXPECT_NE(failure([&] { remindersOf(list); }), "");
    }
}

TEST_P(EventStoreContract, AddsNoCalendarToAnUnknownAccount) {
    const auto before = wait(store().calendars(EntityType::event));
    for (const std::string source : {"", "unknown", "\xff\xfe", "'; DROP TABLE calendar; --"})
        EXPECT_NE(failure([&] { wait(store().addCalendar(EntityType::event, source, "Garden")); }), "") << source;
    EXPECT_EQ(wait(store().calendars(EntityType::event)), before);
}

TEST_P(EventStoreContract, KnowsNoCalendarOfAGarbledIdentifier) {
    const auto calendar = addCalendar();
    const auto before = wait(store().calendars(EntityType::event));
    const std::string identifiers[] = {"",
                                       "unknown",
                                       calendar + " ",
                                       calendar + "/",
                                       calendar.substr(1),
                                       "\xff\xfe",
                                       std::string("a\0b", 3),
                                       "%",
                                       "../..",
                                       account().id,
                                       std::string(100'000, 'x')};
    for (const auto& identifier : identifiers) {
        EXPECT_EQ(wait(store().calendar(identifier)), std::nullopt) << identifier;
        EXPECT_NE(failure([&] { wait(store().renameCalendar(identifier, "New")); }), "") << identifier;
        EXPECT_NE(failure([&] { wait(store().removeCalendar(identifier)); }), "") << identifier;
        EXPECT_NE(failure([&] { eventsOf(identifier); }), "") << identifier;
        EXPECT_NE(failure([&] { remindersOf(identifier); }), "") << identifier;
    }
    EXPECT_EQ(wait(store().calendars(EntityType::event)), before);
}

TEST_P(EventStoreContract, RemovesACalendarOnce) {
    const auto calendar = addCalendar();
    wait(store().removeCalendar(calendar));
    EXPECT_NE(failure([&] { wait(store().removeCalendar(calendar)); }), "");
    EXPECT_NE(failure([&] { wait(store().renameCalendar(calendar, "New")); }), "");
    EXPECT_EQ(wait(store().calendar(calendar)), std::nullopt);
}

TEST_P(EventStoreContract, HasADefaultThatTakesItems) {
    addCalendar();
    addList();
    for (const auto type : {EntityType::event, EntityType::reminder}) {
        const auto calendar = wait(store().defaultCalendar(type));
        ASSERT_TRUE(calendar);
        EXPECT_EQ(calendar->entityType, type);
        EXPECT_TRUE(calendar->allowsContentModifications);
        EXPECT_EQ(wait(store().calendar(calendar->id)), calendar);
        setting->reopen();
        EXPECT_EQ(wait(store().defaultCalendar(type)), calendar);
    }
}

TEST_P(EventStoreContract, HasAnotherDefaultWhenThatIsRemoved) {
    const auto first = addCalendar("First");
    const auto second = addCalendar("Second");
    for (const auto& calendar : {first, second}) {
        const auto present = wait(store().defaultCalendar(EntityType::event));
        if (present && present->id == calendar) {
            wait(store().removeCalendar(calendar));
            const auto next = wait(store().defaultCalendar(EntityType::event));
            ASSERT_TRUE(next);
            EXPECT_NE(next->id, calendar);
            EXPECT_EQ(wait(store().calendar(next->id)), next);
            return;
        }
    }
}

TEST_P(EventStoreContract, HasNoDefaultWhenNothingTakesItems) {
    setting->addReadOnlyCalendar(EntityType::event, "Holidays");
    for (const auto& calendar : wait(store().calendars(EntityType::event)))
        if (calendar.allowsContentModifications)
            if (!failure([&] { wait(store().removeCalendar(calendar.id)); }).empty())
                GTEST_SKIP() << "this store keeps \"" << calendar.title << "\"";
    EXPECT_EQ(wait(store().defaultCalendar(EntityType::event)), std::nullopt);
}

TEST_P(EventStoreContract, ListsACalendarThatTakesNoChanges) {
    const auto identifier = setting->addReadOnlyCalendar(EntityType::event, "Holidays");
    const auto calendar = wait(store().calendar(identifier));
    ASSERT_TRUE(calendar);
    EXPECT_EQ(calendar->title, "Holidays");
    EXPECT_FALSE(calendar->allowsContentModifications);
    const auto listed = wait(store().calendars(EntityType::event));
    EXPECT_EQ(std::ranges::count(listed, *calendar), 1);
}

} // namespace bridge
