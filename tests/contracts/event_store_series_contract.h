#pragma once

#include "tests/contracts/event_store_fixture.h"

#include <set>

// Series: their occurrences, and changes that touch one of them alone.

namespace bridge {

// Fridays from 2026-08-07, ten o'clock in Lisbon, which is nine in UTC.
inline const std::string fridays = R"(
DTSTART;TZID=Europe/Lisbon:20260807T100000
DTEND;TZID=Europe/Lisbon:20260807T110000
RRULE:FREQ=WEEKLY;COUNT=5
SUMMARY:Market
LOCATION:Square
ATTENDEE;CN=Ben:mailto:ben@example.com
X-MOON:full
BEGIN:VALARM
ACTION:DISPLAY
DESCRIPTION:Bags
TRIGGER:-PT10M
END:VALARM
)";

TEST_P(EventStoreContract, AnswersASeriesOnceForEachTimeItHappens) {
    const auto calendar = addCalendar();
    putEvent(calendar, "fridays", fridays);
    const auto found = eventsOf(calendar);
    ASSERT_EQ(found.size(), 5u);
    std::set<std::string> identifiers;
    auto start = at("2026-08-07T09:00:00Z");
    for (const auto& each : found) {
        EXPECT_EQ(each.startDate, start);
        EXPECT_EQ(each.endDate, later(start, 3600));
        EXPECT_EQ(each.title, "Market");
        EXPECT_EQ(each.alarms, std::vector{Alarm{-600.0}});
        EXPECT_EQ(each.externalIdentifier, "fridays");
        EXPECT_TRUE(each.hasRecurrenceRules);
        EXPECT_EQ(event(each.identifier), each);
        identifiers.insert(each.identifier);
        start = later(start, 7 * 86400);
    }
    EXPECT_EQ(identifiers.size(), 5u);
    EXPECT_EQ(eventsOf(calendar), found);
    setting->reopen();
    EXPECT_EQ(eventsOf(calendar), found);
    for (const auto& each : found)
        EXPECT_EQ(event(each.identifier), each);
}

TEST_P(EventStoreContract, AnswersOnlyTheOccurrencesInTheRange) {
    const auto calendar = addCalendar();
    putEvent(calendar, "fridays", fridays);
    const auto all = eventsOf(calendar);
    ASSERT_EQ(all.size(), 5u);
    EXPECT_EQ(eventsBetween(calendar, "2026-08-14T00:00:00Z", "2026-08-22T00:00:00Z"), (std::vector{all[1], all[2]}));
    EXPECT_EQ(eventsBetween(calendar, "2026-08-14T09:59:59Z", "2026-08-21T09:00:00Z"), std::vector{all[1]});
    EXPECT_EQ(eventsBetween(calendar, "2026-08-14T10:00:00Z", "2026-08-21T09:00:00Z"), std::vector<CalendarEvent>{});
    EXPECT_EQ(eventsBetween(calendar, "2026-08-01T00:00:00Z", "2027-01-01T00:00:00Z", 2),
              (std::vector{all[0], all[1]}));
    EXPECT_TRUE(eventsBetween(calendar, "2026-10-01T00:00:00Z", "2027-10-01T00:00:00Z").empty());
}

TEST_P(EventStoreContract, FindsAnOccurrenceThatBeganBeforeTheRange) {
    const auto calendar = addCalendar();
    putEvent(calendar, "long",
             "DTSTART:20260801T000000Z\nDURATION:P10D\nRRULE:FREQ=DAILY;INTERVAL=3;COUNT=4\nSUMMARY:Stay");
    // Begun on the 1st, 4th, 7th and 10th, ten days each.
    EXPECT_EQ(eventsBetween(calendar, "2026-08-10T12:00:00Z", "2026-08-10T13:00:00Z").size(), 4u);
    EXPECT_EQ(eventsBetween(calendar, "2026-08-13T12:00:00Z", "2026-08-13T13:00:00Z").size(), 3u);
    EXPECT_EQ(eventsBetween(calendar, "2026-08-19T12:00:00Z", "2026-08-19T13:00:00Z").size(), 1u);
}

