#include "adapters/eds/source_kind.h"
#include "tests/adapters/eds/eds_store_test.h"

// Accounts and calendars, as the desktop has them.

namespace bridge {
namespace {

using EdsCalendarsTest = EdsStoreTest;

TEST(EdsSourceKinds, AreTold) {
    EXPECT_EQ(sourceTypeOf("local"), SourceType::local);
    EXPECT_EQ(sourceTypeOf("caldav"), SourceType::calDAV);
    EXPECT_EQ(sourceTypeOf("google"), SourceType::calDAV);
    EXPECT_EQ(sourceTypeOf("ews"), SourceType::exchange);
    EXPECT_EQ(sourceTypeOf("webcal"), SourceType::subscribed);
    EXPECT_EQ(sourceTypeOf("weather"), SourceType::subscribed);
    EXPECT_EQ(sourceTypeOf("contacts"), SourceType::birthdays);
    EXPECT_EQ(sourceTypeOf("a backend to come"), SourceType::calDAV);
}

TEST_F(EdsCalendarsTest, AreThoseOfAFreshDesktop) {
    const CalendarSource local{"local-stub", "On This Computer", SourceType::local};
    const CalendarSource contacts{"contacts-stub", "Contacts", SourceType::birthdays};
    EXPECT_EQ(wait(store().sources()), (std::vector{contacts, local}));
    const Calendar birthdays{"birthdays", EntityType::event, "Birthdays & Anniversaries", contacts, false};
    const Calendar personal{"system-calendar", EntityType::event, "Personal", local, true};
    EXPECT_EQ(wait(store().calendars(EntityType::event)), (std::vector{birthdays, personal}));
    const Calendar tasks{"system-task-list", EntityType::reminder, "Personal", local, true};
    EXPECT_EQ(wait(store().calendars(EntityType::reminder)), std::vector{tasks});
    EXPECT_EQ(wait(store().defaultCalendar(EntityType::event)), personal);
    EXPECT_EQ(wait(store().defaultCalendar(EntityType::reminder)), tasks);
}

TEST_F(EdsCalendarsTest, ThatAreSwitchedOffAreNotShown) {
    const auto calendar = EdsNeighbour::addLocalCalendar(EntityType::event, "Garden");
    EXPECT_TRUE(listed(calendar));
    EdsNeighbour::setEnabled(calendar, false);
    EXPECT_FALSE(listed(calendar));
    EXPECT_EQ(wait(store().calendar(calendar)), std::nullopt);
    EXPECT_EQ(failure([&] { events(calendar); }), "There is no such calendar.");
    EdsNeighbour::setEnabled(calendar, true);
    EXPECT_TRUE(listed(calendar));
}

TEST_F(EdsCalendarsTest, FollowWhatAnotherProgramDoes) {
    const auto calendar = addCalendar("Garden");
    EdsNeighbour::rename(calendar, "Allotment");
    EXPECT_EQ(listed(calendar).value().title, "Allotment");
    EdsNeighbour::removeAllCalendars();
    EXPECT_FALSE(listed(calendar));
    EXPECT_EQ(failure([&] { save(calendar); }), "There is no such calendar.");
}

TEST_F(EdsCalendarsTest, FromAnAddressAreSubscriptionsAndReadOnly) {
    const auto web = EdsNeighbour::addWebCalendar("Fixtures", "http://127.0.0.1:9/fixtures.ics");
    const auto calendar = listed(web);
    ASSERT_TRUE(calendar);
    EXPECT_EQ(calendar->source, (CalendarSource{"webcal-stub", "On The Web", SourceType::subscribed}));
    EXPECT_FALSE(calendar->allowsContentModifications);
    EXPECT_EQ(failure([&] { save(web); }), "The calendar “Fixtures” is read-only.");
    EXPECT_EQ(failure([&] { wait(store().addCalendar(EntityType::event, "webcal-stub", "Another")); }),
              "The account “On The Web” takes no new calendars.");
}

TEST_F(EdsCalendarsTest, ThatTakeNoChangesSayThat) {
    const auto calendar = EdsNeighbour::addReadOnlyCalendar(EntityType::event, "Holidays");
    put(calendar, "day", "DTSTART;VALUE=DATE:20260815\r\nSUMMARY:Assumption\r\n");
    EXPECT_FALSE(listed(calendar).value().allowsContentModifications);
    const auto day = events(calendar).at(0);
    EXPECT_EQ(failure([&] { save(calendar); }), "The calendar “Holidays” is read-only.");
    EXPECT_EQ(failure([&] { wait(store().removeEvent(day.identifier)); }), "The calendar “Holidays” is read-only.");
    const auto list = EdsNeighbour::addReadOnlyCalendar(EntityType::reminder, "Chores");
    Reminder reminder;
    reminder.listID = list;
    EXPECT_EQ(failure([&] { wait(store().saveReminder(reminder)); }), "The list “Chores” is read-only.");
}

TEST_F(EdsCalendarsTest, OfTheSystemStay) {
    EXPECT_EQ(failure([&] { wait(store().removeCalendar("system-calendar")); }),
              "The calendar “Personal” can't be removed.");
    EXPECT_TRUE(listed("system-calendar"));
}

TEST_F(EdsCalendarsTest, HaveTheUsersDefault) {
    const auto calendar = addCalendar("Garden");
    EdsNeighbour::setDefault(EntityType::event, calendar);
    EXPECT_EQ(wait(store().defaultCalendar(EntityType::event)), listed(calendar));
    const auto closed = EdsNeighbour::addReadOnlyCalendar(EntityType::event, "Holidays");
    EdsNeighbour::setDefault(EntityType::event, closed);
    EXPECT_EQ(wait(store().defaultCalendar(EntityType::event)), std::nullopt);
    EdsNeighbour::setDefault(EntityType::event, "system-calendar");
}

} // namespace
} // namespace bridge
