#include "tests/adapters/ical/calendar_text.h"

#include "tests/support/time_zone.h"

#include <gmock/gmock.h>

namespace bridge {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

std::vector<std::string> ids(const CalendarObject& object) {
    std::vector<std::string> all;
    for (const auto& occurrence : object.occurrences(earliestDate, latestDate, 100))
        all.push_back(occurrence.recurrenceID);
    return all;
}

} // namespace

TEST(Series, KeepsItsTimeOfDayWhenClocksChange) {
    const auto object = parseEvent({"DTSTART;TZID=Europe/Berlin:20261024T090000", "RRULE:FREQ=DAILY;COUNT=3"});
    EXPECT_THAT(starts(object), ElementsAre("2026-10-24T07:00:00Z", "2026-10-25T08:00:00Z", "2026-10-26T08:00:00Z"));
    EXPECT_THAT(ids(object), ElementsAre("20261024T090000", "20261025T090000", "20261026T090000"));
}

TEST(Series, InUTCKeepsItsMoment) {
    const auto object = parseEvent({"DTSTART:20261024T070000Z", "RRULE:FREQ=DAILY;COUNT=2"});
    EXPECT_THAT(ids(object), ElementsAre("20261024T070000Z", "20261025T070000Z"));
}

// 02:30 is skipped on the 29th of March and comes twice on the 25th of October.
TEST(Series, TakesASkippedTimeAnHourLaterAndTheFirstOfTwo) {
    const auto spring = parseEvent({"DTSTART;TZID=Europe/Berlin:20260328T023000", "RRULE:FREQ=DAILY;COUNT=3"});
    EXPECT_THAT(starts(spring), ElementsAre("2026-03-28T01:30:00Z", "2026-03-29T01:30:00Z", "2026-03-30T00:30:00Z"));
    const auto autumn = parseEvent({"DTSTART;TZID=Europe/Berlin:20261024T023000", "RRULE:FREQ=DAILY;COUNT=3"});
    EXPECT_THAT(starts(autumn), ElementsAre("2026-10-24T00:30:00Z", "2026-10-25T00:30:00Z", "2026-10-26T01:30:00Z"));
}

TEST(Series, OfDaysIsTheUsersDays) {
    const auto object = parseEvent({"DTSTART;VALUE=DATE:20260328", "RRULE:FREQ=DAILY;COUNT=2"});
    EXPECT_THAT(starts(object), ElementsAre("2026-03-28T00:00:00 local", "2026-03-29T00:00:00 local"));
    const UserTimeZone berlin("Europe/Berlin");
    const auto event = object.describe(object.occurrence("20260329").value());
    EXPECT_EQ(event.startDate, at("2026-03-28T23:00:00Z"));
    EXPECT_EQ(event.endDate, at("2026-03-29T22:00:00Z"));
    EXPECT_TRUE(event.hasRecurrenceRules);
}

TEST(Series, ThatFloatsIsAskedForInTheUsersZone) {
    const auto object = parseEvent({"DTSTART:20260814T090000", "RRULE:FREQ=DAILY;COUNT=2"});
    const UserTimeZone auckland("Pacific/Auckland");
    EXPECT_THAT(starts(object, "2026-08-13T21:00:00Z", "2026-08-13T21:00:01Z"),
                ElementsAre("2026-08-14T09:00:00 local"));
    EXPECT_THAT(starts(object, "2026-08-14T00:00:00Z", "2026-08-14T20:59:59Z"), IsEmpty());
}

TEST(Series, EndsWithUntilInWhateverFormItIs) {
    const std::string start = "DTSTART;TZID=Europe/Berlin:20260814T090000";
    EXPECT_THAT(starts(parseEvent({start, "RRULE:FREQ=DAILY;UNTIL=20260815T070000Z"})), SizeIs(2));
    EXPECT_THAT(starts(parseEvent({start, "RRULE:FREQ=DAILY;UNTIL=20260815T065959Z"})), SizeIs(1));
    EXPECT_THAT(starts(parseEvent({start, "RRULE:FREQ=DAILY;UNTIL=20260815T090000"})), SizeIs(2));
    EXPECT_THAT(starts(parseEvent({start, "RRULE:FREQ=DAILY;UNTIL=20260815"})), SizeIs(2));
    EXPECT_THAT(starts(parseEvent({"DTSTART;VALUE=DATE:20260814", "RRULE:FREQ=DAILY;UNTIL=20260815T000000Z"})),
                SizeIs(2));
}