TEST_P(EventStoreContract, KeepsTheTimeOfDayWhenTheClocksChange) {
    const auto calendar = addCalendar();
    putEvent(calendar, "monday",
             "DTSTART;TZID=Europe/Lisbon:20261019T090000\nDURATION:PT1H\nRRULE:FREQ=WEEKLY;COUNT=2\nSUMMARY:Monday");
    const auto found = eventsOf(calendar);
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].startDate, at("2026-10-19T08:00:00Z"));
    EXPECT_EQ(found[1].startDate, at("2026-10-26T09:00:00Z"));
}

TEST_P(EventStoreContract, RepeatsWholeDays) {
    const auto calendar = addCalendar();
    putEvent(calendar, "days",
             "DTSTART;VALUE=DATE:20261023\nRRULE:FREQ=DAILY;COUNT=5\nEXDATE;VALUE=DATE:20261024\nSUMMARY:Leave");
    const auto found = eventsOf(calendar);
    ASSERT_EQ(found.size(), 4u);
    const int days[] = {23, 25, 26, 27};
    for (size_t number = 0; number < 4; ++number) {
        EXPECT_TRUE(found[number].isAllDay);
        EXPECT_EQ(found[number].startDate, midnight(2026, 10, days[number]));
        EXPECT_EQ(found[number].endDate, midnight(2026, 10, days[number] + 1));
        EXPECT_EQ(event(found[number].identifier), found[number]);
    }
}

TEST_P(EventStoreContract, LeavesOutExceptionsAndCancelledOccurrences) {
    const auto calendar = addCalendar();
    put(calendar, component("VEVENT", "fridays", "EXDATE;TZID=Europe/Lisbon:20260814T100000" + fridays) +
                      component("VEVENT", "fridays",
                                "RECURRENCE-ID;TZID=Europe/Lisbon:20260821T100000\nDTSTART;TZID=Europe/Lisbon:"
                                "20260821T100000\nDURATION:PT1H\nSTATUS:CANCELLED\nSUMMARY:Market"));
    const auto found = eventsOf(calendar);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].startDate, at("2026-08-07T09:00:00Z"));
    EXPECT_EQ(found[1].startDate, at("2026-08-28T09:00:00Z"));
    EXPECT_EQ(found[2].startDate, at("2026-09-04T09:00:00Z"));
}

TEST_P(EventStoreContract, AnswersMovedOccurrencesWhereTheyWereMovedTo) {
    const auto calendar = addCalendar();
    put(calendar, component("VEVENT", "fridays", fridays) +
                      component("VEVENT", "fridays",
                                "RECURRENCE-ID;TZID=Europe/Lisbon:20260814T100000\nDTSTART;TZID=Europe/Lisbon:"
                                "20261201T150000\nDURATION:PT2H\nSUMMARY:Winter market"));
    EXPECT_TRUE(eventsBetween(calendar, "2026-08-14T00:00:00Z", "2026-08-15T00:00:00Z").empty());
    const auto moved = eventsBetween(calendar, "2026-12-01T00:00:00Z", "2026-12-02T00:00:00Z");
    ASSERT_EQ(moved.size(), 1u);
    EXPECT_EQ(moved[0].startDate, at("2026-12-01T15:00:00Z"));
    EXPECT_EQ(moved[0].endDate, at("2026-12-01T17:00:00Z"));
    EXPECT_EQ(moved[0].title, "Winter market");
    EXPECT_EQ(event(moved[0].identifier), moved[0]);
    const auto all = eventsOf(calendar);
    ASSERT_EQ(all.size(), 5u);
    EXPECT_EQ(all.back(), moved[0]) << "in order of start";
}

