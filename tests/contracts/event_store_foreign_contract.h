#pragma once

#include "tests/contracts/event_store_fixture.h"

// Items that other programs made: what has no field here stays as it is.

namespace bridge {

inline const std::string weddingProperties = R"(
DTSTART:20260814T090000Z
DTEND:20260814T100000Z
SUMMARY;LANGUAGE=en:Wedding
LOCATION:Church
DESCRIPTION:Bring rings\, and flowers.
CATEGORIES:FAMILY,PARTY
CLASS:PRIVATE
STATUS:CONFIRMED
TRANSP:OPAQUE
ORGANIZER;CN=Alma:mailto:alma@example.com
ATTENDEE;CN=Ben;ROLE=REQ-PARTICIPANT;PARTSTAT=ACCEPTED;RSVP=TRUE:mailto:ben@example.com
ATTENDEE;CN=Cleo;PARTSTAT=DECLINED:mailto:cleo@example.com
GEO:38.7;-9.1
X-MOON;X-PHASE=waxing:full
X-EMPTY:
BEGIN:VALARM
UID:alarm-one
ACTION:DISPLAY
DESCRIPTION:Leave now
TRIGGER:-PT1H30M
END:VALARM
BEGIN:VALARM
UID:alarm-two
ACTION:AUDIO
TRIGGER;VALUE=DATE-TIME:20260813T180000Z
REPEAT:2
DURATION:PT5M
ATTACH;FMTTYPE=audio/basic:ftp://example.com/bell.aud
END:VALARM
BEGIN:VALARM
UID:alarm-three
ACTION:DISPLAY
DESCRIPTION:Nearly over
TRIGGER;RELATED=END:-PT5M
END:VALARM
)";

TEST_P(EventStoreContract, DescribesAnEventOfAnotherProgram) {
    const auto calendar = addCalendar();
    putEvent(calendar, "wedding@example.com", weddingProperties);
    const auto found = onlyEvent(calendar);
    EXPECT_EQ(found.externalIdentifier, "wedding@example.com");
    EXPECT_EQ(found.calendarID, calendar);
    EXPECT_EQ(found.title, "Wedding");
    EXPECT_EQ(found.location, "Church");
    EXPECT_EQ(found.notes, "Bring rings, and flowers.");
    EXPECT_EQ(found.url, std::nullopt);
    EXPECT_FALSE(found.hasRecurrenceRules);
    const std::vector<Alarm> alarms{Alarm{-5400.0}, Alarm{at("2026-08-13T18:00:00Z")}, Alarm{3300.0}};
    EXPECT_TRUE(std::ranges::is_permutation(found.alarms, alarms));
    EXPECT_EQ(event(found.identifier), found);
}

TEST_P(EventStoreContract, LeavesAlarmsAndAllElseWhenTheTitleChanges) {
    const auto calendar = addCalendar();
    putEvent(calendar, "wedding@example.com", weddingProperties);
    auto changed = onlyEvent(calendar);
    changed.title = "Silver wedding";
    EXPECT_EQ(save(changed), changed);
    const auto text = storedText(calendar, "wedding@example.com");
    EXPECT_EQ(count(text, "BEGIN:VEVENT"), 1u);
    EXPECT_EQ(count(text, "BEGIN:VALARM"), 3u);
    EXPECT_EQ(count(text, "SUMMARY"), 1u);
    for (const auto* part : {":Silver wedding\n",
                             "LOCATION:Church\n",
                             "DESCRIPTION:Bring rings\\, and flowers.\n",
                             "FAMILY",
                             "PARTY",
                             "CLASS:PRIVATE",
                             "STATUS:CONFIRMED",
                             "TRANSP:OPAQUE",
                             "mailto:alma@example.com",
                             "CN=Ben",
                             "ROLE=REQ-PARTICIPANT",
                             "PARTSTAT=ACCEPTED",
                             "RSVP=TRUE",
                             "mailto:ben@example.com",
                             "CN=Cleo",
                             "PARTSTAT=DECLINED",
                             "GEO:38.7",
                             "X-MOON;X-PHASE=waxing:full",
                             "DESCRIPTION:Leave now",
                             "TRIGGER:-PT1H30M",
                             "ACTION:AUDIO",
                             "REPEAT:2",
                             "ftp://example.com/bell.aud",
                             "20260813T180000Z",
                             "RELATED=END"})
        EXPECT_TRUE(has(text, part)) << part << " in\n" << text;
}

