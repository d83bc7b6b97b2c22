#include "tests/adapters/eds/eds_store_test.h"
#include "tests/adapters/eds/stopped.h"

// A service that dies, hangs, does not start, is not there.

namespace bridge {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;

class EdsFailuresTest : public EdsStoreTest {
protected:
    // Long enough for a service that answers, short for one that never will.
    static constexpr EdsPatience little{milliseconds(5'000), milliseconds(5'000), milliseconds(200)};
    // No call ends by itself.
    static constexpr EdsPatience endless{hours(1), hours(1), milliseconds(200)};

    // A calendar whose backend has a process of its own, which is `webProcess`.
    std::string addWebCalendar() {
        const auto before = eds().backends();
        const auto web = EdsNeighbour::addWebCalendar("Fixtures", "http://127.0.0.1:9/fixtures.ics");
        EXPECT_TRUE(events(web).empty());
        for (const auto process : eds().backends())
            if (std::find(before.begin(), before.end(), process) == before.end()) webProcess = process;
        EXPECT_NE(webProcess, 0);
        return web;
    }

    pid_t webProcess = 0;
};

TEST_F(EdsFailuresTest, AKilledServiceIsFoundAgainByEveryCall) {
    const auto calendar = addCalendar();
    const auto event = save(calendar);
    const auto list = addCalendar("Shopping", EntityType::reminder);
    // What is not saved when it is killed is lost to everybody.
    eds().uninstall();
    eds().install();

    EXPECT_EQ(events(calendar), std::vector{event});
    eds().kill();
    EXPECT_EQ(events(calendar), std::vector{event});
    eds().kill();
    EXPECT_EQ(wait(store().item(event.identifier)), std::optional<CalendarItem>(event));
    eds().kill();
    EXPECT_TRUE(wait(store().reminders({list})).empty());
    eds().kill();
    EXPECT_FALSE(wait(store().sources()).empty());
    eds().kill();
    EXPECT_TRUE(listed(calendar).value().allowsContentModifications);
    eds().kill();
    auto changed = event;
    changed.title = "Changed";
    EXPECT_EQ(wait(store().saveEvent(changed)), changed);
    eds().kill();
    EXPECT_EQ(save(calendar, "Another").title, "Another");
}

TEST_F(EdsFailuresTest, AServiceKilledDuringACallIsAskedAgain) {
    open(endless);
    const auto calendar = addCalendar();
    const auto event = save(calendar);
    eds().uninstall();
    eds().install();
    EXPECT_EQ(events(calendar).size(), 1u);
    const auto processes = eds().backends();
    ASSERT_EQ(processes.size(), 1u);
    {
        const Stopped stopped(processes[0]);
        auto asking = reading(calendar);
        asking.start();
        // Through the registry, to the backend, which does not answer.
        advance(asking, 1);
        eds().kill();
        while (!asking.done())
            setting->loop().waitOnce();
        EXPECT_EQ(asking.take(), std::vector{event});
    }
    {
        const Stopped stopped(eds().backends().at(0));
        auto saving = store().removeEvent(event.identifier);
        saving.start();
        advance(saving, 1);
        eds().kill();
        while (!saving.done())
            setting->loop().waitOnce();
        saving.take();
    }
    EXPECT_TRUE(events(calendar).empty());
}

TEST_F(EdsFailuresTest, ACalendarThatHangsCostsItsOwnCallsAlone) {
    open(little);
    const auto calendar = addCalendar();
    const auto event = save(calendar);
    const auto web = addWebCalendar();
    const Stopped stopped(webProcess);
    auto hanging = reading(web);
    hanging.start();
    EXPECT_EQ(events(calendar), std::vector{event});
    EXPECT_EQ(save(calendar, "Another").title, "Another");
    EXPECT_TRUE(listed(calendar).value().allowsContentModifications);
    EXPECT_TRUE(listed(web));
    EXPECT_FALSE(hanging.done());
    while (!hanging.done())
        setting->loop().waitOnce();
    EXPECT_EQ(failure([&] { hanging.take(); }), "The calendar “Fixtures” did not answer in time.");
}

TEST_F(EdsFailuresTest, ACalendarThatHungAnswersAgain) {
    open(little);
    addCalendar();
    const auto web = addWebCalendar();
    {
        const Stopped stopped(webProcess);
        EXPECT_EQ(failure([&] { events(web); }), "The calendar “Fixtures” did not answer in time.");
    }
    EXPECT_TRUE(events(web).empty());
}

TEST_F(EdsFailuresTest, OneCalendarThatHangsFailsASearchOfSeveral) {
    open(little);
    const auto calendar = addCalendar();
    save(calendar);
    const auto web = addWebCalendar();
    const Stopped stopped(webProcess);
    EXPECT_EQ(failure([&] {
                  wait(store().events(noon, {noon.secondsSince1970 + 1}, {calendar, web}, 10));
              }),
              "The calendar “Fixtures” did not answer in time.");
}

TEST_F(EdsFailuresTest, AListingDoesNotWaitForAHungService) {
    open(endless);
    const auto known = addCalendar("Known");
    EXPECT_TRUE(listed(known).value().allowsContentModifications);
    const auto unknown = EdsNeighbour::addLocalCalendar(EntityType::event, "Unknown");
    const Stopped stopped(eds().factory());
    EXPECT_TRUE(listed(known).value().allowsContentModifications);
    EXPECT_FALSE(listed(unknown).value().allowsContentModifications);
    EXPECT_FALSE(wait(store().sources()).empty());
    // Whoever is connected is not concerned.
    EXPECT_EQ(save(known).title, "Sowing");
}

TEST_F(EdsFailuresTest, ARegistryThatHangsIsAnErrorInItsTime) {
    open(little);
    const auto calendar = addCalendar();
    {
        const Stopped stopped(eds().registry());
        EXPECT_EQ(failure([&] { wait(store().sources()); }), "Evolution Data Server did not answer in time.");
        EXPECT_EQ(failure([&] { events(calendar); }), "Evolution Data Server did not answer in time.");
        EXPECT_NE(failure([&] { addCalendar("Another"); }), "");
    }
    EXPECT_TRUE(events(calendar).empty());
}

TEST_F(EdsFailuresTest, ADroppedCallLetsTheNextOneThrough) {
    open(endless);
    addCalendar();
    const auto web = addWebCalendar();
    {
        const Stopped stopped(webProcess);
        auto dropped = reading(web);
        dropped.start();
        advance(dropped, 1);
    }
    EXPECT_TRUE(events(web).empty());
}

TEST_F(EdsFailuresTest, DestroyingTheStoreWaitsForNobody) {
    open(endless);
    addCalendar();
    const auto web = addWebCalendar();
    const Stopped stopped(webProcess);
    {
        auto dropped = reading(web);
        dropped.start();
        advance(dropped, 1);
    }
    setting->reopen();
}

TEST_F(EdsFailuresTest, AServiceThatDoesNotStartIsAnErrorAndNoEmptyDesktop) {
    eds().uninstall();
    eds().installBroken();
    setting->reopen();
    EXPECT_NE(failure([&] { wait(store().sources()); }), "");
    EXPECT_NE(failure([&] { wait(store().calendars(EntityType::event)); }), "");
    EXPECT_NE(failure([&] { wait(store().defaultCalendar(EntityType::event)); }), "");
    EXPECT_NE(failure([&] { events("system-calendar"); }), "");
    eds().install();
    EXPECT_FALSE(wait(store().sources()).empty());
}

TEST_F(EdsFailuresTest, ThereIsNoStoreWhereItIsNotInstalled) {
    EventLoop loop;
    eds().uninstall();
    EXPECT_FALSE(loop.runUntilDone(EdsEventStore::open(loop)));
    EXPECT_EQ(failure([&] { wait(store().sources()); }), "Evolution Data Server is not there.");
    eds().install();
    EXPECT_TRUE(loop.runUntilDone(EdsEventStore::open(loop)));
}

// In a process of its own, for GLib keeps to the first bus it meets.
class EdsDeathTest : public testing::Test {
protected:
    EdsDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    [[noreturn]] static void exitWithWhetherItOpens() {
        EventLoop loop;
        const auto store = loop.runUntilDone(EdsEventStore::open(loop));
        _exit(store ? 1 : 0);
    }
    [[noreturn]] static void openOverABusThatIsGone() {
        setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", 1);
        exitWithWhetherItOpens();
    }
    [[noreturn]] static void openWithoutASession() {
        for (const auto* name : {"DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR", "DISPLAY"})
            unsetenv(name);
        exitWithWhetherItOpens();
    }
};

TEST_F(EdsDeathTest, DoesNotOpenWithoutABus) {
    EXPECT_EXIT(openOverABusThatIsGone(), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(openWithoutASession(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace bridge
