#pragma once

#include "tests/contracts/event_store_fixture.h"

// Days, zones, floating times, and the nights when the clocks change. The user is in Lisbon.

namespace bridge {

TEST_P(EventStoreContract, PutsANewEventIntoTheUsersZone) {
    const auto calendar = addCalendar();
    const auto saved = save(sowing(calendar));
    const auto text = storedText(calendar, saved.externalIdentifier.value());
    EXPECT_TRUE(has(text, "Lisbon:20260814T100000")) << text;
    EXPECT_TRUE(has(text, "Lisbon:20260814T110000")) << text;
}

TEST_P(EventStoreContract, KeepsAnAllDayEventOnItsDayInAnyZone) {
    const auto calendar = addCalendar();
    auto given = sowing(calendar);
    given.startDate = midnight(2026, 8, 14);
    given.endDate = midnight(2026, 8, 16);
    given.isAllDay = true;
    const auto saved = save(given);
    EXPECT_TRUE(saved.isAllDay);
    EXPECT_EQ(saved.startDate, given.startDate);
    EXPECT_EQ(saved.endDate, given.endDate);
    const auto text = storedText(calendar, saved.externalIdentifier.value());
    EXPECT_TRUE(has(text, "DTSTART;VALUE=DATE:20260814")) << text;
    for (const auto* elsewhere : {"America/New_York", "Pacific/Auckland", "Asia/Kolkata", "UTC"}) {
        const UserTimeZone moved(elsewhere);
        const auto found = event(saved.identifier);
        ASSERT_TRUE(found) << elsewhere;
        EXPECT_TRUE(found->isAllDay);
        EXPECT_EQ(found->startDate, midnight(2026, 8, 14)) << elsewhere;
        EXPECT_EQ(found->endDate, midnight(2026, 8, 16)) << elsewhere;
        EXPECT_EQ(wait(store().events(midnight(2026, 8, 15), midnight(2026, 8, 16), {calendar}, 9)).size(), 1u);
        EXPECT_EQ(wait(store().events(midnight(2026, 8, 13), midnight(2026, 8, 14), {calendar}, 9)).size(), 0u);
        EXPECT_EQ(wait(store().events(midnight(2026, 8, 16), midnight(2026, 8, 17), {calendar}, 9)).size(), 0u);
    }
}

TEST_P(EventStoreContract, MakesWholeDaysOfAnAllDayEvent) {
    const auto calendar = addCalendar();
    auto given = sowing(calendar);
    given.isAllDay = true; // from ten to eleven by Lisbon's clocks
    const auto saved = save(given);
    EXPECT_TRUE(saved.isAllDay);
    EXPECT_EQ(saved.startDate, midnight(2026, 8, 14));
    EXPECT_EQ(saved.endDate, midnight(2026, 8, 15));
    given.endDate = at("2026-08-15T09:00:00Z");
    const auto longer = save(given);
    EXPECT_EQ(longer.startDate, midnight(2026, 8, 14));
    EXPECT_EQ(longer.endDate, midnight(2026, 8, 16));
}

TEST_P(EventStoreContract, TurnsATimedEventIntoAnAllDayOneAndBack) {
    const auto calendar = addCalendar();
    const auto timed = save(fullSowing(calendar));
    auto whole = timed;
    whole.isAllDay = true;
    whole.startDate = midnight(2026, 8, 14);
    whole.endDate = midnight(2026, 8, 15);
    EXPECT_EQ(save(whole), whole);
    EXPECT_EQ(onlyEvent(calendar), whole);
    EXPECT_EQ(save(timed), timed);
    EXPECT_EQ(onlyEvent(calendar), timed);
}

TEST_P(EventStoreContract, GivesDaysOnWhichTheClocksChangeTheirRealLength) {
    const auto calendar = addCalendar();
    const struct {
        const char* start;
        const char* end;
    } days[] = {{"2026-03-29T00:00:00Z", "2026-03-29T23:00:00Z"}, {"2026-10-24T23:00:00Z", "2026-10-26T00:00:00Z"}};
    for (const auto& day : days) {
        auto given = sowing(calendar);
        given.isAllDay = true;
        given.startDate = at(day.start);
        given.endDate = at(day.end);
        const auto saved = save(given);
        EXPECT_EQ(saved.startDate, given.startDate);
        EXPECT_EQ(saved.endDate, given.endDate);
        EXPECT_EQ(event(saved.identifier), saved);
    }
}

TEST_P(EventStoreContract, KeepsAnAllDayEventOnADayWithoutMidnight) {
    const UserTimeZone moved("America/Santiago");
    const auto calendar = addCalendar();
    putEvent(calendar, "day", "DTSTART;VALUE=DATE:20260906\nDTEND;VALUE=DATE:20260907\nSUMMARY:Spring");
    auto found = onlyEvent(calendar);
    EXPECT_EQ(found.startDate, at("2026-09-06T04:00:00Z"));
    EXPECT_EQ(found.endDate, at("2026-09-07T03:00:00Z"));
    found.title = "Changed";
    save(found);
    EXPECT_TRUE(has(storedText(calendar, "day"), "DTSTART;VALUE=DATE:20260906"));
    auto copy = found;
    copy.identifier.clear();
    EXPECT_EQ(save(copy).startDate, found.startDate);
}

TEST_P(EventStoreContract, UnderstandsEveryWayToGiveAnEnd) {
    const auto calendar = addCalendar();
    const struct {
        const char* properties;
        const char* end;
        bool isAllDay;
    } ends[] = {{"DTSTART:20260814T090000Z\nDTEND:20260814T100000Z", "2026-08-14T10:00:00Z", false},
                {"DTSTART:20260814T090000Z\nDURATION:PT90M", "2026-08-14T10:30:00Z", false},
                {"DTSTART:20260814T090000Z", "2026-08-14T09:00:00Z", false},
                {"DTSTART:20260814T090000Z\nDTEND;TZID=Europe/Lisbon:20260814T120000", "2026-08-14T11:00:00Z", false},
                {"DTSTART;VALUE=DATE:20260814\nDTEND;VALUE=DATE:20260816", "2026-08-15T23:00:00Z", true},
                {"DTSTART;VALUE=DATE:20260814", "2026-08-14T23:00:00Z", true},
                {"DTSTART;VALUE=DATE:20260814\nDURATION:P2D", "2026-08-15T23:00:00Z", true},
                // Across the night when the clocks go back: a day by the clock, and a day of 24 hours.
                {"DTSTART;TZID=Europe/Lisbon:20261024T120000\nDURATION:PT24H", "2026-10-25T11:00:00Z", false},
                {"DTSTART;TZID=Europe/Lisbon:20261024T120000\nDURATION:P1D", "2026-10-25T12:00:00Z", false}};
    int number = 0;
    for (const auto& each : ends) {
        const auto uid = "end-" + std::to_string(number++);
        putEvent(calendar, uid, std::string(each.properties) + "\nSUMMARY:Sowing");
        bool isFound = false;
        for (const auto& found : eventsOf(calendar)) {
            if (found.externalIdentifier != uid) continue;
            isFound = true;
            EXPECT_EQ(found.endDate, at(each.end)) << each.properties;
            EXPECT_EQ(found.isAllDay, each.isAllDay) << each.properties;
        }
        EXPECT_TRUE(isFound) << each.properties;
    }
}

TEST_P(EventStoreContract, ReadsAFloatingTimeInTheUsersZone) {
    const auto calendar = addCalendar();
    putEvent(calendar, "floating", "DTSTART:20260814T090000\nDTEND:20260814T100000\nSUMMARY:Breakfast");
    auto found = onlyEvent(calendar);
    EXPECT_EQ(found.startDate, at("2026-08-14T08:00:00Z"));
    EXPECT_FALSE(found.isAllDay);
    {
        const UserTimeZone moved("America/New_York");
        const auto there = event(found.identifier);
        ASSERT_TRUE(there);
        EXPECT_EQ(there->startDate, at("2026-08-14T13:00:00Z"));
        EXPECT_EQ(there->endDate, at("2026-08-14T14:00:00Z"));
        EXPECT_EQ(eventsBetween(calendar, "2026-08-14T13:30:00Z", "2026-08-14T13:31:00Z").size(), 1u);
        EXPECT_EQ(eventsBetween(calendar, "2026-08-14T08:30:00Z", "2026-08-14T08:31:00Z").size(), 0u);
    }
    EXPECT_EQ(eventsBetween(calendar, "2026-08-14T08:30:00Z", "2026-08-14T08:31:00Z").size(), 1u);

    found.title = "Late breakfast";
    found.startDate = at("2026-08-14T09:00:00Z");
    found.endDate = at("2026-08-14T10:30:00Z");
    EXPECT_EQ(save(found), found);
    const auto text = storedText(calendar, "floating");
    EXPECT_TRUE(has(text, "DTSTART:20260814T100000\n")) << text;
    EXPECT_TRUE(has(text, "DTEND:20260814T113000\n")) << text;
}

// America/New_York as programs write it into their files.
inline constexpr const char* newYork = R"(
BEGIN:VTIMEZONE
TZID:America/New_York
BEGIN:DAYLIGHT
TZOFFSETFROM:-0500
TZOFFSETTO:-0400
DTSTART:20070311T020000
RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=2SU
END:DAYLIGHT
BEGIN:STANDARD
TZOFFSETFROM:-0400
TZOFFSETTO:-0500
DTSTART:20071104T020000
RRULE:FREQ=YEARLY;BYMONTH=11;BYDAY=1SU
END:STANDARD
END:VTIMEZONE
)";