TEST_P(EventStoreContract, AddsFurtherDatesOfASeries) {
    const auto calendar = addCalendar();
    putEvent(calendar, "dates",
             "DTSTART:20260814T090000Z\nDURATION:PT1H\nRDATE:20260820T120000Z,20260901T090000Z\nSUMMARY:Dates");
    const auto found = eventsOf(calendar);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[1].startDate, at("2026-08-20T12:00:00Z"));
    EXPECT_EQ(found[1].endDate, at("2026-08-20T13:00:00Z"));
    EXPECT_EQ(found[2].startDate, at("2026-09-01T09:00:00Z"));
    EXPECT_EQ(event(found[2].identifier), found[2]);
    wait(store().removeEvent(found[1].identifier));
    EXPECT_EQ(eventsOf(calendar), (std::vector{found[0], found[2]}));
}

TEST_P(EventStoreContract, ShowsAnOccurrenceWhoseSeriesIsElsewhere) {
    const auto calendar = addCalendar();
    putEvent(calendar, "invited",
             "RECURRENCE-ID:20260814T090000Z\nDTSTART:20260814T093000Z\nDURATION:PT1H\nSUMMARY:Invited");
    auto found = onlyEvent(calendar);
    EXPECT_EQ(found.startDate, at("2026-08-14T09:30:00Z"));
    EXPECT_EQ(event(found.identifier), found);
    found.title = "Accepted";
    EXPECT_EQ(save(found).title, "Accepted");
    EXPECT_EQ(onlyEvent(calendar).title, "Accepted");
    wait(store().removeEvent(found.identifier));
    EXPECT_TRUE(eventsOf(calendar).empty());
}

TEST_P(EventStoreContract, ChangesTheTextOfOneOccurrence) {
    const auto calendar = addCalendar();
    for (const size_t which : {size_t{0}, size_t{2}, size_t{4}}) {
        const auto uid = "fridays-" + std::to_string(which);
        const auto own = addCalendar(uid);
        putEvent(own, uid, fridays);
        auto expected = eventsOf(own);
        ASSERT_EQ(expected.size(), 5u);
        expected[which].title = "Fair";
        expected[which].location = "Field";
        const auto saved = save(expected[which]);
        EXPECT_EQ(saved.identifier, expected[which].identifier);
        EXPECT_EQ(saved.title, "Fair");
        expected[which].hasRecurrenceRules = saved.hasRecurrenceRules;
        EXPECT_EQ(saved, expected[which]);
        EXPECT_EQ(eventsOf(own), expected);
        setting->reopen();
        EXPECT_EQ(eventsOf(own), expected);
        EXPECT_EQ(event(saved.identifier), saved);

        const auto text = storedText(own, uid);
        EXPECT_EQ(count(text, "BEGIN:VEVENT"), 2u) << text;
        EXPECT_EQ(count(text, "RECURRENCE-ID"), 1u) << text;
        EXPECT_EQ(count(text, "RRULE"), 1u) << text;
        EXPECT_EQ(count(text, "mailto:ben@example.com"), 2u) << text;
        EXPECT_EQ(count(text, "X-MOON:full"), 2u) << text;
        EXPECT_EQ(count(text, "BEGIN:VALARM"), 2u) << text;
    }
}

