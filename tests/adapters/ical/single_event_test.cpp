#include "tests/adapters/ical/calendar_text.h"

#include "tests/support/time_zone.h"

#include <gmock/gmock.h>

namespace bridge {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

CalendarEvent sowing() {
    CalendarEvent event;
    event.title = "Sowing";
    event.startDate = at("2026-08-14T07:00:00Z");
    event.endDate = at("2026-08-14T08:30:00Z");
    return event;
}

CalendarEvent only(const CalendarObject& object) {
    return object.describe(object.occurrence("").value());
}

} // namespace

TEST(SingleEvent, CanBeMovedIntoAnyYearThatHasFourDigits) {
    for (const int64_t seconds : {int64_t{-62'000'000'000}, int64_t{32'600'000'000}, int64_t{200'000'000'000}}) {
        CalendarEvent event;
        event.title = "Far away";
        event.startDate = Date{seconds};
        event.endDate = Date{seconds + 3600};
        event.alarms.push_back({Date{seconds - 60}});
        const auto object = CalendarObject::parse(CalendarObject::create(event, now).text());
        const auto read = object.describe(object.occurrence("").value());
        EXPECT_EQ(read.startDate, event.startDate);
        EXPECT_EQ(read.endDate, event.endDate);
        EXPECT_EQ(read.alarms, event.alarms);
    }
}

TEST(SingleEvent, ThatIsCreatedIsReadBackAsItWas) {
    const UserTimeZone berlin("Europe/Berlin");
    auto event = sowing();
    event.location = "Field 7";
    event.notes = "Rye;\nand, \\ clover";
    event.url = "https://example.org/?a=1,2;b";
    event.alarms = {{-900.0}, {Date{1786690800}}};
    const auto object = CalendarObject::parse(CalendarObject::create(event, now).text());
    auto read = only(object);
    EXPECT_EQ(read.externalIdentifier, object.uid());
    read.externalIdentifier.reset();
    EXPECT_EQ(read, event);
    EXPECT_FALSE(object.isRecurring());
    EXPECT_THAT(object.text(), HasSubstr("DTSTART;TZID=Europe/Berlin:20260814T090000"));
}

TEST(SingleEvent, IsWrittenInUTCWhereTheUserIsThere) {
    const UserTimeZone utc("UTC");
    EXPECT_THAT(CalendarObject::create(sowing(), now).text(), HasSubstr("DTSTART:20260814T070000Z"));
}

TEST(SingleEvent, OfAllDayIsWrittenAsDays) {
    const UserTimeZone berlin("Europe/Berlin");
    auto event = sowing();
    event.isAllDay = true;
    event.startDate = at("2026-08-13T22:00:00Z");
    event.endDate = at("2026-08-15T22:00:00Z");
    const auto object = CalendarObject::create(event, now);
    EXPECT_THAT(object.text(), HasSubstr("DTSTART;VALUE=DATE:20260814"));
    EXPECT_THAT(object.text(), HasSubstr("DTEND;VALUE=DATE:20260816"));
    EXPECT_EQ(only(object).startDate, event.startDate);
    EXPECT_EQ(only(object).endDate, event.endDate);
    EXPECT_TRUE(only(object).isAllDay);
}

TEST(SingleEvent, OfAllDayIsOnTheSameDayWhereverTheUserGoes) {
    const auto object = parseEvent({"DTSTART;VALUE=DATE:20260814"});
    const UserTimeZone auckland("Pacific/Auckland");
    EXPECT_EQ(only(object).startDate, at("2026-08-13T12:00:00Z"));
    EXPECT_EQ(only(object).endDate, at("2026-08-14T12:00:00Z"));
}

TEST(SingleEvent, WithoutEndTakesADayOrNoTime) {
    const UserTimeZone utc("UTC");
    EXPECT_EQ(only(parseEvent({"DTSTART;VALUE=DATE:20260814"})).endDate, at("2026-08-15T00:00:00Z"));
    EXPECT_EQ(only(parseEvent({"DTSTART:20260814T070000Z"})).endDate, at("2026-08-14T07:00:00Z"));
}

TEST(SingleEvent, CanSayHowLongItTakesInstead) {
    const UserTimeZone utc("UTC");
    EXPECT_EQ(only(parseEvent({"DTSTART:20260814T070000Z", "DURATION:P1DT1H"})).endDate, at("2026-08-15T08:00:00Z"));
    EXPECT_EQ(only(parseEvent({"DTSTART;VALUE=DATE:20260814", "DURATION:P1W"})).endDate, at("2026-08-21T00:00:00Z"));
}

// 24 hours on the wall are 25 hours in the night Berlin's clocks go back.
TEST(SingleEvent, OfADayByDurationEndsAtTheSameTimeOfDay) {
    const auto start = std::string("DTSTART;TZID=Europe/Berlin:20261024T120000");
    EXPECT_EQ(only(parseEvent({start, "DURATION:P1D"})).endDate, at("2026-10-25T11:00:00Z"));
    EXPECT_EQ(only(parseEvent({start, "DURATION:PT24H"})).endDate, at("2026-10-25T10:00:00Z"));
}

TEST(SingleEvent, ThatEndsBeforeItStartsEndsWhenItStarts) {
    const auto event = only(parseEvent({"DTSTART:20260814T070000Z", "DTEND:20260814T060000Z"}));
    EXPECT_EQ(event.endDate, event.startDate);
}

TEST(SingleEvent, WithoutStartNeverHappens) {
    const auto object = parseEvent({"SUMMARY:Some day"});
    EXPECT_THAT(starts(object), IsEmpty());
    EXPECT_FALSE(object.occurrence(""));
    EXPECT_FALSE(object.span());
}

TEST(SingleEvent, ThatIsCancelledDoesNotHappen) {
    EXPECT_THAT(starts(parseEvent({"DTSTART:20260814T070000Z", "STATUS:CANCELLED"})), IsEmpty());
}

TEST(SingleEvent, IsFoundWhereItSharesTime) {
    const auto object = parseEvent({"DTSTART:20260814T070000Z", "DTEND:20260814T080000Z"});
    EXPECT_THAT(starts(object, "2026-08-14T06:00:00Z", "2026-08-14T07:00:00Z"), IsEmpty());
    EXPECT_THAT(starts(object, "2026-08-14T06:00:00Z", "2026-08-14T07:00:01Z"), ElementsAre("2026-08-14T07:00:00Z"));
    EXPECT_THAT(starts(object, "2026-08-14T07:59:59Z", "2026-08-14T09:00:00Z"), ElementsAre("2026-08-14T07:00:00Z"));
    EXPECT_THAT(starts(object, "2026-08-14T08:00:00Z", "2026-08-14T09:00:00Z"), IsEmpty());
}

TEST(SingleEvent, WithoutDurationIsFoundAtItsStart) {
    const auto object = parseEvent({"DTSTART:20260814T070000Z"});
    EXPECT_THAT(starts(object, "2026-08-14T07:00:00Z", "2026-08-14T07:00:01Z"), ElementsAre("2026-08-14T07:00:00Z"));
    EXPECT_THAT(starts(object, "2026-08-14T06:00:00Z", "2026-08-14T07:00:00Z"), IsEmpty());
}

TEST(SingleEvent, ChangesOnlyWhatDiffers) {
    auto object =
        parseEvent({"DTSTART;TZID=America/New_York:20260814T090000", "DURATION:PT1H", "SUMMARY;LANGUAGE=en:Sowing",
                    "X-FIELD;X-ROW=3:seven", "ATTENDEE;CN=Ada:mailto:ada@example.org", "CATEGORIES:Work,Field",
                    "BEGIN:VALARM", "ACTION:EMAIL", "TRIGGER;RELATED=END:-PT5M", "SUMMARY:Soon",
                    "DESCRIPTION:Done soon", "ATTENDEE:mailto:ada@example.org", "X-SEEN:1", "END:VALARM"});
    const auto occurrence = object.occurrence("").value();
    auto event = object.describe(occurrence);
    EXPECT_THAT(event.alarms, ElementsAre(Alarm{3300.0}));
    event.title = "Harvest";
    EXPECT_EQ(object.change(occurrence, event, now), 0U);
    const auto text = object.text();
    EXPECT_THAT(text, HasSubstr("SUMMARY;LANGUAGE=en:Harvest"));
    for (const char* kept : {"DTSTART;TZID=America/New_York:20260814T090000", "DURATION:PT1H", "X-FIELD;X-ROW=3:seven",
                             "ATTENDEE;CN=Ada:mailto:ada@example.org", "CATEGORIES:Work\r\nCATEGORIES:Field",
                             "ACTION:EMAIL", "TRIGGER;RELATED=END:-PT5M", "X-SEEN:1"})
        EXPECT_THAT(text, HasSubstr(kept));
    EXPECT_THAT(text, HasSubstr("DTSTAMP:20260814T112841Z"));
    EXPECT_THAT(text, HasSubstr("LAST-MODIFIED:20260814T112841Z"));
    EXPECT_THAT(text, Not(HasSubstr("SEQUENCE")));
}

TEST(SingleEvent, KeepsValuesThatNobodyKnows) {
    auto object = parseEvent({"DTSTART:20260814T070000Z", "SUMMARY:  Sowing  ", "STATUS:X-POSTPONED", "CLASS:X-FAMILY",
                              "TRANSP:X-SOMEWHAT", "BEGIN:VALARM", "ACTION:X-RING", "TRIGGER:-PT5M", "END:VALARM"});
    const auto occurrence = object.occurrence("").value();
    auto event = object.describe(occurrence);
    event.location = "Field 7";
    object.change(occurrence, event, now);
    for (const char* kept :
         {"SUMMARY:  Sowing  \r\n", "STATUS:X-POSTPONED", "CLASS:X-FAMILY", "TRANSP:X-SOMEWHAT", "ACTION:X-RING"})
        EXPECT_THAT(object.text(), HasSubstr(kept));
}

TEST(SingleEvent, ThatIsNotChangedStaysAsItIs) {
    auto object = parseEvent({"DTSTART:20260814T070000Z", "SUMMARY:Sowing"});
    const auto before = object.text();
    const auto occurrence = object.occurrence("").value();
    object.change(occurrence, object.describe(occurrence), now);
    EXPECT_EQ(object.text(), before);
}

TEST(SingleEvent, ThatIsMovedStaysInItsZone) {
    auto object =
        parseEvent({"DTSTART;TZID=America/New_York:20260814T090000", "DTEND;TZID=Europe/Berlin:20260814T160000"});
    const auto occurrence = object.occurrence("").value();
    auto event = object.describe(occurrence);
    event.startDate.secondsSince1970 += 3600;
    event.endDate.secondsSince1970 += 3605;
    object.change(occurrence, event, now);
    EXPECT_THAT(object.text(), HasSubstr("DTSTART;TZID=America/New_York:20260814T100000"));
    EXPECT_THAT(object.text(), HasSubstr("DTEND;TZID=Europe/Berlin:20260814T170005"));
    EXPECT_THAT(object.text(), HasSubstr("SEQUENCE:1"));
    EXPECT_EQ(only(object).startDate, event.startDate);
    EXPECT_EQ(only(object).endDate, event.endDate);
}

TEST(SingleEvent, ThatFloatsGoesOnFloating) {
    const UserTimeZone tokyo("Asia/Tokyo");
    auto object = parseEvent({"DTSTART:20260814T090000", "DTEND:20260814T100000"});
    const auto occurrence = object.occurrence("").value();
    auto event = object.describe(occurrence);
    EXPECT_EQ(event.startDate, at("2026-08-14T00:00:00Z"));
    event.startDate = at("2026-08-13T23:00:00Z");
    object.change(occurrence, event, now);
    EXPECT_THAT(object.text(), HasSubstr("DTSTART:20260814T080000\r\n"));
    EXPECT_THAT(object.text(), HasSubstr("DTEND:20260814T100000\r\n"));
}

TEST(SingleEvent, CanBecomeAllDayAndBack) {
    const UserTimeZone berlin("Europe/Berlin");
    auto object = parseEvent({"DTSTART:20260814T070000Z", "DTEND:20260814T080000Z"});
    auto occurrence = object.occurrence("").value();
    auto event = object.describe(occurrence);
    event.isAllDay = true;
    object.change(occurrence, event, now);
    EXPECT_THAT(object.text(), HasSubstr("DTSTART;VALUE=DATE:20260814"));
    EXPECT_THAT(object.text(), HasSubstr("DTEND;VALUE=DATE:20260815"));

    occurrence = object.occurrence("").value();
    event = object.describe(occurrence);
    event.isAllDay = false;
    event.startDate = at("2026-08-14T07:00:00Z");
    event.endDate = at("2026-08-14T08:00:00Z");
    object.change(occurrence, event, now);
    EXPECT_THAT(object.text(), HasSubstr("DTSTART;TZID=Europe/Berlin:20260814T090000"));
    EXPECT_EQ(only(object).endDate, event.endDate);
}

// 02:30 comes twice in the night Berlin's clocks go back.
TEST(SingleEvent, AtTheSecondOfTwoEqualLocalTimesIsReadBackThere) {
    const UserTimeZone berlin("Europe/Berlin");
    auto event = sowing();
    for (const char* start : {"2026-10-25T00:30:00Z", "2026-10-25T01:30:00Z"}) {
        event.startDate = at(start);
        event.endDate = at("2026-10-25T05:00:00Z");
        EXPECT_EQ(only(CalendarObject::create(event, now)).startDate, event.startDate) << start;
    }
}

TEST(SingleEvent, CannotBeTakenOutOfItself) {
    auto object = parseEvent({"DTSTART:20260814T070000Z"});
    EXPECT_FALSE(object.remove(object.occurrence("").value(), now));
}

} // namespace bridge
