#include "tests/adapters/sqlite/store_test.h"

#include "adapters/sqlite/database.h"
#include "adapters/sqlite/event_table.h"

namespace bridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> titlesOf(const std::vector<Calendar>& calendars) {
    std::vector<std::string> titles;
    for (const auto& calendar : calendars)
        titles.push_back(calendar.title);
    return titles;
}

class SqliteEventStoreTest : public SqliteStoreTest {};

TEST_F(SqliteEventStoreTest, BeginsWithACalendarAndAListOnThisComputer) {
    const auto sources = wait(store->sources());
    ASSERT_EQ(sources.size(), 1u);
    EXPECT_EQ(sources[0].title, "On This Computer");
    EXPECT_EQ(sources[0].type, SourceType::local);
    EXPECT_THAT(titlesOf(wait(store->calendars(EntityType::event))), ElementsAre("Calendar"));
    EXPECT_THAT(titlesOf(wait(store->calendars(EntityType::reminder))), ElementsAre("Reminders"));
    EXPECT_EQ(defaultCalendar().title, "Calendar");
    EXPECT_EQ(defaultCalendar(EntityType::reminder).title, "Reminders");
}

TEST_F(SqliteEventStoreTest, KeepsItsIdentifiers) {
    const auto before = wait(store->calendars(EntityType::event));
    reopen();
    EXPECT_EQ(wait(store->calendars(EntityType::event)), before);
}

TEST_F(SqliteEventStoreTest, ADefaultThatIsRemovedIsFollowedByTheFirstThatTakesItems) {
    const auto first = defaultCalendar();
    store->importCalendar({EntityType::event, account().id, "Fixed", false}, {});
    const auto garden = wait(store->addCalendar(EntityType::event, account().id, "Garden"));
    const auto work = wait(store->addCalendar(EntityType::event, account().id, "Work"));
    store->setDefaultCalendar(work.id);
    EXPECT_EQ(defaultCalendar().id, work.id);
    wait(store->removeCalendar(work.id));
    EXPECT_EQ(defaultCalendar().id, first.id);
    wait(store->removeCalendar(first.id));
    EXPECT_EQ(defaultCalendar().id, garden.id);
    wait(store->removeCalendar(garden.id));
    EXPECT_EQ(wait(store->defaultCalendar(EntityType::event)), std::nullopt);
}

TEST_F(SqliteEventStoreTest, ACalendarThatTakesNothingIsNotTheDefault) {
    const auto fixed = store->importCalendar({EntityType::event, account().id, "Fixed", false}, {});
    EXPECT_EQ(failureOf([&] { store->setDefaultCalendar(fixed.id); }), "The calendar “Fixed” is read-only.");
    EXPECT_EQ(defaultCalendar().title, "Calendar");
}

TEST_F(SqliteEventStoreTest, AReadOnlyCalendarRefusesEveryChange) {
    std::vector<CalendarObject> objects;
    objects.push_back(object("one", "DTSTART:20260814T090000Z\nSUMMARY:Feast\n"));
    const auto fixed = store->importCalendar({EntityType::event, account().id, "Holidays", false}, objects);
    EXPECT_FALSE(fixed.allowsContentModifications);
    auto event = events(earliestDate, latestDate, {fixed.id}).at(0);
    const std::string refusal = "The calendar “Holidays” is read-only.";

    EXPECT_EQ(failureOf([&] { wait(store->saveEvent(sowing(fixed.id))); }), refusal);
    EXPECT_EQ(failureOf([&] { wait(store->removeEvent(event.identifier)); }), refusal);
    EXPECT_EQ(failureOf([&] { wait(store->renameCalendar(fixed.id, "Mine")); }), refusal);
    EXPECT_EQ(failureOf([&] { wait(store->removeCalendar(fixed.id)); }), refusal);
    event.title = "Mine";
    EXPECT_EQ(failureOf([&] { wait(store->saveEvent(event)); }), refusal);
    event.calendarID = defaultCalendar().id;
    EXPECT_EQ(failureOf([&] { wait(store->saveEvent(event)); }), refusal) << "moved out";
    auto mine = wait(store->saveEvent(sowing(defaultCalendar().id)));
    mine.calendarID = fixed.id;
    EXPECT_EQ(failureOf([&] { wait(store->saveEvent(mine)); }), refusal) << "moved in";

    EXPECT_EQ(events(earliestDate, latestDate, {fixed.id}).at(0).title, "Feast");
    EXPECT_EQ(allEvents().size(), 1u);
}

TEST_F(SqliteEventStoreTest, AReadOnlyListSaysThatItIsAList) {
    const auto fixed = store->importCalendar({EntityType::reminder, account().id, "Given", false}, {});
    EXPECT_EQ(failureOf([&] { wait(store->saveReminder(seeds(fixed.id))); }),
              "The reminder list “Given” is read-only.");
}

