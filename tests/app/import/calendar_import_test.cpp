#include "tests/app/import/import_site.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

TEST(CalendarImport, MakesACalendarOfEventsAndAListOfTasks) {
    ImportSite site;
    const auto eventsBefore = site.calendars(EntityType::event).size();
    const auto listsBefore = site.calendars(EntityType::reminder).size();
    const auto file = site.takeText("Allotment.ics", calendarText(sowingEvent + seedsTask));
    EXPECT_EQ(file.failure, std::nullopt);
    EXPECT_TRUE(file.isWhole());
    ASSERT_EQ(file.calendars.size(), 2u);
    EXPECT_EQ(file.calendars[0].itemCount, 1u);
    EXPECT_EQ(file.calendars[1].itemCount, 1u);
    const auto& calendar = file.calendars[0].calendar;
    const auto& list = file.calendars[1].calendar;
    EXPECT_EQ(calendar.entityType, EntityType::event);
    EXPECT_EQ(list.entityType, EntityType::reminder);
    EXPECT_EQ(calendar.title, "Allotment");
    EXPECT_EQ(list.title, "Allotment");
    EXPECT_TRUE(calendar.allowsContentModifications);
    EXPECT_EQ(calendar.source.type, SourceType::local);
    EXPECT_EQ(site.calendars(EntityType::event).size(), eventsBefore + 1);
    EXPECT_EQ(site.calendars(EntityType::reminder).size(), listsBefore + 1);

    const auto events = site.events(calendar);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].title, "Sowing");
    EXPECT_EQ(events[0].externalIdentifier, "sowing");
    const auto reminders = site.reminders(list);
    ASSERT_EQ(reminders.size(), 1u);
    EXPECT_EQ(reminders[0].title, "Seeds");
}

TEST(CalendarImport, MakesNoListForAFileWithoutTasks) {
    ImportSite site;
    const auto file = site.takeText("Garden.ics", calendarText(sowingEvent));
    ASSERT_EQ(file.calendars.size(), 1u);
    EXPECT_EQ(file.calendars[0].calendar.entityType, EntityType::event);
}

TEST(CalendarImport, TakesTheTitleFromTheFile) {
    ImportSite site;
    const auto titled = [&](const std::string& line) {
        const auto file = site.takeText("File.ics", calendarText(line + "\r\n" + sowingEvent));
        return file.calendars.empty() ? "" : file.calendars[0].calendar.title;
    };
    EXPECT_EQ(titled("X-WR-CALNAME:Grüne Hölle 🌱"), "Grüne Hölle 🌱");
    EXPECT_EQ(titled("X-WR-CALNAME: Peas\\, beans "), "Peas, beans");
    EXPECT_EQ(titled("X-WR-CALNAME:  "), "File");
    EXPECT_EQ(titled("X-WR-CALNAME:Two\\nlines"), "Two lines");
}

TEST(CalendarImport, NumbersATitleThatIsTaken) {
    ImportSite site;
    const auto text = calendarText(sowingEvent);
    EXPECT_EQ(site.takeText("Garden.ics", text).calendars.at(0).calendar.title, "Garden");
    EXPECT_EQ(site.takeText("Garden.ics", text).calendars.at(0).calendar.title, "Garden 2");
    EXPECT_EQ(site.takeText("Garden.ics", text).calendars.at(0).calendar.title, "Garden 3");
    // The title of a list does not stand in a calendar's way.
    EXPECT_EQ(site.takeText("Garden.ics", calendarText(seedsTask)).calendars.at(0).calendar.title, "Garden");
}

TEST(CalendarImport, LeavesEarlierImportsAlone) {
    ImportSite site;
    const auto first = site.takeText("Garden.ics", calendarText(sowingEvent)).calendars.at(0).calendar;
    const auto before = site.events(first);
    const auto second = site.takeText("Garden.ics", calendarText(sowingEvent)).calendars.at(0).calendar;
    EXPECT_NE(first.id, second.id);
    EXPECT_EQ(site.events(first), before);
    EXPECT_EQ(site.events(second).size(), 1u);
}

TEST(CalendarImport, LeavesOutWhatIsBrokenAndSaysSo) {
    ImportSite site;
    const std::string broken = "BEGIN:VEVENT\r\nUID:broken\r\nSUMMARY:Broken\r\nDTSTART:yesterday\r\nEND:VEVENT\r\n";
    const auto file = site.takeText("Garden.ics", calendarText(broken + sowingEvent));
    EXPECT_EQ(file.failure, std::nullopt);
    EXPECT_FALSE(file.isWhole());
    ASSERT_FALSE(file.problems.empty());
    EXPECT_THAT(file.problems[0].item, testing::HasSubstr("Broken"));
    EXPECT_NE(file.problems[0].reason, "");
    ASSERT_EQ(file.calendars.size(), 1u);
    EXPECT_EQ(file.calendars[0].itemCount, 1u);
    EXPECT_EQ(site.events(file.calendars[0].calendar).size(), 1u);
}

TEST(CalendarImport, TakesNothingWhenTheStoreIsGone) {
    ImportSite site;
    site.takeText("Garden.ics", calendarText(sowingEvent));
    const auto before = site.calendars(EntityType::event);
    std::filesystem::rename(site.folder / "calendars.db", site.folder / "lost.db");
    const auto file = site.takeText(
        "Garden.ics", calendarText(sowingEvent + seedsTask + "BEGIN:VJOURNAL\r\nUID:j\r\nEND:VJOURNAL\r\n"));
    EXPECT_TRUE(file.failure);
    EXPECT_TRUE(file.problems.empty());
    EXPECT_TRUE(file.calendars.empty());
    std::filesystem::rename(site.folder / "lost.db", site.folder / "calendars.db");
    EXPECT_EQ(site.calendars(EntityType::event), before);
}

TEST(CalendarImport, IsSeenByAStoreThatIsOpenAlready) {
    ImportSite site;
    SqliteEventStore running(site.folder / "calendars.db", site.clock);
    const auto before = site.loop.runUntilDone(running.calendars(EntityType::event)).size();
    site.takeText("Garden.ics", calendarText(sowingEvent));
    EXPECT_EQ(site.loop.runUntilDone(running.calendars(EntityType::event)).size(), before + 1);
}

} // namespace
} // namespace bridge
