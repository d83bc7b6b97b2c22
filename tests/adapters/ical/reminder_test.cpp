#include "tests/adapters/ical/calendar_text.h"

#include "tests/support/time_zone.h"

#include <gmock/gmock.h>

namespace bridge {

using testing::HasSubstr;
using testing::Not;

namespace {

DateComponents day(int year, int month, int dayOfMonth) {
    return {.year = year, .month = month, .day = dayOfMonth};
}

DateComponents time(DateComponents components, int hour, int minute, std::optional<std::string> zone = std::nullopt) {
    components.hour = hour;
    components.minute = minute;
    components.timeZone = std::move(zone);
    return components;
}

std::optional<DateComponents> due(const std::vector<std::string>& properties) {
    return parseTask(properties).describeReminder().dueDate;
}

// Completes it and tells when it is due then; nothing when it is done.
std::optional<DateComponents> completed(CalendarObject& object) {
    auto reminder = object.describeReminder();
    reminder.isCompleted = true;
    object.change(reminder, now);
    reminder = object.describeReminder();
    return reminder.isCompleted ? std::nullopt : reminder.dueDate;
}

} // namespace

TEST(ReminderObject, ThatIsCreatedIsReadBackAsItWas) {
    const UserTimeZone berlin("Europe/Berlin");
    Reminder reminder;
    reminder.title = "Seeds";
    reminder.notes = "Rye\nclover";
    reminder.dueDate = componentsToTheMinute(at("2026-08-14T10:30:45Z"));
    reminder.priority = 5;
    const auto object = CalendarObject::parse(CalendarObject::create(reminder, now).text());
    EXPECT_EQ(object.entityType(), EntityType::reminder);
    auto read = object.describeReminder();
    EXPECT_EQ(read.externalIdentifier, object.uid());
    read.externalIdentifier.reset();
    EXPECT_EQ(read, reminder);
    EXPECT_THAT(object.text(), HasSubstr("DUE;TZID=Europe/Berlin:20260814T123000"));
}

TEST(ReminderObject, IsDueInEveryFormOfDate) {
    EXPECT_EQ(due({"DUE;VALUE=DATE:20260814"}), day(2026, 8, 14));
    EXPECT_EQ(due({"DUE:20260814T123000"}), time(day(2026, 8, 14), 12, 30));
    EXPECT_EQ(due({"DUE:20260814T123000Z"}), time(day(2026, 8, 14), 12, 30, "UTC"));
    EXPECT_EQ(due({"DUE;TZID=Asia/Tokyo:20260814T123000"}), time(day(2026, 8, 14), 12, 30, "Asia/Tokyo"));
    auto withSeconds = time(day(2026, 8, 14), 12, 30, "UTC");
    withSeconds.second = 45;
    EXPECT_EQ(due({"DUE:20260814T123045Z"}), withSeconds);
    EXPECT_EQ(due({"DTSTART:20260814T120000Z", "DURATION:PT30M"}), time(day(2026, 8, 14), 12, 30, "UTC"));
    EXPECT_EQ(due({"DTSTART:20260814T120000Z"}), std::nullopt);
}

TEST(ReminderObject, InAZoneOnlyTheFileKnowsIsDueInUTC) {
    const auto object = CalendarObject::parse(
        vcalendar("BEGIN:VTIMEZONE\r\nTZID:Farm\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0330\r\n"
                  "TZOFFSETTO:+0330\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n" +
                  vtodo({"DUE;TZID=Farm:20260814T123000"})));
    EXPECT_EQ(object.describeReminder().dueDate, time(day(2026, 8, 14), 9, 0, "UTC"));
}

TEST(ReminderObject, WithADueDateThatIsNoneHasNone) {
    for (const char* property :
         {"DUE:20260230T120000", "DUE;VALUE=DATE:20261301", "DUE:tomorrow", "DUE:20260814T250000"})
        EXPECT_EQ(due({property}), std::nullopt) << property;
}

TEST(ReminderObject, KeepsTheFormsThatItIsGiven) {
    auto object = parseTask({"SUMMARY:Seeds"});
    auto reminder = object.describeReminder();
    for (const auto& components : {day(2026, 8, 14), time(day(2026, 8, 14), 9, 5), time(day(2026, 8, 14), 9, 5, "UTC"),
                                   time(day(2026, 8, 14), 9, 5, "America/Lima")}) {
        reminder.dueDate = components;
        object.change(reminder, now);
        EXPECT_EQ(CalendarObject::parse(object.text()).describeReminder().dueDate, components);
    }
    reminder.dueDate.reset();
    object.change(reminder, now);
    EXPECT_THAT(object.text(), Not(HasSubstr("DUE")));
}

TEST(ReminderObject, RefusesDatesThatAreNone) {
    auto object = parseTask({"SUMMARY:Seeds"});
    const auto before = object.text();
    auto reminder = object.describeReminder();
    reminder.title = "Other";
    for (const auto& components : {day(2026, 2, 30), day(0, 0, 0), time(day(2026, 8, 14), 25, 0),
                                   time(day(2026, 8, 14), 9, 0, "Nowhere/At_All"), day(10000, 1, 1)}) {
        reminder.dueDate = components;
        EXPECT_THROW(object.change(reminder, now), PlatformError);
    }
    EXPECT_EQ(object.text(), before);
}

TEST(ReminderObject, IsCompletedNowAndReopened) {
    auto object = parseTask({"SUMMARY:Seeds", "STATUS:IN-PROCESS", "PERCENT-COMPLETE:30"});
    auto reminder = object.describeReminder();
    EXPECT_FALSE(reminder.isCompleted);
    reminder.isCompleted = true;
    reminder.completionDate = at("2001-01-01T00:00:00Z");
    object.change(reminder, now);
    EXPECT_EQ(object.describeReminder().completionDate, now);
    EXPECT_THAT(object.text(), HasSubstr("STATUS:COMPLETED"));
    EXPECT_THAT(object.text(), HasSubstr("PERCENT-COMPLETE:100"));

    reminder.isCompleted = false;
    object.change(reminder, now);
    EXPECT_FALSE(object.describeReminder().isCompleted);
    EXPECT_EQ(object.describeReminder().completionDate, std::nullopt);
    EXPECT_THAT(object.text(), Not(HasSubstr("COMPLETED")));
}

TEST(ReminderObject, IsCompletedByWhateverSaysSo) {
    EXPECT_TRUE(parseTask({"STATUS:COMPLETED"}).describeReminder().isCompleted);
    EXPECT_TRUE(parseTask({"COMPLETED:20260801T000000Z"}).describeReminder().isCompleted);
    EXPECT_TRUE(parseTask({"PERCENT-COMPLETE:100"}).describeReminder().isCompleted);
    EXPECT_FALSE(parseTask({"STATUS:NEEDS-ACTION", "PERCENT-COMPLETE:100"}).describeReminder().isCompleted);
    EXPECT_FALSE(parseTask({"STATUS:CANCELLED"}).describeReminder().isCompleted);
}

TEST(ReminderObject, HasAPriorityFromNoneToNine) {
    EXPECT_EQ(parseTask({"PRIORITY:5"}).describeReminder().priority, 5);
    EXPECT_EQ(parseTask({"PRIORITY:17"}).describeReminder().priority, 9);
    EXPECT_EQ(parseTask({"PRIORITY:-3"}).describeReminder().priority, 0);
    EXPECT_EQ(parseTask({"PRIORITY:high"}).describeReminder().priority, 0);
    Reminder reminder;
    reminder.priority = -3;
    EXPECT_EQ(CalendarObject::create(reminder, now).describeReminder().priority, 0);
    reminder.priority = 12;
    EXPECT_EQ(CalendarObject::create(reminder, now).describeReminder().priority, 9);
}

TEST(ReminderObject, ThatRepeatsMovesOnWhenItIsCompleted) {
    auto object = parseTask({"DTSTART;TZID=Europe/Berlin:20261023T090000", "DUE;TZID=Europe/Berlin:20261023T100000",
                             "RRULE:FREQ=DAILY;COUNT=3", "SUMMARY:Water", "STATUS:IN-PROCESS"});
    EXPECT_EQ(completed(object), time(day(2026, 10, 24), 10, 0, "Europe/Berlin"));
    EXPECT_THAT(object.text(), HasSubstr("DTSTART;TZID=Europe/Berlin:20261024T090000"));
    EXPECT_THAT(object.text(), HasSubstr("COUNT=2"));
    EXPECT_THAT(object.text(), HasSubstr("STATUS:NEEDS-ACTION"));
    EXPECT_EQ(completed(object), time(day(2026, 10, 25), 10, 0, "Europe/Berlin"));
    EXPECT_EQ(completed(object), std::nullopt);
    EXPECT_EQ(object.describeReminder().completionDate, now);
    EXPECT_EQ(object.describeReminder().dueDate, time(day(2026, 10, 25), 10, 0, "Europe/Berlin"));
}

TEST(ReminderObject, ThatRepeatsWithoutStartMovesItsDueDate) {
    auto object = parseTask({"DUE;VALUE=DATE:20260831", "RRULE:FREQ=MONTHLY;UNTIL=20261101"});
    EXPECT_EQ(completed(object), day(2026, 10, 31));
    EXPECT_EQ(completed(object), std::nullopt);
}

TEST(ReminderObject, ThatRepeatsSkipsWhatIsExcluded) {
    auto object = parseTask(
        {"DTSTART:20260814T090000Z", "DUE:20260814T090000Z", "RRULE:FREQ=DAILY;COUNT=4", "EXDATE:20260815T090000Z"});
    EXPECT_EQ(completed(object), time(day(2026, 8, 16), 9, 0, "UTC"));
    EXPECT_THAT(object.text(), HasSubstr("COUNT=2"));
    EXPECT_EQ(completed(object), time(day(2026, 8, 17), 9, 0, "UTC"));
    EXPECT_EQ(completed(object), std::nullopt);
}

TEST(ReminderObject, ThatRepeatsCanBeMovedAndCompletedAtOnce) {
    auto object = parseTask({"DTSTART;VALUE=DATE:20260814", "DUE;VALUE=DATE:20260814", "RRULE:FREQ=WEEKLY"});
    auto reminder = object.describeReminder();
    reminder.dueDate = day(2026, 8, 15);
    reminder.isCompleted = true;
    object.change(reminder, now);
    EXPECT_EQ(object.describeReminder().dueDate, day(2026, 8, 22));
    EXPECT_FALSE(object.describeReminder().isCompleted);
}

TEST(ReminderObject, StartsNoLaterThanItIsDue) {
    auto object = parseTask({"DTSTART:20260814T090000Z", "DUE:20260815T090000Z"});
    auto reminder = object.describeReminder();
    reminder.dueDate = day(2026, 8, 10);
    object.change(reminder, now);
    EXPECT_THAT(object.text(), Not(HasSubstr("DTSTART")));

    object = parseTask({"DTSTART:20260814T090000Z", "DUE:20260814T090000Z"});
    reminder = object.describeReminder();
    reminder.dueDate = time(day(2026, 8, 20), 9, 0, "UTC");
    object.change(reminder, now);
    EXPECT_THAT(object.text(), HasSubstr("DTSTART:20260820T090000Z"));
}

TEST(ReminderObject, ChangesOnlyWhatDiffers) {
    auto object = parseTask({"SUMMARY:Seeds", "DUE:garbage", "X-SORT:17", "RELATED-TO:other@example.org",
                             "BEGIN:VALARM", "TRIGGER:-PT5M", "ACTION:AUDIO", "END:VALARM"});
    auto reminder = object.describeReminder();
    reminder.notes = "Rye";
    object.change(reminder, now);
    for (const char* kept : {"SUMMARY:Seeds", "X-SORT:17", "RELATED-TO:other@example.org", "ACTION:AUDIO"})
        EXPECT_THAT(object.text(), HasSubstr(kept));
    EXPECT_THAT(object.text(), HasSubstr("LAST-MODIFIED:20260814T112841Z"));
}

} // namespace bridge
