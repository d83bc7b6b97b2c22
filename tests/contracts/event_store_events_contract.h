#pragma once

#include "tests/contracts/event_store_fixture.h"

#include <cmath>
#include <limits>
#include <set>

// Single events: adding, changing, moving, removing; identifiers; texts.

namespace bridge {

TEST_P(EventStoreContract, AddsAnEventWithAllItsFields) {
    const auto calendar = addCalendar();
    const auto given = fullSowing(calendar);
    const auto saved = save(given);
    EXPECT_FALSE(saved.identifier.empty());
    ASSERT_TRUE(saved.externalIdentifier);
    EXPECT_FALSE(saved.externalIdentifier->empty());
    auto expected = given;
    expected.identifier = saved.identifier;
    expected.externalIdentifier = saved.externalIdentifier;
    EXPECT_EQ(saved, expected);

    EXPECT_EQ(onlyEvent(calendar), saved);
    EXPECT_EQ(event(saved.identifier), saved);
    setting->reopen();
    EXPECT_EQ(onlyEvent(calendar), saved);
    EXPECT_EQ(event(saved.identifier), saved);
}

TEST_P(EventStoreContract, AddsAnEventWithoutOptionalFields) {
    const auto calendar = addCalendar();
    auto given = sowing(calendar);
    given.title = std::nullopt;
    const auto saved = save(given);
    EXPECT_EQ(saved.title, std::nullopt);
    EXPECT_EQ(saved.location, std::nullopt);
    EXPECT_EQ(saved.notes, std::nullopt);
    EXPECT_EQ(saved.url, std::nullopt);
    EXPECT_TRUE(saved.alarms.empty());
    EXPECT_FALSE(saved.hasRecurrenceRules);
    EXPECT_EQ(onlyEvent(calendar), saved);
}

TEST_P(EventStoreContract, GivesEachNewEventIdentifiersOfItsOwn) {
    const auto calendar = addCalendar();
    std::set<std::string> identifiers, external;
    for (int number = 0; number < 20; ++number) {
        auto given = sowing(calendar);
        given.externalIdentifier = "mine";
        const auto saved = save(given);
        identifiers.insert(saved.identifier);
        external.insert(saved.externalIdentifier.value());
    }
    EXPECT_EQ(identifiers.size(), 20u);
    EXPECT_EQ(external.size(), 20u);
    EXPECT_FALSE(external.contains("mine"));
}

TEST_P(EventStoreContract, ChangesOneFieldAtATime) {
    const auto calendar = addCalendar();
    auto expected = save(fullSowing(calendar));
    const auto check = [&] {
        EXPECT_EQ(save(expected), expected);
        EXPECT_EQ(onlyEvent(calendar), expected);
        EXPECT_EQ(event(expected.identifier), expected);
    };
    expected.title = "Planting";
    check();
    expected.location = "Bed 5";
    check();
    expected.notes = "None left.";
    check();
    expected.url = "https://example.com/other";
    check();
    expected.endDate = later(expected.endDate, 1800);
    check();
    expected.startDate = later(expected.startDate, -86400);
    check();
    expected.alarms = {Alarm{-60.0}};
    check();
    setting->reopen();
    EXPECT_EQ(onlyEvent(calendar), expected);
}

TEST_P(EventStoreContract, TakesFieldsAway) {
    const auto calendar = addCalendar();
    auto expected = save(fullSowing(calendar));
    expected.location = std::nullopt;
    expected.notes = std::nullopt;
    EXPECT_EQ(save(expected), expected);
    EXPECT_EQ(onlyEvent(calendar), expected);
    expected.url = std::nullopt;
    expected.title = std::nullopt;
    expected.alarms.clear();
    EXPECT_EQ(save(expected), expected);
    EXPECT_EQ(onlyEvent(calendar), expected);
    expected.notes = "Again";
    expected.alarms = {Alarm{-60.0}};
    EXPECT_EQ(save(expected), expected);
    EXPECT_EQ(onlyEvent(calendar), expected);
}

TEST_P(EventStoreContract, SavesAnUnchangedEvent) {
    const auto calendar = addCalendar();
    const auto saved = save(fullSowing(calendar));
    EXPECT_EQ(save(saved), saved);
    EXPECT_EQ(onlyEvent(calendar), saved);
}

TEST_P(EventStoreContract, KeepsSeveralAlarms) {
    const auto calendar = addCalendar();
    auto given = sowing(calendar);
    given.alarms = {Alarm{-900.0}, Alarm{0.0}, Alarm{3600.0}, Alarm{at("2026-08-13T18:00:00Z")}, Alarm{-864000.0}};
    const auto saved = save(given);
    ASSERT_EQ(saved.alarms.size(), given.alarms.size());
    EXPECT_TRUE(std::ranges::is_permutation(saved.alarms, given.alarms));
    setting->reopen();
    EXPECT_EQ(onlyEvent(calendar), saved);
}

TEST_P(EventStoreContract, RefusesAnAlarmThatNothingCanHold) {
    const auto calendar = addCalendar();
    const auto before = save(fullSowing(calendar));
    for (const double offset : {1e300, -1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
        auto given = before;
        given.title = "Changed";
        given.alarms = {Alarm{offset}};
        EXPECT_NE(failure([&] { save(given); }), "") << offset;
        given.identifier.clear();
        EXPECT_NE(failure([&] { save(given); }), "") << offset;
        EXPECT_EQ(onlyEvent(calendar), before);
    }
}

TEST_P(EventStoreContract, HoldsOrRefusesAnAlarmCenturiesAway) {
    const auto calendar = addCalendar();
    for (const double offset : {-2147483647.0, 2147483648.0, -4294967296.0, 1e12, -1e12, 1e18}) {
        auto given = sowing(calendar);
        given.alarms = {Alarm{offset}};
        CalendarEvent saved;
        if (!failure([&] { saved = save(given); }).empty()) continue;
        EXPECT_EQ(saved.alarms, given.alarms) << offset;
        EXPECT_EQ(onlyEvent(calendar), saved);
        wait(store().removeEvent(saved.identifier));
    }
    EXPECT_TRUE(eventsOf(calendar).empty());
}

TEST_P(EventStoreContract, HoldsOrRefusesDaysAtTheEndsOfTime) {
    const auto calendar = addCalendar();
    for (const auto start : {earliestDate, at("0099-01-01T00:00:00Z"), at("1582-10-10T00:00:00Z"),
                             at("1899-12-31T23:59:59Z"), at("2038-01-19T03:14:08Z"), at("9999-12-31T00:00:00Z")}) {
        auto given = sowing(calendar);
        given.startDate = start;
        given.endDate = later(start, 3600);
        CalendarEvent saved;
        if (!failure([&] { saved = save(given); }).empty()) continue;
        EXPECT_EQ(saved.startDate, given.startDate);
        EXPECT_EQ(saved.endDate, given.endDate);
        EXPECT_EQ(event(saved.identifier), saved);
        wait(store().removeEvent(saved.identifier));
    }
    for (const auto start : {Date{std::numeric_limits<int64_t>::min()}, Date{std::numeric_limits<int64_t>::max() - 1},
                             later(latestDate, 1), later(earliestDate, -1)}) {
        auto given = sowing(calendar);
        given.startDate = start;
        given.endDate = later(start, 1);
        EXPECT_NE(failure([&] { save(given); }), "");
    }
    EXPECT_TRUE(wait(store().events(earliestDate, latestDate, {calendar}, 100)).empty());
}

TEST_P(EventStoreContract, RemovesAnEvent) {
    const auto calendar = addCalendar();
    const auto kept = save(sowing(calendar));
    const auto removed = save(fullSowing(calendar));
    wait(store().removeEvent(removed.identifier));
    EXPECT_EQ(onlyEvent(calendar), kept);
    EXPECT_EQ(wait(store().item(removed.identifier)), std::nullopt);
    EXPECT_NE(failure([&] { wait(store().removeEvent(removed.identifier)); }), "");
    EXPECT_NE(failure([&] { save(removed); }), "");
    setting->reopen();
    EXPECT_EQ(onlyEvent(calendar), kept);
}

TEST_P(EventStoreContract, MovesAnEventToAnotherCalendar) {
    const auto from = addCalendar("From");
    const auto to = addCalendar("To");
    const auto before = save(fullSowing(from));
    auto given = before;
    given.calendarID = to;
    given.title = "Moved";
    const auto moved = save(given);
    EXPECT_TRUE(eventsOf(from).empty());
    EXPECT_EQ(onlyEvent(to), moved);
    given.identifier = moved.identifier;
    EXPECT_EQ(moved, given) << "the external identifier stays too";
    EXPECT_EQ(event(moved.identifier), moved);
    if (moved.identifier != before.identifier) {
        EXPECT_EQ(wait(store().item(before.identifier)), std::nullopt);
    }
    setting->reopen();
    EXPECT_EQ(onlyEvent(to), moved);
    EXPECT_TRUE(eventsOf(from).empty());
}

TEST_P(EventStoreContract, KeepsACopyInAnotherCalendarApart) {
    const auto here = addCalendar("Here");
    const auto there = addCalendar("There");
    for (const auto& calendar : {here, there})
        putEvent(calendar, "one-uid", "DTSTART:20260814T090000Z\nDTEND:20260814T100000Z\nSUMMARY:Sowing");
    auto mine = onlyEvent(here);
    const auto other = onlyEvent(there);
    EXPECT_EQ(mine.externalIdentifier, "one-uid");
    EXPECT_EQ(other.externalIdentifier, "one-uid");
    EXPECT_NE(mine.identifier, other.identifier);
    mine.title = "Changed";
    save(mine);
    EXPECT_EQ(onlyEvent(there), other);
    // Two items of one UID have no room in one calendar; either way none is lost.
    auto moving = mine;
    moving.calendarID = there;
    failure([&] { save(moving); });
    EXPECT_EQ(eventsOf(here).size() + eventsOf(there).size(), 2u);
    EXPECT_TRUE(std::ranges::any_of(eventsOf(there), [&](const auto& each) { return each.title == other.title; }));
}

TEST_P(EventStoreContract, FindsNoItemOfAGarbledIdentifier) {
    const auto calendar = addCalendar();
    const auto saved = save(sowing(calendar));
    const auto& known = saved.identifier;
    const std::string identifiers[] = {"",
                                       "unknown",
                                       calendar,
                                       calendar + "/",
                                       known + " ",
                                       known + "/20260814T090000Z",
                                       known.substr(1),
                                       known.substr(0, known.size() - 1),
                                       "\xff\xfe",
                                       std::string("a\0b", 3),
                                       known + std::string("\0x", 2),
                                       "%",
                                       "'; DROP TABLE item; --",
                                       "(occur-in-time-range? (make-time \"\"))",
                                       "\n",
                                       std::string(100'000, '/'),
                                       std::string(100'000, 'x')};
    for (const auto& identifier : identifiers) {
        EXPECT_EQ(wait(store().item(identifier)), std::nullopt) << identifier.substr(0, 100);
        EXPECT_NE(failure([&] { wait(store().removeEvent(identifier)); }), "") << identifier.substr(0, 100);
        EXPECT_NE(failure([&] { wait(store().removeReminder(identifier)); }), "") << identifier.substr(0, 100);
        if (identifier.empty()) continue; // means a new one
        auto unknown = sowing(calendar);
        unknown.identifier = identifier;
        EXPECT_NE(failure([&] { save(unknown); }), "") << identifier.substr(0, 100);
    }
    EXPECT_EQ(onlyEvent(calendar), saved);
}

TEST_P(EventStoreContract, SavesNothingIntoACalendarThatIsNotThere) {
    const auto calendar = addCalendar();
    const auto list = addList();
    const auto before = save(sowing(calendar));
    for (const std::string& target : {std::string("unknown"), std::string(), std::string("\xff"), list}) {
        auto given = before;
        given.calendarID = target;
        given.title = "Changed";
        EXPECT_NE(failure([&] { save(given); }), "") << target;
        given.identifier.clear();
        EXPECT_NE(failure([&] { save(given); }), "") << target;
        EXPECT_EQ(onlyEvent(calendar), before);
    }
    EXPECT_TRUE(remindersOf(list).empty());
}

TEST_P(EventStoreContract, KeepsLongTexts) {
    const auto calendar = addCalendar();
    std::string text;
    while (text.size() < 10'000)
        text += "Grüße aus dem Garten 🌱, Beet " + std::to_string(text.size()) + "; ";
    auto given = sowing(calendar);
    given.title = text;
    given.location = text;
    given.notes = text;
    given.url = "https://example.com/" + std::string(10'000, 'a');
    const auto saved = save(given);
    EXPECT_EQ(saved.title, kept(text));
    EXPECT_EQ(saved.location, kept(text));
    EXPECT_EQ(saved.notes, kept(text));
    EXPECT_EQ(saved.url, given.url);
    setting->reopen();
    EXPECT_EQ(onlyEvent(calendar), saved);
}

TEST_P(EventStoreContract, KeepsOddTexts) {
    const auto calendar = addCalendar();
    const std::string texts[] = {"🦊 👩‍👩‍👧 🇵🇹",
                                 "שלום עולם \xe2\x80\x8f!",
                                 "one\ntwo\n\nfour\n",
                                 "a\\b \\n \\, \\; c",
                                 "\"quoted\" 'single' `back`",
                                 "a,b;c:d=e",
                                 "tab\there",
                                 "  spaced  ",
                                 "BEGIN:VEVENT\nEND:VCALENDAR",
                                 "Z\xcc\x8a\xcc\x81 é",
                                 "%s %n {} $(id) <b>&amp;</b>",
                                 "'; DROP TABLE item; --"};
    for (const auto& text : texts) {
        auto given = sowing(calendar);
        given.title = text;
        given.location = text;
        given.notes = text;
        auto saved = save(given);
        EXPECT_EQ(saved.title, kept(text));
        EXPECT_EQ(saved.location, kept(text));
        EXPECT_EQ(saved.notes, kept(text));
        EXPECT_EQ(onlyEvent(calendar), saved);
        saved.notes = text + text;
        EXPECT_EQ(save(saved).notes, kept(text + text));
        wait(store().removeEvent(saved.identifier));
    }
}

TEST_P(EventStoreContract, LosesNoTextBehindACharacterThatCalendarsHaveNot) {
    const auto calendar = addCalendar();
    const std::string texts[] = {"a\r\nb", "a\rb", "a\x01\x02\x1f\x7f z", std::string("a\0b", 3)};
    for (const auto& text : texts) {
        auto given = sowing(calendar);
        given.title = text;
        CalendarEvent saved;
        if (!failure([&] { saved = save(given); }).empty()) continue;
        const auto title = saved.title.value_or("");
        ASSERT_FALSE(title.empty());
        EXPECT_EQ(title.front(), text.front());
        EXPECT_EQ(title.back(), text.back());
        EXPECT_EQ(onlyEvent(calendar), saved);
        wait(store().removeEvent(saved.identifier));
    }
    EXPECT_TRUE(eventsOf(calendar).empty());
}

TEST_P(EventStoreContract, TellsAnEmptyTextFromNoTextOrHasNone) {
    const auto calendar = addCalendar();
    auto given = sowing(calendar);
    given.title = "";
    given.notes = "";
    const auto saved = save(given);
    EXPECT_EQ(saved.title.value_or(""), "");
    EXPECT_EQ(saved.notes.value_or(""), "");
    EXPECT_EQ(onlyEvent(calendar), saved);
}

} // namespace bridge