TEST_P(EventStoreContract, MovesOneOccurrenceInTime) {
    for (const size_t which : {size_t{0}, size_t{2}, size_t{4}}) {
        const auto calendar = addCalendar();
        putEvent(calendar, "fridays", fridays);
        const auto before = eventsOf(calendar);
        ASSERT_EQ(before.size(), 5u);
        auto moved = before[which];
        moved.startDate = at("2026-11-01T12:00:00Z");
        moved.endDate = at("2026-11-01T14:30:00Z");
        auto saved = save(moved);
        EXPECT_EQ(saved.identifier, moved.identifier);
        EXPECT_EQ(saved.startDate, moved.startDate);
        EXPECT_EQ(saved.endDate, moved.endDate);
        auto expected = before;
        expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(which));
        expected.push_back(saved);
        EXPECT_EQ(eventsOf(calendar), expected);
        EXPECT_EQ(event(saved.identifier), saved);

        // Again, and back to where it was.
        saved.startDate = at("2026-11-02T12:00:00Z");
        saved.endDate = at("2026-11-02T13:00:00Z");
        saved = save(saved);
        EXPECT_EQ(saved.identifier, moved.identifier);
        expected.back() = saved;
        EXPECT_EQ(eventsOf(calendar), expected);
        saved.startDate = before[which].startDate;
        saved.endDate = before[which].endDate;
        saved = save(saved);
        EXPECT_EQ(saved.identifier, moved.identifier);
        const auto last = eventsOf(calendar);
        ASSERT_EQ(last.size(), 5u);
        EXPECT_EQ(last[which].startDate, before[which].startDate);
        EXPECT_EQ(last[which].identifier, before[which].identifier);
    }
}

TEST_P(EventStoreContract, ChangesTheAlarmsOfOneOccurrence) {
    const auto calendar = addCalendar();
    putEvent(calendar, "fridays", fridays);
    auto expected = eventsOf(calendar);
    ASSERT_EQ(expected.size(), 5u);
    expected[1].alarms = {Alarm{-60.0}};
    expected[3].alarms.clear();
    EXPECT_EQ(save(expected[1]).alarms, expected[1].alarms);
    EXPECT_EQ(save(expected[3]).alarms, expected[3].alarms);
    const auto found = eventsOf(calendar);
    ASSERT_EQ(found.size(), 5u);
    for (size_t number = 0; number < 5; ++number)
        EXPECT_EQ(found[number].alarms, expected[number].alarms) << number;
}

TEST_P(EventStoreContract, MovesAnOccurrenceOntoAnother) {
    const auto calendar = addCalendar();
    putEvent(calendar, "fridays", fridays);
    auto all = eventsOf(calendar);
    ASSERT_EQ(all.size(), 5u);
    all[0].startDate = all[1].startDate;
    all[0].endDate = all[1].endDate;
    all[0].title = "Twice";
    save(all[0]);
    const auto found = eventsOf(calendar);
    ASSERT_EQ(found.size(), 5u);
    EXPECT_EQ(found[0].startDate, found[1].startDate);
    EXPECT_EQ(event(all[0].identifier).value().title, "Twice");
    EXPECT_EQ(event(all[1].identifier), all[1]);
    wait(store().removeEvent(all[1].identifier));
    EXPECT_EQ(eventsOf(calendar).size(), 4u);
    EXPECT_EQ(event(all[0].identifier).value().title, "Twice");
}

TEST_P(EventStoreContract, RemovesOneOccurrence) {
    for (const size_t which : {size_t{0}, size_t{2}, size_t{4}}) {
        const auto calendar = addCalendar();
        putEvent(calendar, "fridays", fridays);
        auto expected = eventsOf(calendar);
        ASSERT_EQ(expected.size(), 5u);
        const auto removed = expected[which];
        wait(store().removeEvent(removed.identifier));
        expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(which));
        EXPECT_EQ(eventsOf(calendar), expected);
        EXPECT_EQ(wait(store().item(removed.identifier)), std::nullopt);
        EXPECT_NE(failure([&] { wait(store().removeEvent(removed.identifier)); }), "");
        EXPECT_NE(failure([&] { save(removed); }), "");
        EXPECT_EQ(eventsOf(calendar), expected);
        setting->reopen();
        EXPECT_EQ(eventsOf(calendar), expected);
    }
}

