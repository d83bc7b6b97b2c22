#include "adapters/ical/calendar_file.h"
#include "tests/adapters/ical/calendar_text.h"
#include "tests/support/public_data.h"
#include "tests/support/time_zone.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <map>

namespace bridge {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

std::string event(const std::string& uid, const std::vector<std::string>& properties) {
    return "BEGIN:VEVENT\r\nUID:" + uid + "\r\nDTSTART:20260814T070000Z\r\n" + lines(properties) + "END:VEVENT\r\n";
}

std::vector<std::string> told(const CalendarFile& file) {
    std::vector<std::string> all;
    for (const auto& problem : file.problems)
        all.push_back(problem.item + ": " + problem.reason + (problem.isLost ? " (lost)" : ""));
    return all;
}

std::string replaced(std::string text, std::string_view what, std::string_view by) {
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

} // namespace

TEST(CalendarFile, GivesItsItemsAndItsTitle) {
    const auto file = readCalendarFile(
        vcalendar("X-WR-CALNAME:Farm\\, north\r\n" + event("1", {"SUMMARY:Sowing"}) + vtodo({"SUMMARY:Seeds"})));
    EXPECT_EQ(file.title, "Farm, north");
    ASSERT_THAT(file.objects, SizeIs(2));
    EXPECT_EQ(file.objects[0].uid(), "1");
    EXPECT_EQ(file.objects[1].entityType(), EntityType::reminder);
    EXPECT_THAT(told(file), IsEmpty());
}

TEST(CalendarFile, KeepsASeriesTogether) {
    const auto file = readCalendarFile(vcalendar(event("1", {"RECURRENCE-ID:20260815T070000Z", "SUMMARY:Late"}) +
                                                 event("2", {}) + event("1", {"RRULE:FREQ=DAILY;COUNT=3"})));
    ASSERT_THAT(file.objects, SizeIs(2));
    EXPECT_EQ(file.objects[0].componentCount(), 2U);
    EXPECT_THAT(starts(file.objects[0]), SizeIs(3));
    EXPECT_THAT(told(file), IsEmpty());
}

TEST(CalendarFile, TakesAnyLineEndsAndAByteOrderMark) {
    const auto text = vcalendar(event("1", {"SUMMARY:Sow", " ing"}));
    for (const auto& bytes : {text, replaced(text, "\r\n", "\n"), replaced(text, "\r\n", "\r"), "\xEF\xBB\xBF" + text,
                              replaced(text, "\r\n", "\r\n\r\n"), text.substr(0, text.size() - 2)}) {
        const auto file = readCalendarFile(bytes);
        ASSERT_THAT(file.objects, SizeIs(1)) << bytes;
        EXPECT_THAT(told(file), IsEmpty());
        EXPECT_THAT(file.objects[0].text(), HasSubstr("SUMMARY:Sowing"));
    }
}

TEST(CalendarFile, CanBeSeveralInARow) {
    const auto file = readCalendarFile(vcalendar(event("1", {})) + vcalendar(event("2", {})) + "\r\n" + vcalendar(""));
    EXPECT_THAT(file.objects, SizeIs(2));
    EXPECT_THAT(told(file), IsEmpty());
}

TEST(CalendarFile, CanDefineAZoneAfterItsUse) {
    const auto file = readCalendarFile(
        vcalendar("BEGIN:VEVENT\r\nUID:1\r\nDTSTART;TZID=Farm:20260814T090000\r\nEND:VEVENT\r\n"
                  "BEGIN:VTIMEZONE\r\nTZID:Farm\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0130\r\n"
                  "TZOFFSETTO:+0130\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n"));
    ASSERT_THAT(file.objects, SizeIs(1));
    EXPECT_THAT(starts(file.objects[0]), ElementsAre("2026-08-14T07:30:00Z"));
    EXPECT_THAT(starts(CalendarObject::parse(file.objects[0].text())), ElementsAre("2026-08-14T07:30:00Z"));
    EXPECT_THAT(told(file), IsEmpty());
}

TEST(CalendarFile, TellsOfZonesThatMeanNothing) {
    const auto file =
        readCalendarFile(vcalendar("BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Sowing\r\nDTSTART;TZID=Farm:20260814T090000\r\n"
                                   "DTEND;TZID=Farm:20260814T100000\r\nEND:VEVENT\r\n"));
    EXPECT_THAT(file.objects, SizeIs(1));
    EXPECT_THAT(told(file), ElementsAre("event “Sowing”: Nothing is known of its time zone “Farm”: it takes place at "
                                        "that time of day wherever you are."));
}

TEST(CalendarFile, TellsOfWhatItCannotTake) {
    const auto file = readCalendarFile(
        vcalendar("BEGIN:VJOURNAL\r\nSUMMARY:Diary\r\nEND:VJOURNAL\r\nBEGIN:VFREEBUSY\r\nEND:VFREEBUSY\r\n"
                  "BEGIN:X-OTHER\r\nEND:X-OTHER\r\nBEGIN:VEVENT\r\nUID:2\r\nSUMMARY:Some day\r\nEND:VEVENT\r\n" +
                  event("1", {})));
    EXPECT_THAT(file.objects, SizeIs(1));
    EXPECT_THAT(told(file), ElementsAre("journal entry “Diary”: Journals can't be kept. (lost)",
                                        "free-busy time of line 7: Free-busy times can't be kept. (lost)",
                                        "part X-OTHER of line 9: Nothing is known of this kind. (lost)",
                                        "event “Some day”: It does not say when it starts. (lost)"));
}

TEST(CalendarFile, DoesNotTakeHalfAnEvent) {
    const std::map<std::string, std::string> reasons{
        {"RRULE:FREQ=SOMETIMES", "Its RRULE in line 7 can't be read."},
        {"RRULE:FREQ=DAILY;COUNT=x", "Its RRULE in line 7 can't be read."},
        {"RDATE:20260230T070000Z", "Its RDATE “20260230T070000Z” is no date."},
        {"EXDATE:yesterday", "Its EXDATE in line 7 can't be read."},
        {"RECURRENCE-ID:20261301", "Its RECURRENCE-ID “20261301” is no date."},
    };
    for (const auto& [line, reason] : reasons) {
        const auto file = readCalendarFile(vcalendar(event("1", {line, "SUMMARY:Sowing"})));
        EXPECT_THAT(file.objects, IsEmpty()) << line;
        EXPECT_THAT(told(file), ElementsAre("event “Sowing”: " + reason + " (lost)")) << line;
    }
}

TEST(CalendarFile, TellsWhichPartItHadToLeaveOut) {
    auto file = readCalendarFile(vcalendar(event("1", {"SUMMARY:Sowing", "GEO:here", "LOCATION:", "X-EMPTY:"})));
    EXPECT_THAT(file.objects, SizeIs(1));
    EXPECT_THAT(told(file), ElementsAre("event “Sowing”: It was taken without line 8, which can't be read."));
    EXPECT_THAT(file.objects[0].text(), testing::Not(HasSubstr("X-LIC")));

    file = readCalendarFile(
        vcalendar(event("1", {"SUMMARY:Sowing", "DTEND:20260230T070000Z", "BEGIN:PARTICIPANT", "SUMMARY:Ada",
                              "END:PARTICIPANT", "BEGIN:VALARM", "TRIGGER:soon", "END:VALARM"})));
    EXPECT_THAT(file.objects, SizeIs(1));
    EXPECT_THAT(told(file), ElementsAre("event “Sowing”: It was taken without line 13, a part of its alarm.",
                                        "event “Sowing”: It was taken without its PARTICIPANT.",
                                        "event “Sowing”: Its DTEND “20260230T070000Z” is no date and does not count."));
}

TEST(CalendarFile, TellsOfWhatItTakesOtherwise) {
    const auto file =
        readCalendarFile(vcalendar(event("1", {"RRULE:FREQ=DAILY;COUNT=3", "SUMMARY:Sowing"}) +
                                   event("1", {"RECURRENCE-ID;RANGE=THISANDFUTURE:20260815T070000Z", "SUMMARY:Later"}) +
                                   event("2", {"SUMMARY:a\xff"})));
    EXPECT_THAT(file.objects, SizeIs(2));
    EXPECT_THAT(told(file),
                ElementsAre("event “Later”: It stands for all later ones too, but was taken for its own day alone.",
                            "event “a\uFFFD”: Some of its characters are not UTF-8; they were replaced by “\uFFFD”."));
}

TEST(CalendarFile, TellsOfContradictions) {
    const auto file = readCalendarFile(vcalendar(event("1", {"SUMMARY:Old", "SEQUENCE:1"}) +
                                                 event("1", {"SUMMARY:New", "SEQUENCE:2"}) +
                                                 event("2", {"SUMMARY:Same"}) + event("2", {"SUMMARY:Same"})));
    ASSERT_THAT(file.objects, SizeIs(2));
    EXPECT_THAT(file.objects[0].text(), HasSubstr("SUMMARY:New"));
    EXPECT_THAT(told(file),
                ElementsAre("event “Old”: There is another one with the same UID, which was taken. (lost)"));
}

TEST(CalendarFile, GivesAnItemWithoutUIDOneOfItsOwn) {
    const std::string anonymous = "BEGIN:VEVENT\r\nDTSTART:20260814T070000Z\r\nEND:VEVENT\r\n";
    const auto file = readCalendarFile(vcalendar(anonymous + anonymous));
    ASSERT_THAT(file.objects, SizeIs(2));
    EXPECT_NE(file.objects[0].uid(), file.objects[1].uid());
    EXPECT_THAT(told(file), IsEmpty());
}

TEST(CalendarFile, ThatIsCutOffTellsSo) {
    const auto whole = vcalendar(event("1", {"SUMMARY:Sowing"}) + event("2", {"SUMMARY:Harvest"}));
    auto file = readCalendarFile(whole.substr(0, whole.find("Harvest") + 9));
    EXPECT_THAT(file.objects, SizeIs(1));
    EXPECT_THAT(told(file), ElementsAre("event “Harvest”: It has no end. (lost)"));

    file = readCalendarFile(vcalendar("BEGIN:VEVENT\r\nSUMMARY:Open\r\n" + event("2", {})));
    EXPECT_THAT(file.objects, SizeIs(1));
    EXPECT_THAT(told(file), ElementsAre("event “Open”: It has no end. (lost)"));
}

TEST(CalendarFile, CanHaveNonsenseBetween) {
    const auto file = readCalendarFile(
        "\r\n" + vcalendar(event("1", {}) + "what?\r\nis this\r\n" + event("2", {}) + "END:VEVENT\r\n"));
    EXPECT_THAT(file.objects, SizeIs(2));
    EXPECT_THAT(told(file),
                ElementsAre("line 9: This is not iCalendar. (lost)", "line 15: This is not iCalendar. (lost)"));
}

TEST(CalendarFile, ThatIsNoneIsRefused) {
    for (const std::string bytes : {"", "\r\n", "hello", "BEGIN:VCARD\r\nFN:Ada\r\nEND:VCARD\r\n", "{\"a\":1}",
                                    "\xFF\xFE"
                                    "B\0E\0"})
        EXPECT_THROW(readCalendarFile(bytes), PlatformError) << bytes;
    EXPECT_THROW(readCalendarFile(std::string(1000, '\0')), PlatformError);
}

TEST(CalendarFile, NestedWithoutEndIsTold) {
    std::string deep;
    for (int i = 0; i < 100'000; ++i)
        deep += "BEGIN:VALARM\r\n";
    const auto file = readCalendarFile(vcalendar("BEGIN:VEVENT\r\n" + deep));
    EXPECT_THAT(file.objects, IsEmpty());
    EXPECT_THAT(file.problems, SizeIs(1));
}

TEST(CalendarFile, TakesMoreDatesThanLibicalReadsInALine) {
    std::string dates;
    for (int i = 0; i < 1200; ++i) {
        const auto day = formatDate(Date{at("2026-08-15T07:00:00Z").secondsSince1970 + i * 86400});
        dates += (i > 0 ? "," : "") + day.substr(0, 4) + day.substr(5, 2) + day.substr(8, 2) + "T070000Z";
    }
    const auto file = readCalendarFile(vcalendar(event("1", {"RDATE:" + dates})));
    ASSERT_THAT(file.objects, SizeIs(1));
    EXPECT_EQ(file.objects[0].occurrences(earliestDate, latestDate, 10'000).size(), 1201U);
}

// The files are other projects' tests: of programs' exports, of the standard's examples, and of what once made a
// reader crash.
TEST(CalendarFile, OfOtherProjectsIsReadAndWritten) {
    REQUIRE_PUBLIC_DATA("ics");
    size_t count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(publicData("ics"))) {
        if (!entry.is_regular_file()) continue;
        ++count;
        CalendarFile file;
        try {
            file = readCalendarFile(readFile(entry.path()));
        } catch (const PlatformError&) {
            continue;
        }
        for (const auto& object : file.objects) {
            const auto text = object.text();
            EXPECT_EQ(CalendarObject::parse(text).text(), text) << entry.path();
            if (object.entityType() == EntityType::reminder) {
                object.describeReminder();
                continue;
            }
            object.span();
            for (const auto& occurrence : object.occurrences(earliestDate, latestDate, 20)) {
                object.describe(occurrence);
                EXPECT_EQ(object.occurrence(occurrence.recurrenceID)->start, occurrence.start) << entry.path();
            }
        }
    }
    EXPECT_GT(count, 100U);
}

TEST(CalendarFile, OfOtherProjectsGivesAllItsItems) {
    REQUIRE_PUBLIC_DATA("ics");
    struct Expected {
        size_t objects, problems;
    };
    const std::map<std::string, Expected> files{
        {"icalendar/alarm_etar_future.ics", {1, 0}},
        {"icalendar/alarm_google_future.ics", {1, 0}},
        {"icalendar/alarm_thunderbird_closed.ics", {1, 0}},
        {"icalendar/america_new_york_forward_reference.ics", {1, 0}},
        {"icalendar/event_with_recurrence_exdates_on_different_lines.ics", {1, 0}},
        {"icalendar/issue_1050_calendar_with_events_and_todos.ics", {3, 1}},
        {"icalendar/issue_1081_invalid_rrule_freq.ics", {0, 1}},
        {"icalendar/issue_127_categories_with_commas.ics", {1, 0}},
        {"icalendar/issue_156_RDATE_with_PERIOD_TZID_khal_2.ics", {1, 1}},
        {"icalendar/issue_313_globally_unique_tzid.ics", {3, 0}},
        {"icalendar/issue_526_calendar_with_events.ics", {2, 2}},
        {"icalendar/issue_722_timezone_transition_ambiguity.ics", {4, 0}},
        {"icalendar/parsing_error.ics", {2, 0}},
        {"icalendar/period_with_timezone.ics", {1, 0}},
        {"icalendar/rfc_9253_examples.ics", {2, 0}},
        {"icalendar/timezoned.ics", {1, 0}},
        {"libical/2446.ics", {9, 42}},
        {"libical/overlaps.ics", {5, 0}},
        {"libical/spanlist.ics", {5, 0}},
    };
    for (const auto& [name, expected] : files) {
        const auto file = readCalendarFile(readFile(publicData("ics") / name));
        EXPECT_THAT(file.objects, SizeIs(expected.objects)) << name;
        EXPECT_THAT(told(file), SizeIs(expected.problems)) << name;
    }
}

} // namespace bridge
