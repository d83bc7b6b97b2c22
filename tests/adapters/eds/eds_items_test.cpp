#include "tests/adapters/eds/eds_store_test.h"

// Events and reminders that other programs have to do with too.

namespace bridge {
namespace {

using EdsItemsTest = EdsStoreTest;

TEST_F(EdsItemsTest, ThatAreDeletedMeanwhileAreGone) {
    const auto calendar = addCalendar();
    auto event = save(calendar);
    EdsNeighbour::remove(calendar, event.externalIdentifier.value());
    EXPECT_EQ(wait(store().item(event.identifier)), std::nullopt);
    event.title = "Changed";
    EXPECT_EQ(failure([&] { wait(store().saveEvent(event)); }), "The event is no longer there.");
    EXPECT_EQ(failure([&] { wait(store().removeEvent(event.identifier)); }), "The event is no longer there.");
    event.calendarID = addCalendar("Other");
    EXPECT_EQ(failure([&] { wait(store().saveEvent(event)); }), "The event is no longer there.");
    EXPECT_TRUE(events(event.calendarID).empty());
}

TEST_F(EdsItemsTest, DoNotMoveWhereTheirUIDIsTaken) {
    const auto from = addCalendar("From");
    const auto to = addCalendar("To");
    for (const auto& calendar : {from, to})
        put(calendar, "one", "DTSTART:20260814T120000Z\r\nDURATION:PT1H\r\nSUMMARY:" + calendar + "\r\n");
    auto event = events(from).at(0);
    event.calendarID = to;
    EXPECT_EQ(failure([&] { wait(store().saveEvent(event)); }), "The calendar “To” already holds this item.");
    ASSERT_EQ(events(from).size(), 1u);
    EXPECT_EQ(events(from)[0].title, from);
    ASSERT_EQ(events(to).size(), 1u);
    EXPECT_EQ(events(to)[0].title, to);
}

TEST_F(EdsItemsTest, DoNotMoveIntoACalendarThatTakesNone) {
    const auto from = addCalendar("From");
    const auto to = EdsNeighbour::addReadOnlyCalendar(EntityType::event, "To");
    auto event = save(from);
    event.calendarID = to;
    EXPECT_EQ(failure([&] { wait(store().saveEvent(event)); }), "The calendar “To” is read-only.");
    EXPECT_EQ(events(from).size(), 1u);
    EXPECT_TRUE(events(to).empty());
}

// Another program may spell the same moment in another zone, and only that spelling takes the exception out again.
TEST_F(EdsItemsTest, AreTakenOutOfASeriesHoweverTheirExceptionIsSpelt) {
    const auto calendar = addCalendar();
    const std::string series = "DTSTART;TZID=Europe/Lisbon:20260814T130000\r\nDURATION:PT1H\r\nRRULE:FREQ=DAILY;COUNT="
                               "3\r\nSUMMARY:Series\r\n";
    for (const std::string spelling :
         {"RECURRENCE-ID:20260815T120000Z", "RECURRENCE-ID;TZID=Europe/Lisbon:20260815T130000"}) {
        put(calendar, "series", series);
        put(calendar, "series", spelling + "\r\nDTSTART:20260815T150000Z\r\nDURATION:PT1H\r\nSUMMARY:Moved\r\n");
        auto all = events(calendar);
        ASSERT_EQ(all.size(), 3u) << spelling;
        ASSERT_EQ(all[1].title, "Moved");
        wait(store().removeEvent(all[1].identifier));
        const auto left = events(calendar);
        EXPECT_EQ(left, (std::vector{all[0], all[2]})) << spelling;
        EXPECT_EQ(wait(store().item(all[1].identifier)), std::nullopt);
        EXPECT_EQ(EdsNeighbour::stored(calendar, "series").find("Moved"), std::string::npos);
        EdsNeighbour::remove(calendar, "series");
    }
}

TEST_F(EdsItemsTest, OfASeriesAreFoundWhereTheyMovedAlsoAfterTheServiceWasRestarted) {
    const auto calendar = addCalendar();
    put(calendar, "series", "DTSTART:20260814T120000Z\r\nDURATION:PT1H\r\nRRULE:FREQ=DAILY;COUNT=3\r\nSUMMARY:S\r\n");
    auto moved = events(calendar).at(1);
    moved.startDate = {moved.startDate.secondsSince1970 + 30 * 86400};
    moved.endDate = {moved.endDate.secondsSince1970 + 30 * 86400};
    EXPECT_EQ(wait(store().saveEvent(moved)), moved);
    const auto around = [&](Date moment) {
        return wait(store().events(moment, {moment.secondsSince1970 + 3600}, {calendar}, 10));
    };
    for (const bool restarted : {false, true}) {
        if (restarted) {
            eds().uninstall();
            eds().install();
        }
        EXPECT_EQ(around(moved.startDate), std::vector{moved});
        EXPECT_TRUE(around({noon.secondsSince1970 + 86400}).empty());
        EXPECT_EQ(wait(store().item(moved.identifier)), std::optional<CalendarItem>(moved));
    }
}

TEST_F(EdsItemsTest, ThatAreNoEventsAreNoneToOtherCalls) {
    const auto list = addCalendar("Shopping", EntityType::reminder);
    Reminder reminder;
    reminder.listID = list;
    reminder.title = "Seeds";
    const auto saved = wait(store().saveReminder(reminder));
    EXPECT_EQ(failure([&] { wait(store().removeEvent(saved.identifier)); }), "There is no such calendar.");
    EXPECT_EQ(failure([&] { events(list); }), "There is no such calendar.");
    EXPECT_EQ(wait(store().reminders({list})), std::vector{saved});
}

// One that stops in the middle of a move has moved or has not.
TEST_F(EdsItemsTest, AreInOneCalendarWhereverAMoveIsDropped) {
    const auto first = addCalendar("First");
    const auto second = addCalendar("Second");
    auto event = save(first);
    for (int turns = 0; turns < 12; ++turns) {
        const auto from = event.calendarID;
        const auto to = from == first ? second : first;
        auto moving = event;
        moving.calendarID = to;
        {
            auto dropped = store().saveEvent(moving);
            dropped.start();
            advance(dropped, turns);
        }
        // The calendar that it leaves answers when the move is through.
        auto found = events(from);
        const auto arrived = events(to);
        found.insert(found.end(), arrived.begin(), arrived.end());
        ASSERT_EQ(found.size(), 1u) << turns;
        event = found[0];
    }
}

} // namespace
} // namespace bridge