TEST_P(EventStoreContract, RemovesAnOccurrenceThatWasMoved) {
    const auto calendar = addCalendar();
    putEvent(calendar, "fridays", fridays);
    auto expected = eventsOf(calendar);
    ASSERT_EQ(expected.size(), 5u);
    auto moved = expected[1];
    moved.startDate = later(moved.startDate, 86400);
    moved.endDate = later(moved.endDate, 86400);
    moved = save(moved);
    wait(store().removeEvent(moved.identifier));
    expected.erase(expected.begin() + 1);
    EXPECT_EQ(eventsOf(calendar), expected) << "it must not come back where it was";
    EXPECT_EQ(wait(store().item(moved.identifier)), std::nullopt);
    EXPECT_EQ(count(storedText(calendar, "fridays"), "BEGIN:VEVENT"), 1u);
}

TEST_P(EventStoreContract, RemovesAllOccurrencesOneAfterTheOther) {
    const auto calendar = addCalendar();
    putEvent(calendar, "fridays", fridays);
    auto left = eventsOf(calendar);
    ASSERT_EQ(left.size(), 5u);
    for (const size_t which : {size_t{2}, size_t{0}, size_t{2}, size_t{0}, size_t{0}}) {
        wait(store().removeEvent(left[which].identifier));
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(which));
        EXPECT_EQ(eventsOf(calendar), left);
    }
    EXPECT_EQ(setting->stored(calendar, "fridays"), "") << "a series without occurrences is left";
}

TEST_P(EventStoreContract, MovesAnOccurrenceOutOfItsSeries) {
    for (const size_t which : {size_t{0}, size_t{2}}) {
        const auto from = addCalendar("From");
        const auto to = addCalendar("To");
        putEvent(from, "fridays", fridays);
        auto left = eventsOf(from);
        ASSERT_EQ(left.size(), 5u);
        auto moving = left[which];
        moving.calendarID = to;
        moving.title = "Elsewhere";
        const auto moved = save(moving);
        left.erase(left.begin() + static_cast<std::ptrdiff_t>(which));
        EXPECT_EQ(eventsOf(from), left);
        EXPECT_EQ(onlyEvent(to), moved);
        EXPECT_EQ(moved.title, "Elsewhere");
        EXPECT_EQ(moved.startDate, moving.startDate);
        EXPECT_EQ(moved.endDate, moving.endDate);
        EXPECT_EQ(moved.location, moving.location);
        EXPECT_EQ(moved.alarms, moving.alarms);
        EXPECT_FALSE(moved.hasRecurrenceRules);
        EXPECT_NE(moved.externalIdentifier, "fridays");
        EXPECT_EQ(event(moved.identifier), moved);
        const auto text = storedText(to, moved.externalIdentifier.value());
        EXPECT_TRUE(has(text, "X-MOON:full")) << text;
        EXPECT_FALSE(has(text, "RRULE")) << text;
        EXPECT_FALSE(has(text, "RECURRENCE-ID")) << text;
    }
}

TEST_P(EventStoreContract, ChangesAnOccurrenceOfASeriesOfDays) {
    const auto calendar = addCalendar();
    putEvent(calendar, "days", "DTSTART;VALUE=DATE:20260814\nRRULE:FREQ=DAILY;COUNT=3\nSUMMARY:Leave");
    auto expected = eventsOf(calendar);
    ASSERT_EQ(expected.size(), 3u);
    expected[1].title = "Work after all";
    save(expected[1]);
    auto found = eventsOf(calendar);
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0], expected[0]);
    EXPECT_EQ(found[1].title, "Work after all");
    EXPECT_TRUE(found[1].isAllDay);
    EXPECT_EQ(found[1].startDate, midnight(2026, 8, 15));
    EXPECT_EQ(found[2], expected[2]);
    // A few hours of that day instead of all of it.
    auto hours = found[1];
    hours.isAllDay = false;
    hours.startDate = at("2026-08-15T09:00:00Z");
    hours.endDate = at("2026-08-15T10:00:00Z");
    const auto saved = save(hours);
    EXPECT_FALSE(saved.isAllDay);
    EXPECT_EQ(saved.startDate, hours.startDate);
    EXPECT_EQ(saved.identifier, found[1].identifier);
    wait(store().removeEvent(saved.identifier));
    EXPECT_EQ(eventsOf(calendar), (std::vector{expected[0], expected[2]}));
}