TEST(Series, HasFurtherDatesOfAllKinds) {
    const auto object = parseEvent({"DTSTART;TZID=Europe/Berlin:20260814T090000", "DURATION:PT1H",
                                    "RDATE;TZID=Europe/Berlin:20260820T100000,20260821T100000",
                                    "RDATE:20260822T080000Z", "RDATE;VALUE=DATE:20260823",
                                    "RDATE;VALUE=PERIOD:20260824T070000Z/20260824T100000Z,20260825T070000Z/PT5M"});
    EXPECT_THAT(ids(object), ElementsAre("20260814T090000", "20260820T100000", "20260821T100000", "20260822T100000",
                                         "20260823T090000", "20260824T090000", "20260825T090000"));
    EXPECT_EQ(show(object.occurrence("20260824T090000")->end), "2026-08-24T10:00:00Z");
    EXPECT_EQ(show(object.occurrence("20260825T090000")->end), "2026-08-25T07:05:00Z");
    EXPECT_EQ(show(object.occurrence("20260822T100000")->end), "2026-08-22T09:00:00Z");
    EXPECT_TRUE(object.isRecurring());
    EXPECT_FALSE(object.describe(object.occurrence("").value()).hasRecurrenceRules);
}

TEST(Series, LeavesOutExcludedDatesInWhateverFormTheyAre) {
    const std::string start = "DTSTART;TZID=Europe/Berlin:20260814T090000";
    const std::string rule = "RRULE:FREQ=DAILY;COUNT=3";
    for (const char* excluded :
         {"EXDATE;TZID=Europe/Berlin:20260815T090000", "EXDATE:20260815T070000Z", "EXDATE;VALUE=DATE:20260815",
          "EXDATE;TZID=America/New_York:20260815T030000", "EXDATE:20260815T090000"})
        EXPECT_THAT(ids(parseEvent({start, rule, excluded})), ElementsAre("20260814T090000", "20260816T090000"))
            << excluded;
    EXPECT_THAT(ids(parseEvent({start, rule, "EXRULE:FREQ=DAILY;INTERVAL=2"})), ElementsAre("20260815T090000"));
    EXPECT_THAT(ids(parseEvent({"DTSTART;VALUE=DATE:20260814", rule, "EXDATE;VALUE=DATE:20260815"})),
                ElementsAre("20260814", "20260816"));
}

TEST(Series, CanHaveSeveralRules) {
    const auto object =
        parseEvent({"DTSTART:20260814T090000Z", "RRULE:FREQ=DAILY;COUNT=3", "RRULE:FREQ=DAILY;INTERVAL=2;COUNT=3"});
    EXPECT_THAT(ids(object),
                ElementsAre("20260814T090000Z", "20260815T090000Z", "20260816T090000Z", "20260818T090000Z"));
}

TEST(Series, CountsTheExcludedToo) {
    EXPECT_THAT(ids(parseEvent({"DTSTART:20260814T090000Z", "RRULE:FREQ=DAILY;COUNT=3", "EXDATE:20260814T090000Z"})),
                ElementsAre("20260815T090000Z", "20260816T090000Z"));
}

TEST(Series, HasNothingLeftWhenAllIsExcluded) {
    const auto object = parseEvent({"DTSTART:20260814T090000Z", "RRULE:FREQ=DAILY;COUNT=1", "EXDATE:20260814T090000Z"});
    EXPECT_THAT(starts(object), IsEmpty());
    EXPECT_FALSE(object.span());
}

TEST(Series, OfLeapDaysSkipsTheOtherYears) {
    EXPECT_THAT(starts(parseEvent({"DTSTART;VALUE=DATE:20240229", "RRULE:FREQ=YEARLY;COUNT=3"})),
                ElementsAre("2024-02-29T00:00:00 local", "2028-02-29T00:00:00 local", "2032-02-29T00:00:00 local"));
}

TEST(Series, WithoutEndIsFoundFarAwayAtOnce) {
    const auto object =
        parseEvent({"DTSTART;TZID=Europe/Berlin:20260105T090000", "DURATION:PT1H", "RRULE:FREQ=WEEKLY;BYDAY=MO,WE"});
    EXPECT_THAT(starts(object, "2526-07-01T00:00:00Z", "2526-07-08T00:00:00Z"),
                ElementsAre("2526-07-01T07:00:00Z", "2526-07-03T07:00:00Z"));
    EXPECT_THAT(starts(object, "2026-01-01T00:00:00Z", "2126-01-01T00:00:00Z", 20'000), SizeIs(10'435));
    EXPECT_EQ(show(object.span()->start), "2026-01-05T08:00:00Z");
    EXPECT_FALSE(object.span()->end);
}

TEST(Series, ThatStartsBeyondLibicalsYearsGoesOn) {
    EXPECT_THAT(ids(parseEvent({"DTSTART:90000228T090000Z", "RRULE:FREQ=DAILY;COUNT=3"})),
                ElementsAre("90000228T090000Z", "90000301T090000Z", "90000302T090000Z"));
    EXPECT_THAT(ids(parseEvent({"DTSTART;TZID=Europe/Berlin:28000101T090000", "RRULE:FREQ=YEARLY;UNTIL=28020102"})),
                ElementsAre("28000101T090000", "28010101T090000", "28020101T090000"));
}

TEST(Series, IsRightInTheYearOne) {
    EXPECT_THAT(ids(parseEvent({"DTSTART;VALUE=DATE:00010101", "RRULE:FREQ=WEEKLY;COUNT=2"})),
                ElementsAre("00010101", "00010108"));
}