TEST_P(EventStoreContract, LeavesAllElseWhenEveryFieldChanges) {
    const auto calendar = addCalendar();
    putEvent(calendar, "wedding@example.com", weddingProperties);
    auto changed = onlyEvent(calendar);
    changed.title = "Silver wedding";
    changed.location = std::nullopt;
    changed.notes = "Changed";
    changed.url = "https://example.com/wedding";
    changed.startDate = at("2026-09-14T09:00:00Z");
    changed.endDate = at("2026-09-14T12:00:00Z");
    changed.alarms = {Alarm{-60.0}};
    EXPECT_EQ(save(changed), changed);
    const auto text = storedText(calendar, "wedding@example.com");
    for (const auto* part : {"FAMILY", "PARTY", "CLASS:PRIVATE", "STATUS:CONFIRMED", "mailto:alma@example.com",
                             "CN=Ben", "mailto:cleo@example.com", "X-MOON;X-PHASE=waxing:full"})
        EXPECT_TRUE(has(text, part)) << part << " in\n" << text;
    for (const auto* part : {"LOCATION", "Leave now", "ACTION:AUDIO"})
        EXPECT_FALSE(has(text, part)) << part << " in\n" << text;
}

TEST_P(EventStoreContract, LeavesExactlyTheAlarmsGiven) {
    const auto calendar = addCalendar();
    putEvent(calendar, "wedding@example.com", weddingProperties);
    auto changed = onlyEvent(calendar);
    changed.alarms = {Alarm{-600.0}};
    EXPECT_EQ(save(changed), changed);
    EXPECT_EQ(onlyEvent(calendar).alarms, changed.alarms);
    EXPECT_EQ(count(storedText(calendar, "wedding@example.com"), "BEGIN:VALARM"), 1u);
    changed.alarms.clear();
    EXPECT_EQ(save(changed), changed);
    EXPECT_EQ(count(storedText(calendar, "wedding@example.com"), "BEGIN:VALARM"), 0u);
}

TEST_P(EventStoreContract, TakesEverythingAlongWhenAnEventMoves) {
    const auto from = addCalendar("From");
    const auto to = addCalendar("To");
    putEvent(from, "wedding@example.com", weddingProperties);
    auto moving = onlyEvent(from);
    moving.calendarID = to;
    save(moving);
    EXPECT_EQ(setting->stored(from, "wedding@example.com"), "");
    const auto text = storedText(to, "wedding@example.com");
    EXPECT_EQ(count(text, "BEGIN:VALARM"), 3u);
    for (const auto* part : {"CN=Ben", "mailto:cleo@example.com", "X-MOON;X-PHASE=waxing:full", "FAMILY", "PARTY"})
        EXPECT_TRUE(has(text, part)) << part << " in\n" << text;
}

TEST_P(EventStoreContract, LeavesNothingOfARemovedEvent) {
    const auto calendar = addCalendar();
    putEvent(calendar, "wedding@example.com", weddingProperties);
    wait(store().removeEvent(onlyEvent(calendar).identifier));
    EXPECT_EQ(setting->stored(calendar, "wedding@example.com"), "");
}

TEST_P(EventStoreContract, DescribesABareEvent) {
    const auto calendar = addCalendar();
    putEvent(calendar, "bare", "DTSTART:20260814T090000Z");
    const auto found = onlyEvent(calendar);
    EXPECT_EQ(found.title, std::nullopt);
    EXPECT_EQ(found.location, std::nullopt);
    EXPECT_EQ(found.notes, std::nullopt);
    EXPECT_EQ(found.url, std::nullopt);
    EXPECT_TRUE(found.alarms.empty());
}

TEST_P(EventStoreContract, TakesOddUIDs) {
    const auto calendar = addCalendar();
    const std::string uids[] = {"a/b//c",           "a b",         "🦊",   "a%2Fb",
                                "20260814T090000Z", "{1234-5678}", "a'b\"c", std::string(500, 'u')};
    for (const auto& uid : uids) {
        putEvent(calendar, uid, "DTSTART:20260814T090000Z\nDURATION:PT1H\nRRULE:FREQ=DAILY;COUNT=2\nSUMMARY:Odd");
        auto occurrences = eventsOf(calendar);
        ASSERT_EQ(occurrences.size(), 2u) << uid;
        for (auto& each : occurrences) {
            EXPECT_EQ(each.externalIdentifier, uid);
            EXPECT_EQ(event(each.identifier), each) << uid;
            each.title = "Changed";
            EXPECT_EQ(save(each).title, "Changed") << uid;
        }
        for (const auto& each : occurrences)
            wait(store().removeEvent(each.identifier));
        EXPECT_TRUE(eventsOf(calendar).empty()) << uid;
    }
}

} // namespace bridge