TEST_P(EventStoreContract, KeepsTheZoneThatATimeWasGivenIn) {
    const auto calendar = addCalendar();
    put(calendar, newYork + component("VEVENT", "zoned",
                                      "DTSTART;TZID=America/New_York:20260814T090000\n"
                                      "DTEND;TZID=America/New_York:20260814T100000\nSUMMARY:Call"));
    auto found = onlyEvent(calendar);
    EXPECT_EQ(found.startDate, at("2026-08-14T13:00:00Z"));
    EXPECT_EQ(found.endDate, at("2026-08-14T14:00:00Z"));
    found.title = "Long call";
    EXPECT_EQ(save(found), found);
    found.endDate = at("2026-12-14T15:00:00Z"); // in winter
    found.startDate = at("2026-12-14T14:00:00Z");
    EXPECT_EQ(save(found), found);
    EXPECT_EQ(onlyEvent(calendar), found);
    const auto text = storedText(calendar, "zoned");
    EXPECT_TRUE(has(text, "New_York:20261214T090000")) << text;
    EXPECT_TRUE(has(text, "New_York:20261214T100000")) << text;
}

TEST_P(EventStoreContract, KeepsUTC) {
    const auto calendar = addCalendar();
    putEvent(calendar, "utc", "DTSTART:20260814T090000Z\nDTEND:20260814T100000Z\nSUMMARY:Launch");
    auto found = onlyEvent(calendar);
    found.startDate = later(found.startDate, 60);
    found.endDate = later(found.endDate, 60);
    EXPECT_EQ(save(found), found);
    EXPECT_TRUE(has(storedText(calendar, "utc"), "DTSTART:20260814T090100Z"));
}

