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

TEST(ImportReport, NamesWhatWasTaken) {
    const ImportedFile file{"club.ics",
                            {imported(EntityType::event, "Club", 12), imported(EntityType::reminder, "Club", 1)},
                            {},
                            std::nullopt};
    EXPECT_EQ(describe(file), "club.ics\n  12 events as calendar \"Club\"\n  1 task as reminder list \"Club\"\n");
    EXPECT_EQ(summarize({file}), "Taken: 12 events and 1 task from 1 file.\n");
}

TEST(ImportReport, NamesEachItemThatWasNotTaken) {
    const ImportedFile file{
        "club.ics",
        {imported(EntityType::event, "Club", 1)},
        {{"event “Fair”", "It has no start.", true}, {"task “Pay”", "Its alarm has no time.", false}},
        std::nullopt};
    EXPECT_EQ(describe(file), "club.ics\n  1 event as calendar \"Club\"\n  left out: event “Fair”: It has no start.\n"
                              "  not whole: task “Pay”: Its alarm has no time.\n");
    EXPECT_EQ(summarize({file}), "Taken: 1 event from 1 file. Left out: 1 item. Not whole: 1 item.\n");
}

TEST(ImportReport, NamesFilesThatWereNotTaken) {
    const ImportedFile failed{"a.ics", {}, {}, "No such file or directory."};
    const ImportedFile empty{"-", {}, {}, std::nullopt};
    EXPECT_EQ(describe(failed), "a.ics\n  not taken: No such file or directory.\n");
    EXPECT_EQ(describe(empty), "standard input\n  nothing to take: no events and no tasks\n");
    EXPECT_EQ(summarize({failed, empty}), "Taken: 0 events from 1 file. Not taken: 1 file.\n");
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