TEST_F(SqliteEventStoreTest, AnAccountOfSubscriptionsTakesNothing) {
    for (const auto type : {SourceType::subscribed, SourceType::birthdays}) {
        const auto source = store->addSource("Feasts", type);
        EXPECT_EQ(failureOf([&] { wait(store->addCalendar(EntityType::event, source, "Mine")); }),
                  "The account “Feasts” takes no calendars.");
        const auto calendar = store->importCalendar({EntityType::event, source, "Holidays"}, {});
        EXPECT_FALSE(calendar.allowsContentModifications);
        EXPECT_FALSE(wait(store->calendar(calendar.id))->allowsContentModifications);
        EXPECT_EQ(failureOf([&] { wait(store->saveEvent(sowing(calendar.id))); }),
                  "The calendar “Holidays” is read-only.");
        EXPECT_EQ(failureOf([&] { wait(store->removeCalendar(calendar.id)); }),
                  "The calendar “Holidays” is read-only.");
    }
    EXPECT_EQ(wait(store->calendars(EntityType::event)).size(), 3u);
}

TEST_F(SqliteEventStoreTest, OccurrencesHaveTheirItemsNameAndTheirOwn) {
    const auto calendar = defaultCalendar().id;
    std::vector<CalendarObject> objects;
    objects.push_back(object("day", "DTSTART;VALUE=DATE:20260814\nRRULE:FREQ=DAILY;COUNT=2\n"));
    objects.push_back(object("wall", "DTSTART:20260814T090000\nRRULE:FREQ=DAILY;COUNT=2\n"));
    objects.push_back(object("utc", "DTSTART:20260814T090000Z\nRRULE:FREQ=DAILY;COUNT=2\n"));
    objects.push_back(object("single", "DTSTART:20260814T090000Z\n"));
    store->importItems(calendar, objects);
    std::map<std::string, std::vector<std::string>> names;
    for (const auto& event : allEvents())
        names[*event.externalIdentifier].push_back(event.identifier.substr(36));
    EXPECT_THAT(names["day"], ElementsAre("/20260814", "/20260815"));
    EXPECT_THAT(names["wall"], ElementsAre("/20260814T090000", "/20260815T090000"));
    EXPECT_THAT(names["utc"], ElementsAre("/20260814T090000Z", "/20260815T090000Z"));
    EXPECT_THAT(names["single"], ElementsAre(""));
}

TEST_F(SqliteEventStoreTest, ANameThatIsAlmostRightFindsNothing) {
    const auto calendar = defaultCalendar().id;
    std::vector<CalendarObject> objects;
    objects.push_back(object("utc", "DTSTART:20260814T090000Z\nRRULE:FREQ=DAILY;COUNT=2\n"));
    store->importItems(calendar, objects);
    const auto occurrence = allEvents().at(0).identifier;
    const auto series = occurrence.substr(0, 36);
    const auto single = wait(store->saveEvent(sowing(calendar))).identifier;
    const auto reminder = wait(store->saveReminder(seeds(defaultCalendar(EntityType::reminder).id))).identifier;
    for (const auto& name :
         {occurrence + "/", series + "/", series + "/20260816T090000Z", series + "/20260814T090000", series + "/x",
          single + "/", single + "/20260814T114000Z", reminder + "/", reminder + "/20260814", std::string("/"),
          std::string(), "/" + series, " " + single, single + std::string("\0", 1), series + std::string("/\0", 2)})
        EXPECT_FALSE(wait(store->item(name))) << name;
    EXPECT_EQ(std::get<CalendarEvent>(wait(store->item(series)).value()).identifier, occurrence);
    EXPECT_TRUE(wait(store->item(single)));
    EXPECT_TRUE(wait(store->item(reminder)));
}

TEST_F(SqliteEventStoreTest, AnImportIsWholeOrNotAtAll) {
    std::vector<CalendarObject> objects;
    objects.push_back(object("one", "DTSTART:20260814T090000Z\n"));
    objects.push_back(object("two", "DTSTART:20260814T090000Z\n"));
    objects.push_back(object("one", "DTSTART:20260815T090000Z\n"));
    EXPECT_EQ(failureOf([&] {
                  store->importCalendar({EntityType::event, account().id, "Twice"}, objects);
              }),
              "The calendar “Twice” has this item already.");
    EXPECT_EQ(failureOf([&] {
                  store->importCalendar({EntityType::reminder, account().id, "Tasks"}, objects);
              }),
              "The reminder list “Tasks” takes no items of that kind.");
    EXPECT_EQ(wait(store->calendars(EntityType::event)).size(), 1u);
    EXPECT_EQ(wait(store->calendars(EntityType::reminder)).size(), 1u);
    objects.pop_back();
    const auto calendar = store->importCalendar({EntityType::event, account().id, "Once"}, objects);
    EXPECT_EQ(events(earliestDate, latestDate, {calendar.id}).size(), 2u);
}

