#include "tests/adapters/ical/calendar_text.h"

#include "tests/support/time_zone.h"

#include <gmock/gmock.h>

namespace bridge {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

const std::string daily =
    vevent({"DTSTART;TZID=Europe/Berlin:20260814T090000", "DTEND;TZID=Europe/Berlin:20260814T100000",
            "RRULE:FREQ=DAILY;COUNT=4", "SUMMARY:Sowing", "X-FIELD:seven", "BEGIN:VALARM", "ACTION:DISPLAY",
            "TRIGGER:-PT10M", "DESCRIPTION:Soon", "END:VALARM"});

CalendarObject seriesWith(const std::string& exceptions) {
    return CalendarObject::parse(vcalendar(daily + exceptions));
}

std::vector<std::string> titles(const CalendarObject& object) {
    std::vector<std::string> all;
    for (const auto& occurrence : object.occurrences(earliestDate, latestDate, 100))
        all.push_back(object.describe(occurrence).title.value_or(""));
    return all;
}

} // namespace

TEST(Exception, IsWhereItWasMovedTo) {
    const auto object = seriesWith(
        vevent({"RECURRENCE-ID;TZID=Europe/Berlin:20260815T090000", "DTSTART;TZID=Europe/Berlin:20260820T110000",
                "DTEND;TZID=Europe/Berlin:20260820T113000", "SUMMARY:Sowing late"}));
    EXPECT_THAT(starts(object), ElementsAre("2026-08-14T07:00:00Z", "2026-08-16T07:00:00Z", "2026-08-17T07:00:00Z",
                                            "2026-08-20T09:00:00Z"));
    EXPECT_THAT(titles(object), ElementsAre("Sowing", "Sowing", "Sowing", "Sowing late"));
    EXPECT_THAT(starts(object, "2026-08-15T00:00:00Z", "2026-08-16T00:00:00Z"), IsEmpty());
    const auto moved = object.occurrence("20260815T090000").value();
    EXPECT_EQ(moved.component, 1U);
    EXPECT_EQ(show(moved.end), "2026-08-20T09:30:00Z");
    EXPECT_TRUE(object.describe(moved).hasRecurrenceRules);
    EXPECT_EQ(show(object.span()->end.value()), "2026-08-20T09:30:00Z");
}

TEST(Exception, CanBeNamedInAnotherZone) {
    for (const char* id : {"RECURRENCE-ID:20260815T070000Z", "RECURRENCE-ID;VALUE=DATE:20260815",
                           "RECURRENCE-ID;TZID=America/New_York:20260815T030000"}) {
        const auto object = seriesWith(vevent({id, "DTSTART:20260820T110000Z", "SUMMARY:Late"}));
        EXPECT_THAT(titles(object), ElementsAre("Sowing", "Sowing", "Sowing", "Late")) << id;
        EXPECT_TRUE(object.occurrence("20260815T090000")) << id;
    }
}

TEST(Exception, ThatIsCancelledDoesNotHappen) {
    const auto object = seriesWith(vevent({"RECURRENCE-ID;TZID=Europe/Berlin:20260815T090000",
                                           "DTSTART;TZID=Europe/Berlin:20260815T090000", "STATUS:CANCELLED"}));
    EXPECT_THAT(starts(object), SizeIs(3));
    EXPECT_FALSE(object.occurrence("20260815T090000"));
}

TEST(Exception, WithoutItsSeriesHappens) {
    const auto object = CalendarObject::parse(vcalendar(
        vevent({"RECURRENCE-ID;TZID=Europe/Berlin:20260815T090000", "DTSTART;TZID=Europe/Berlin:20260820T110000"})));
    EXPECT_TRUE(object.isRecurring());
    EXPECT_THAT(starts(object), ElementsAre("2026-08-20T09:00:00Z"));
    EXPECT_EQ(object.occurrence("")->recurrenceID, "20260815T090000");
    EXPECT_EQ(object.occurrence("20260815T090000")->component, 0U);
    EXPECT_FALSE(object.describe(object.occurrence("").value()).hasRecurrenceRules);
}