TEST_P(EventStoreContract, ChangesAnOccurrenceOfAFloatingSeries) {
    const auto calendar = addCalendar();
    putEvent(calendar, "floating",
             "DTSTART:20260814T090000\nDURATION:PT1H\nRRULE:FREQ=DAILY;COUNT=3\nSUMMARY:Breakfast");
    auto expected = eventsOf(calendar);
    ASSERT_EQ(expected.size(), 3u);
    expected[1].title = "Late";
    expected[1].startDate = later(expected[1].startDate, 3600);
    expected[1].endDate = later(expected[1].endDate, 3600);
    expected[1] = save(expected[1]);
    EXPECT_EQ(eventsOf(calendar), expected);
    const UserTimeZone moved("America/New_York");
    const auto there = eventsOf(calendar);
    ASSERT_EQ(there.size(), 3u);
    EXPECT_EQ(there[1].startDate, at("2026-08-15T14:00:00Z"));
    EXPECT_EQ(there[1].title, "Late");
    EXPECT_EQ(there[1].identifier, expected[1].identifier);
}

TEST_P(EventStoreContract, ReachesFarIntoAnEndlessSeries) {
    const auto calendar = addCalendar();
    putEvent(calendar, "endless", "DTSTART:20260101T090000Z\nDURATION:PT1H\nRRULE:FREQ=DAILY\nSUMMARY:Watering");
    const auto first = eventsBetween(calendar, "2026-01-01T00:00:00Z", "2126-01-01T00:00:00Z", 100);
    ASSERT_EQ(first.size(), 100u);
    for (size_t number = 0; number < first.size(); ++number)
        ASSERT_EQ(first[number].startDate, later(at("2026-01-01T09:00:00Z"), static_cast<int64_t>(number) * 86400));
    auto late = eventsBetween(calendar, "2056-06-15T00:00:00Z", "2056-06-16T00:00:00Z");
    ASSERT_EQ(late.size(), 1u);
    EXPECT_EQ(late[0].startDate, at("2056-06-15T09:00:00Z"));
    EXPECT_EQ(event(late[0].identifier), late[0]);
    late[0].title = "Thirty years on";
    save(late[0]);
    EXPECT_EQ(event(late[0].identifier).value().title, "Thirty years on");
    wait(store().removeEvent(late[0].identifier));
    EXPECT_TRUE(eventsBetween(calendar, "2056-06-15T00:00:00Z", "2056-06-16T00:00:00Z").empty());
    EXPECT_EQ(eventsBetween(calendar, "2056-06-14T00:00:00Z", "2056-06-17T00:00:00Z").size(), 2u);
}

TEST_P(EventStoreContract, AnswersForRulesThatGoOnForEverOrNeverHappen) {
    const auto calendar = addCalendar();
    putEvent(calendar, "second", "DTSTART:20000101T000000Z\nRRULE:FREQ=SECONDLY\nSUMMARY:Tick");
    putEvent(calendar, "never", "DTSTART:20000101T000000Z\nRRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30\nSUMMARY:Never");
    putEvent(calendar, "none", "DTSTART:20000101T000000Z\nRRULE:FREQ=MINUTELY;BYMONTH=2;BYMONTHDAY=31\nSUMMARY:None");
    EXPECT_LE(eventsBetween(calendar, "2026-01-01T00:00:00Z", "2126-01-01T00:00:00Z", 5).size(), 5u);
    const auto first = eventsBetween(calendar, "2000-01-02T00:00:00Z", "2000-01-02T00:00:10Z", 5);
    EXPECT_EQ(first.size(), 5u);
}

} // namespace bridge
