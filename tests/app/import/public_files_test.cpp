#include "tests/app/import/import_site.h"
#include "tests/support/public_data.h"

#include <gmock/gmock.h>
#include <set>

// Calendar files as other projects publish them, many of them hostile.

namespace bridge {
namespace {

std::vector<std::filesystem::path> publicFiles() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(publicData("ics")))
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

size_t count(std::string_view text, std::string_view part) {
    size_t found = 0;
    for (auto place = text.find(part); place != text.npos; place = text.find(part, place + part.size()))
        ++found;
    return found;
}

TEST(PublicCalendarFiles, AreEachTakenOrReported) {
    REQUIRE_PUBLIC_DATA("ics");
    ImportSite site;
    size_t taken = 0;
    const auto files = publicFiles();
    ASSERT_GT(files.size(), 100u);
    for (const auto& path : files) {
        SCOPED_TRACE(path.filename());
        const auto file = site.take(path);
        const auto text = readFile(path);
        const auto components = count(text, "BEGIN:VEVENT") + count(text, "BEGIN:VTODO");
        if (file.failure) {
            EXPECT_TRUE(file.calendars.empty());
            EXPECT_NE(*file.failure, "");
            continue;
        }
        for (const auto& problem : file.problems) {
            EXPECT_NE(problem.item, "");
            EXPECT_NE(problem.reason, "");
        }
        size_t items = 0;
        for (const auto& imported : file.calendars) {
            EXPECT_GT(imported.itemCount, 0u);
            EXPECT_FALSE(trim(imported.calendar.title).empty());
            items += imported.itemCount;
            if (imported.calendar.entityType == EntityType::reminder) {
                EXPECT_EQ(site.reminders(imported.calendar).size(), imported.itemCount);
                continue;
            }
            std::set<std::string> seen;
            for (const auto& event : site.events(imported.calendar))
                seen.insert(event.externalIdentifier.value());
            // An endless one may fill what is asked for before others come; one may have no occurrence left.
            EXPECT_LE(seen.size(), imported.itemCount);
            EXPECT_FALSE(seen.empty());
        }
        EXPECT_LE(items, components);
        EXPECT_TRUE(components == 0 || items + file.problems.size() > 0) << "items that nobody mentions";
        taken += items;
    }
    EXPECT_GT(taken, 100u);
}

TEST(PublicCalendarFiles, HaveTheirOccurrences) {
    REQUIRE_PUBLIC_DATA("ics");
    ImportSite site;
    const auto folder = publicData("ics") / "icalendar";

    const auto mixed = site.take(folder / "issue_1050_calendar_with_events_and_todos.ics");
    ASSERT_EQ(mixed.calendars.size(), 2u);
    const auto events = site.events(mixed.calendars[0].calendar);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].title, "Test Event 1");
    EXPECT_EQ(formatDate(events[0].startDate), "2025-01-15T15:00:00Z"); // ten in New York
    EXPECT_EQ(formatDate(events[1].endDate), "2025-01-16T16:00:00Z");
    EXPECT_EQ(mixed.calendars[1].itemCount, 1u);
    ASSERT_EQ(mixed.problems.size(), 1u);
    EXPECT_THAT(mixed.problems[0].item, testing::HasSubstr("ournal"));

    const auto excepted = site.take(folder / "event_with_recurrence_exdates_on_different_lines.ics");
    ASSERT_EQ(excepted.calendars.size(), 1u);
    // Tuesdays from 27 March to 3 July 2012 are 15, of which five are excepted.
    EXPECT_EQ(site.events(excepted.calendars[0].calendar).size(), 10u);

    const auto standup = site.take(folder / "issue_165_missing_event.ics");
    ASSERT_EQ(standup.calendars.size(), 1u);
    const auto days = site.events(standup.calendars[0].calendar);
    ASSERT_EQ(days.size(), 14u); // working days from 3 to 22 July 2015
    EXPECT_EQ(formatDate(days.front().startDate), "2015-07-03T08:00:00Z");
    EXPECT_EQ(formatDate(days.back().startDate), "2015-07-22T08:00:00Z");

    const auto task = site.take(folder / "example.ics");
    ASSERT_EQ(task.calendars.size(), 1u);
    EXPECT_EQ(task.calendars[0].calendar.title, "example");
    EXPECT_EQ(site.reminders(task.calendars[0].calendar).at(0).title, "Submit Quebec Income Tax Return for 2006");
    EXPECT_EQ(site.take(folder / "created_calendar_with_unicode_fields.ics").calendars.at(0).calendar.title,
              "äöü ÄÖÜ €");
}

} // namespace
} // namespace bridge