TEST(Series, EndsWithItsLastOccurrence) {
    const auto counted = parseEvent({"DTSTART:20260814T090000Z", "DURATION:PT1H", "RRULE:FREQ=DAILY;COUNT=10"});
    EXPECT_EQ(show(counted.span()->end.value()), "2026-08-23T10:00:00Z");
    const auto until =
        parseEvent({"DTSTART:20260814T090000Z", "DURATION:PT1H", "RRULE:FREQ=YEARLY;UNTIL=22000101T000000Z"});
    EXPECT_EQ(show(until.span()->end.value()), "2199-08-14T10:00:00Z");
}

TEST(Series, LongerThanAWeekIsFoundWhileItTakesPlace) {
    const auto object = parseEvent({"DTSTART;VALUE=DATE:20260801", "DTEND;VALUE=DATE:20260815", "RRULE:FREQ=MONTHLY"});
    const UserTimeZone utc("UTC");
    EXPECT_THAT(starts(object, "2027-03-14T12:00:00Z", "2027-03-14T13:00:00Z"),
                ElementsAre("2027-03-01T00:00:00 local"));
    EXPECT_THAT(starts(object, "2027-03-15T00:00:00Z", "2027-03-15T13:00:00Z"), IsEmpty());
}

TEST(Series, StopsAtTheLimit) {
    const auto object = parseEvent({"DTSTART:20260814T090000Z", "RRULE:FREQ=DAILY"});
    EXPECT_THAT(starts(object, "2030-01-01T00:00:00Z", "2040-01-01T00:00:00Z", 2),
                ElementsAre("2030-01-01T09:00:00Z", "2030-01-02T09:00:00Z"));
    EXPECT_THAT(starts(object, "2030-01-01T00:00:00Z", "2040-01-01T00:00:00Z", 0), IsEmpty());
}

TEST(Series, TakesBoundedWorkWhateverItsRule) {
    for (const char* rule :
         {"FREQ=SECONDLY", "FREQ=SECONDLY;COUNT=1000000000", "FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30",
          "FREQ=MINUTELY;BYMONTH=2;BYMONTHDAY=30", "FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30",
          "FREQ=MONTHLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30",
          "FREQ=WEEKLY;BYMONTH=2;BYDAY=MO;BYSETPOS=7", "FREQ=YEARLY;INTERVAL=32767", "FREQ=DAILY;INTERVAL=32767",
          "FREQ=YEARLY;BYHOUR=1,2,3,4,5,6;BYMINUTE=1,2,3,4,5,6,7,8,9,10;BYSECOND=1,2,3,4,5,6,7,8,9,10;COUNT=1000000",
          "FREQ=YEARLY;BYWEEKNO=53;BYMONTH=7", "FREQ=YEARLY;UNTIL=99991231T000000Z"}) {
        const auto object = parseEvent({"DTSTART:20260814T090000Z", std::string("RRULE:") + rule});
        EXPECT_EQ(starts(object).front(), "2026-08-14T09:00:00Z") << rule;
        object.occurrences(at("2500-01-01T00:00:00Z"), latestDate, 10);
        object.occurrence("25000101T000000Z");
        object.span();
    }
}

TEST(Series, ByTheHourWithAnIntervalKeepsItsStepFarAway) {
    // 7 hours are no part of a day: from the first of January 09:00 on, 10,000 steps come to one in the night.
    const auto object = parseEvent({"DTSTART:20260101T090000Z", "RRULE:FREQ=HOURLY;INTERVAL=7"});
    EXPECT_TRUE(object.occurrence("20331227T010000Z"));
    EXPECT_FALSE(object.occurrence("20331227T020000Z"));
}

TEST(Series, KnowsItsOccurrencesByTheirIdAlone) {
    const auto object = parseEvent({"DTSTART;TZID=Europe/Berlin:20260814T090000", "RRULE:FREQ=DAILY"});
    EXPECT_EQ(show(object.occurrence("20270101T090000")->start), "2027-01-01T08:00:00Z");
    EXPECT_EQ(object.occurrence("")->recurrenceID, "20260814T090000");
    for (const char* id : {"20260813T090000", "20270101T100000", "20270101T090000Z", "20270101", "x", "20270230T090000",
                           "20270101T0900000000000000000", "99999999T999999"})
        EXPECT_FALSE(object.occurrence(id)) << id;
}

TEST(Series, WithARuleThatMeansNothingIsItsStart) {
    for (const char* rule :
         {"RRULE:FREQ=SOMETIMES", "RRULE:", "RRULE:COUNT=3", "RRULE:FREQ=DAILY;COUNT=-3", "RRULE:FREQ=DAILY;BYDAY=XX"})
        EXPECT_THAT(starts(parseEvent({"DTSTART:20260814T090000Z", rule})), ElementsAre("2026-08-14T09:00:00Z"))
            << rule;
}

} // namespace bridge
