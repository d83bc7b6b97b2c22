#include "tests/adapters/ical/calendar_text.h"

#include "tests/support/time_zone.h"

#include <gmock/gmock.h>
#include <thread>

namespace bridge {

using testing::ElementsAre;

namespace {

std::string vtimezone(const std::string& tzid, const std::vector<std::string>& observances) {
    return "BEGIN:VTIMEZONE\r\nTZID:" + tzid + "\r\n" + lines(observances) + "END:VTIMEZONE\r\n";
}

// An hour and a half ahead, two and a half in summer.
const std::vector<std::string> summerTime{
    "BEGIN:STANDARD",     "DTSTART:19701025T030000", "RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU",
    "TZOFFSETFROM:+0230", "TZOFFSETTO:+0130",        "END:STANDARD",
    "BEGIN:DAYLIGHT",     "DTSTART:19700329T020000", "RRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU",
    "TZOFFSETFROM:+0130", "TZOFFSETTO:+0230",        "END:DAYLIGHT"};

std::vector<std::string> startsIn(const std::string& tzid, const std::string& local,
                                  const std::string& definition = "") {
    return starts(CalendarObject::parse(vcalendar(definition + vevent({"DTSTART;TZID=" + tzid + ":" + local}))));
}

} // namespace

TEST(ItemZone, OfTheDatabaseIsKnownByItsName) {
    EXPECT_THAT(startsIn("Europe/Berlin", "20260814T090000"), ElementsAre("2026-08-14T07:00:00Z"));
    EXPECT_THAT(startsIn("Asia/Calcutta", "20260814T090000"), ElementsAre("2026-08-14T03:30:00Z"));
    EXPECT_THAT(startsIn("Europe/Berlin", "20600814T090000"), ElementsAre("2060-08-14T07:00:00Z"));
}

TEST(ItemZone, OfTheDatabaseIsWhatTheSystemSaysOfIt) {
    EXPECT_THAT(startsIn("Europe/Berlin", "20260814T090000", vtimezone("Europe/Berlin", summerTime)),
                ElementsAre("2026-08-14T07:00:00Z"));
}

TEST(ItemZone, IsFoundBehindAPrefix) {
    for (const char* tzid : {"/freeassociation.sourceforge.net/Europe/Berlin", "/citadel.org/20190914_1/Europe/Berlin",
                             "/example.org/20260101/Europe/Berlin"})
        EXPECT_THAT(startsIn(tzid, "20260814T090000"), ElementsAre("2026-08-14T07:00:00Z")) << tzid;
    EXPECT_THAT(startsIn("/example.org/America/Argentina/Ushuaia", "20260814T090000"),
                ElementsAre("2026-08-14T12:00:00Z"));
}

TEST(ItemZone, OfWindowsIsKnown) {
    EXPECT_THAT(startsIn("W. Europe Standard Time", "20260814T090000"), ElementsAre("2026-08-14T07:00:00Z"));
    EXPECT_THAT(startsIn("\"Pacific Standard Time\"", "20260814T090000"), ElementsAre("2026-08-14T16:00:00Z"));
}

TEST(ItemZone, CanBeDefinedInTheFile) {
    const auto farm = vtimezone("Farm", summerTime);
    EXPECT_THAT(startsIn("Farm", "20260114T090000", farm), ElementsAre("2026-01-14T07:30:00Z"));
    EXPECT_THAT(startsIn("Farm", "20260814T090000", farm), ElementsAre("2026-08-14T06:30:00Z"));
    EXPECT_THAT(startsIn("Farm", "20600814T090000", farm), ElementsAre("2060-08-14T06:30:00Z"));
    EXPECT_THAT(startsIn("Farm", "90000814T090000", farm), ElementsAre("9000-08-14T06:30:00Z"));
    // The night the clocks go back, 02:30 comes twice.
    EXPECT_THAT(startsIn("Farm", "20261025T023000", farm), ElementsAre("2026-10-25T00:00:00Z"));
    EXPECT_THAT(startsIn("Farm", "20260329T023000", farm), ElementsAre("2026-03-29T01:00:00Z"));
}

TEST(ItemZone, CanEndItsSummerTime) {
    auto observances = summerTime;
    observances[2] += ";UNTIL=20101031T003000Z";
    observances[8] += ";UNTIL=20100328T003000Z";
    EXPECT_THAT(startsIn("Farm", "20100814T090000", vtimezone("Farm", observances)),
                ElementsAre("2010-08-14T06:30:00Z"));
    EXPECT_THAT(startsIn("Farm", "20260814T090000", vtimezone("Farm", observances)),
                ElementsAre("2026-08-14T07:30:00Z"));
}

TEST(ItemZone, ThatMeansNothingFloats) {
    const std::string senseless[]{"", vtimezone("Farm", {}),
                                  vtimezone("Farm", {"BEGIN:STANDARD", "TZOFFSETTO:+0100", "END:STANDARD"})};
    for (const auto& definition : senseless)
        EXPECT_THAT(startsIn("Farm", "20260814T090000", definition), ElementsAre("2026-08-14T09:00:00 local"))
            << definition;
}

TEST(ItemZone, ThatIsUnknownStaysWithTheEventWhenItMoves) {
    const UserTimeZone utc("UTC");
    auto object = parseEvent({"DTSTART;TZID=Farm:20260814T090000", "DTEND;TZID=Farm:20260814T100000"});
    const auto occurrence = object.occurrence("").value();
    auto event = object.describe(occurrence);
    event.startDate.secondsSince1970 -= 3600;
    object.change(occurrence, event, now);
    EXPECT_THAT(object.text(), testing::HasSubstr("DTSTART;TZID=Farm:20260814T080000"));
}

TEST(ItemZone, OfHostileDefinitionsTakesNoTime) {
    const auto zone = [](const std::string& rule) {
        return vtimezone("Farm", {"BEGIN:STANDARD", "DTSTART:19700101T000000", "TZOFFSETFROM:+0100", "TZOFFSETTO:+0100",
                                  rule, "END:STANDARD"});
    };
    for (const char* rule : {"RRULE:FREQ=SECONDLY", "RRULE:FREQ=DAILY", "RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30",
                             "RRULE:FREQ=YEARLY;BYHOUR=1,2,3,4;BYMINUTE=1,2,3,4,5;BYSECOND=1,2,3,4,5,6,7,8"})
        startsIn("Farm", "20260814T090000", zone(rule));
    for (const char* tzid : {"../../../../dev/zero", "/dev/stdin", "Europe/../Europe/Nowhere", "."})
        EXPECT_THAT(startsIn(tzid, "20260814T090000"), ElementsAre("2026-08-14T09:00:00 local")) << tzid;
}

TEST(ItemZone, CanBeAskedForByManyThreads) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([i] {
            const auto farm = vtimezone("Farm", summerTime);
            for (int round = 0; round < 10; ++round) {
                const auto object = CalendarObject::parse(vcalendar(
                    farm + vevent({"DTSTART;TZID=Farm:20260814T090000", "RRULE:FREQ=DAILY;COUNT=5",
                                   "RDATE;TZID=Asia/Tokyo:20260901T090000", "SUMMARY:" + std::to_string(i)})));
                EXPECT_EQ(starts(object).size(), 6U);
                EXPECT_EQ(starts(CalendarObject::parse(object.text())).size(), 6U);
            }
        });
    for (auto& thread : threads)
        thread.join();
}

} // namespace bridge