TEST_P(EventStoreContract, UnderstandsAZoneThatOnlyTheFileKnows) {
    const auto calendar = addCalendar();
    put(calendar, R"(
BEGIN:VTIMEZONE
TZID:Garden Time
BEGIN:STANDARD
TZOFFSETFROM:+0545
TZOFFSETTO:+0545
DTSTART:19700101T000000
END:STANDARD
END:VTIMEZONE
)" + component("VEVENT", "garden", "DTSTART;TZID=Garden Time:20260814T090000\nDURATION:PT1H\nSUMMARY:Sowing"));
    auto found = onlyEvent(calendar);
    EXPECT_EQ(found.startDate, at("2026-08-14T03:15:00Z"));
    found.startDate = later(found.startDate, 3600);
    found.endDate = later(found.endDate, 3600);
    EXPECT_EQ(save(found), found);
    setting->reopen();
    EXPECT_EQ(onlyEvent(calendar), found);
}

TEST_P(EventStoreContract, TakesASkippedTimeAsIfTheClocksHadNotChangedYet) {
    const auto calendar = addCalendar();
    putEvent(calendar, "skipped", "DTSTART;TZID=Europe/Lisbon:20260329T013000\nDURATION:PT1H\nSUMMARY:Night");
    EXPECT_EQ(onlyEvent(calendar).startDate, at("2026-03-29T01:30:00Z"));
    const auto floating = addCalendar("Floating");
    putEvent(floating, "skipped", "DTSTART:20260329T013000\nDURATION:PT1H\nSUMMARY:Night");
    EXPECT_EQ(onlyEvent(floating).startDate, at("2026-03-29T01:30:00Z"));
}

TEST_P(EventStoreContract, TakesATimeThatComesTwiceAsTheFirst) {
    const auto calendar = addCalendar();
    putEvent(calendar, "twice", "DTSTART;TZID=Europe/Lisbon:20261025T013000\nDURATION:PT15M\nSUMMARY:Night");
    EXPECT_EQ(onlyEvent(calendar).startDate, at("2026-10-25T00:30:00Z"));
}

TEST_P(EventStoreContract, KeepsBothHoursOfTheNightWhenTheClocksGoBack) {
    const auto calendar = addCalendar();
    for (const auto* start : {"2026-10-25T00:30:00Z", "2026-10-25T01:30:00Z"}) {
        auto given = sowing(calendar);
        given.startDate = at(start);
        given.endDate = later(given.startDate, 600);
        const auto saved = save(given);
        EXPECT_EQ(saved.startDate, given.startDate);
        EXPECT_EQ(saved.endDate, given.endDate);
        EXPECT_EQ(event(saved.identifier), saved);
    }
}

} // namespace bridge