TEST(Exception, WithoutItsSeriesIsGoneWhenItIsTakenOut) {
    auto object =
        CalendarObject::parse(vcalendar(vevent({"RECURRENCE-ID:20260815T090000Z", "DTSTART:20260820T110000Z"})));
    EXPECT_FALSE(object.remove(object.occurrence("").value(), now));
}

TEST(Exception, IsMadeByChangingOneOccurrence) {
    auto object = seriesWith("");
    const auto second = object.occurrence("20260815T090000").value();
    auto event = object.describe(second);
    event.title = "Sowing late";
    event.startDate.secondsSince1970 += 3600;
    event.endDate.secondsSince1970 += 7200;
    EXPECT_EQ(object.change(second, event, now), 1U);
    EXPECT_THAT(titles(object), ElementsAre("Sowing", "Sowing late", "Sowing", "Sowing"));
    EXPECT_THAT(starts(object), ElementsAre("2026-08-14T07:00:00Z", "2026-08-15T08:00:00Z", "2026-08-16T07:00:00Z",
                                            "2026-08-17T07:00:00Z"));
    const auto made = object.componentText(1);
    EXPECT_THAT(made, HasSubstr("RECURRENCE-ID;TZID=Europe/Berlin:20260815T090000"));
    EXPECT_THAT(made, HasSubstr("DTSTART;TZID=Europe/Berlin:20260815T100000"));
    EXPECT_THAT(made, HasSubstr("DTEND;TZID=Europe/Berlin:20260815T120000"));
    EXPECT_THAT(made, HasSubstr("X-FIELD:seven"));
    EXPECT_THAT(made, HasSubstr("TRIGGER:-PT10M"));
    EXPECT_THAT(made, Not(HasSubstr("RRULE")));
    EXPECT_THAT(object.componentText(0), HasSubstr("DTSTART;TZID=Europe/Berlin:20260814T090000"));

    const auto again = CalendarObject::parse(object.text());
    EXPECT_EQ(again.describe(again.occurrence("20260815T090000").value()).title, "Sowing late");
}

TEST(Exception, OfTheFirstOccurrenceLeavesTheOthers) {
    auto object = seriesWith("");
    const auto first = object.occurrence("").value();
    auto event = object.describe(first);
    event.title = "Begin";
    object.change(first, event, now);
    EXPECT_THAT(titles(object), ElementsAre("Begin", "Sowing", "Sowing", "Sowing"));
}

TEST(Exception, IsChangedFurther) {
    auto object = seriesWith("");
    auto occurrence = object.occurrence("20260815T090000").value();
    auto event = object.describe(occurrence);
    event.title = "Late";
    object.change(occurrence, event, now);
    occurrence = object.occurrence("20260815T090000").value();
    event.notes = "Bring seeds";
    EXPECT_EQ(object.change(occurrence, event, now), 1U);
    EXPECT_EQ(object.componentCount(), 2U);
    EXPECT_EQ(object.describe(object.occurrence("20260815T090000").value()).notes, "Bring seeds");
}

TEST(Exception, IsNotMadeWhereNothingChanges) {
    auto object = seriesWith("");
    const auto second = object.occurrence("20260815T090000").value();
    EXPECT_EQ(object.change(second, object.describe(second), now), 0U);
    EXPECT_EQ(object.componentCount(), 1U);
}

TEST(Exception, OfAllDayIsMadeInDays) {
    const UserTimeZone berlin("Europe/Berlin");
    auto object = parseEvent({"DTSTART;VALUE=DATE:20260814", "RRULE:FREQ=WEEKLY", "SUMMARY:Market"});
    const auto second = object.occurrence("20260821").value();
    auto event = object.describe(second);
    event.startDate = at("2026-08-21T22:00:00Z");
    event.endDate = at("2026-08-22T22:00:00Z");
    object.change(second, event, now);
    EXPECT_THAT(object.componentText(1), HasSubstr("RECURRENCE-ID;VALUE=DATE:20260821"));
    EXPECT_THAT(object.componentText(1), HasSubstr("DTSTART;VALUE=DATE:20260822"));
    EXPECT_THAT(object.componentText(1), HasSubstr("DTEND;VALUE=DATE:20260823"));
}