TEST_F(SqliteEventStoreTest, ACopyOfAnEventKeepsAnotherFromMovingThere) {
    const auto other = wait(store->addCalendar(EntityType::event, account().id, "Garden")).id;
    std::vector<CalendarObject> objects;
    objects.push_back(object("one", "DTSTART:20260814T090000Z\n"));
    store->importItems(defaultCalendar().id, objects);
    store->importItems(other, objects);
    auto event = allEvents().at(0);
    event.calendarID = other;
    EXPECT_EQ(failureOf([&] { wait(store->saveEvent(event)); }), "The calendar “Garden” has this item already.");
    EXPECT_EQ(allEvents().size(), 1u);
}

TEST_F(SqliteEventStoreTest, FindsACalendarOnlyByItsOwnKind) {
    const auto list = defaultCalendar(EntityType::reminder).id;
    EXPECT_NE(failureOf([&] { wait(store->events({0}, {1}, {list}, 1)); }), "");
    EXPECT_NE(failureOf([&] { wait(store->reminders({defaultCalendar().id})); }), "");
    EXPECT_NE(failureOf([&] { wait(store->saveEvent(sowing(list))); }), "");
    EXPECT_NE(failureOf([&] { wait(store->saveReminder(seeds(defaultCalendar().id))); }), "");
}

TEST_F(SqliteEventStoreTest, AnItemThatCanNotBeUnderstoodSaysSoAndLeavesTheOthers) {
    const auto calendar = defaultCalendar().id;
    const auto bad = wait(store->saveEvent(sowing(calendar))).identifier;
    const auto good = wait(store->saveEvent(sowing(calendar))).identifier;
    Database(path, "calendars", {}).run("UPDATE item SET text = 'nonsense' WHERE id = ?", bad);
    EXPECT_NE(failureOf([&] { wait(store->item(bad)); }), "");
    EXPECT_NE(failureOf([&] { wait(store->removeEvent(bad)); }), "");
    EXPECT_TRUE(wait(store->item(good)));
    EXPECT_EQ(allEvents().size(), 2u);
}

TEST_F(SqliteEventStoreTest, ADamagedStoreFailsEveryCallAndBeginsAnewWithTheNextStart) {
    wait(store->saveEvent(sowing(defaultCalendar().id)));
    const auto calendar = defaultCalendar().id;
    store.reset();
    putFile(path, std::string(50'000, 'g'));
    reopen();
    const auto said = failureOf([&] { wait(store->sources()); });
    EXPECT_THAT(said, HasSubstr("The file of the calendars on this computer is damaged. It is kept as " + path +
                                ".damaged-2026-08-14."));
    EXPECT_EQ(failureOf([&] { wait(store->calendars(EntityType::event)); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->calendar("x")); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->defaultCalendar(EntityType::event)); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->addCalendar(EntityType::event, "x", "y")); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->renameCalendar("x", "y")); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->removeCalendar("x")); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->events({0}, {1}, {}, 1)); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->reminders({})); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->item("x")); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->saveEvent(sowing(calendar))); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->removeEvent("x")); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->saveReminder(seeds("x"))); }), said);
    EXPECT_EQ(failureOf([&] { wait(store->removeReminder("x")); }), said);

    reopen();
    EXPECT_THAT(allEvents(), IsEmpty());
    EXPECT_NE(defaultCalendar().id, calendar);
}

TEST_F(SqliteEventStoreTest, AStoreThatIsHeldWorksAgainWhenItIsLetGo) {
    const auto calendar = defaultCalendar().id;
    Database other(path, "calendars", {});
    std::optional<Transaction> held;
    held.emplace(other, Transaction::Kind::write);
    EXPECT_EQ(failureOf([&] { wait(store->saveEvent(sowing(calendar))); }),
              "The calendars on this computer are in use by another program. Try again in a moment.");
    EXPECT_THAT(allEvents(), IsEmpty());
    reopen();
    EXPECT_THAT(allEvents(), IsEmpty()) << "read while it is held";
    held.reset();
    wait(store->saveEvent(sowing(calendar)));
    EXPECT_EQ(allEvents().size(), 1u);
}

TEST(AlarmText, IsReadAsItWasWritten) {
    const std::vector<Alarm> alarms{{-900.0}, {0.0}, {0.1}, {-1e300}, {Date{1'786'700'000}}, {Date{-5}}, {3600.0}};
    EXPECT_EQ(readAlarms(alarmText(alarms)), alarms);
    EXPECT_EQ(alarmText({{-900.0}, {Date{7}}}), "-900 @7");
    EXPECT_THAT(readAlarms(""), IsEmpty());
    for (const auto* text : {"x", "@", "@x", " ", "1 ", "-", "@1@2", "1 x 2"})
        readAlarms(text); // whatever it says
}

} // namespace
} // namespace bridge
