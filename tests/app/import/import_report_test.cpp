#include "app/import/import_report.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

ImportedCalendar imported(EntityType type, const char* title, size_t count) {
    Calendar calendar;
    calendar.entityType = type;
    calendar.title = title;
    return {calendar, count};
}

ImportedFile file(const char* name) {
    ImportedFile made;
    made.name = name;
    return made;
}

TEST(ImportReport, NamesCalendarsThatWereTaken) {
    auto club = file("club.ics");
    club.calendars = {imported(EntityType::event, "Club", 12), imported(EntityType::reminder, "Club", 1)};
    EXPECT_EQ(describe(club), "club.ics\n  12 events as calendar \"Club\"\n  1 task as reminder list \"Club\"\n");
    EXPECT_EQ(summarize({club}), "Taken: 12 events and 1 task from 1 file.\n");
}

TEST(ImportReport, CountsContactsThatWereTaken) {
    const auto described = [](ImportedContacts contacts) {
        auto friends = file("f.vcf");
        friends.contacts = contacts;
        return describe(friends) + summarize({friends});
    };
    EXPECT_EQ(described({12, 0, 0}), "f.vcf\n  12 contacts\nTaken: 12 contacts from 1 file.\n");
    EXPECT_EQ(described({1, 0, 1}), "f.vcf\n  1 contact and 1 group\nTaken: 1 contact and 1 group from 1 file.\n");
    EXPECT_EQ(described({2, 3, 2}), "f.vcf\n  2 contacts and 2 groups\n  3 contacts were here already\n"
                                    "Taken: 2 contacts and 2 groups from 1 file. Here already: 3 contacts.\n");
    EXPECT_EQ(described({0, 1, 0}), "f.vcf\n  1 contact was here already\nTaken: nothing. Here already: 1 contact.\n");
    EXPECT_EQ(described({0, 0, 1}), "f.vcf\n  1 group\nTaken: 1 group from 1 file.\n");
}

TEST(ImportReport, SumsUpFilesOfAllKinds) {
    auto club = file("club.ics"), friends = file("friends.vcf"), more = file("more.vcf");
    club.calendars = {imported(EntityType::event, "Club", 1), imported(EntityType::reminder, "Club", 2)};
    friends.contacts = {3, 0, 1};
    more.contacts = {1, 4, 1};
    EXPECT_EQ(summarize({club, friends, more}),
              "Taken: 1 event, 2 tasks, 4 contacts and 2 groups from 3 files. Here already: 4 contacts.\n");
}

TEST(ImportReport, NamesEachItemThatWasNotTaken) {
    auto club = file("club.ics");
    club.calendars = {imported(EntityType::event, "Club", 1)};
    club.problems = {{"event “Fair”", "It has no start.", true}, {"task “Pay”", "Its alarm has no time.", false}};
    EXPECT_EQ(describe(club), "club.ics\n  1 event as calendar \"Club\"\n  left out: event “Fair”: It has no start.\n"
                              "  not whole: task “Pay”: Its alarm has no time.\n");
    EXPECT_EQ(summarize({club}), "Taken: 1 event from 1 file. Left out: 1 item. Not whole: 1 item.\n");
}

TEST(ImportReport, SaysWhenNothingWasTaken) {
    auto broken = file("broken.vcf"), bare = file("bare.vcf");
    broken.kind = bare.kind = FileKind::contacts;
    broken.problems = {{"the contact that begins in line 1", "It has no end.", true}};
    EXPECT_EQ(describe(broken), "broken.vcf\n  nothing was taken\n"
                                "  left out: the contact that begins in line 1: It has no end.\n");
    EXPECT_EQ(describe(bare), "bare.vcf\n  nothing to take: no contacts\n");
    EXPECT_EQ(describe(file("-")), "standard input\n  nothing to take: no events and no tasks\n");
    EXPECT_EQ(summarize({broken, bare, file("-")}), "Taken: nothing. Left out: 1 item.\n");
}

TEST(ImportReport, NamesFilesThatWereNotTaken) {
    auto failed = file("a.ics"), friends = file("friends.vcf");
    failed.failure = "No such file or directory.";
    friends.contacts = {1, 0, 0};
    EXPECT_EQ(describe(failed), "a.ics\n  not taken: No such file or directory.\n");
    EXPECT_EQ(summarize({failed, friends}), "Taken: 1 contact from 1 file. Not taken: 1 file.\n");
    EXPECT_EQ(summarize({failed, failed}), "Taken: nothing. Not taken: 2 files.\n");
}

TEST(ImportReport, SendsATerminalNothingButText) {
    EXPECT_EQ(printable("a\x1b[31mb\nc\x7f"), "a\xef\xbf\xbd[31mb\xef\xbf\xbd"
                                              "c\xef\xbf\xbd");
    EXPECT_EQ(printable("a\xc2\x9b"
                        "31mb"),
              "a\xef\xbf\xbd"
              "31mb");
    EXPECT_EQ(printable("Grüße 🌱\xff"), "Grüße 🌱\xef\xbf\xbd");
    EXPECT_EQ(printable(""), "");
}

} // namespace
} // namespace bridge