TEST(Exception, OfADateWithItsOwnLengthKeepsIt) {
    auto object = parseEvent({"DTSTART:20260814T090000Z", "DURATION:PT1H", "RDATE;VALUE=PERIOD:20260820T090000Z/PT3H"});
    const auto further = object.occurrence("20260820T090000Z").value();
    auto event = object.describe(further);
    event.title = "Long";
    object.change(further, event, now);
    EXPECT_EQ(show(object.occurrence("20260820T090000Z")->end), "2026-08-20T12:00:00Z");
}

TEST(Exception, IsTakenOutOfTheSeries) {
    auto object = seriesWith("");
    EXPECT_TRUE(object.remove(object.occurrence("20260815T090000").value(), now));
    EXPECT_THAT(starts(object), ElementsAre("2026-08-14T07:00:00Z", "2026-08-16T07:00:00Z", "2026-08-17T07:00:00Z"));
    EXPECT_THAT(object.text(), HasSubstr("EXDATE;TZID=Europe/Berlin:20260815T090000"));
    EXPECT_THAT(object.text(), HasSubstr("SEQUENCE:1"));
    EXPECT_FALSE(object.occurrence("20260815T090000"));
}

TEST(Exception, IsTakenOutWithTheOccurrenceThatItMoved) {
    auto object = seriesWith(vevent({"RECURRENCE-ID;TZID=Europe/Berlin:20260815T090000", "DTSTART:20260820T110000Z"}));
    EXPECT_TRUE(object.remove(object.occurrence("20260815T090000").value(), now));
    EXPECT_EQ(object.componentCount(), 1U);
    EXPECT_THAT(starts(object), SizeIs(3));
}

TEST(Exception, OfTheLastOccurrenceLeavesNothing) {
    auto object = parseEvent({"DTSTART:20260814T090000Z", "RRULE:FREQ=DAILY;COUNT=2"});
    EXPECT_TRUE(object.remove(object.occurrence("20260814T090000Z").value(), now));
    EXPECT_FALSE(object.remove(object.occurrence("20260815T090000Z").value(), now));
}

TEST(Exception, BecomesAnEventOfItsOwn) {
    const auto object = seriesWith("");
    const auto alone = object.detached(object.occurrence("20260816T090000").value());
    EXPECT_NE(alone.uid(), object.uid());
    EXPECT_FALSE(alone.isRecurring());
    EXPECT_THAT(starts(alone), ElementsAre("2026-08-16T07:00:00Z"));
    const auto event = alone.describe(alone.occurrence("").value());
    EXPECT_EQ(event.title, "Sowing");
    EXPECT_FALSE(event.hasRecurrenceRules);
    EXPECT_EQ(event.endDate, at("2026-08-16T08:00:00Z"));
    EXPECT_THAT(alone.text(), HasSubstr("X-FIELD:seven"));
    EXPECT_THAT(object.text(), Not(HasSubstr("EXDATE")));
}

TEST(Exception, ThatFailsToBeWrittenChangesNothing) {
    auto object = seriesWith("");
    const auto before = object.text();
    const auto second = object.occurrence("20260815T090000").value();
    auto event = object.describe(second);
    event.title = "Late";
    event.alarms = {{1e300}};
    EXPECT_THROW(object.change(second, event, now), PlatformError);
    event.alarms = {{std::numeric_limits<double>::quiet_NaN()}};
    EXPECT_THROW(object.change(second, event, now), PlatformError);
    event.alarms = {{Date{latestDate.secondsSince1970 + 1}}};
    EXPECT_THROW(object.change(second, event, now), PlatformError);
    event.alarms = {};
    event.endDate = event.startDate;
    --event.endDate.secondsSince1970;
    EXPECT_THROW(object.change(second, event, now), PlatformError);
    event.startDate = Date{latestDate.secondsSince1970 - 10};
    event.endDate = Date{latestDate.secondsSince1970 + 86400};
    EXPECT_THROW(object.change(second, event, now), PlatformError);
    EXPECT_EQ(object.text(), before);
    Occurrence foreign = second;
    foreign.component = 7;
    EXPECT_THROW(object.describe(foreign), PlatformError);
}

} // namespace bridge
