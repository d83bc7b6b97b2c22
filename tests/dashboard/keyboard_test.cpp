#include "tests/dashboard/dashboard_test.h"

namespace bridge {
namespace {

class Keyboard : public DashboardTest {
protected:
    QStringList stops(const QString& first, Qt::Key key = Qt::Key_Tab, int limit = 60) {
        driver->focus(first);
        QStringList names;
        for (int step = 0; step < limit; ++step) {
            names << driver->focused();
            driver->press(key);
            if (driver->focused() == first) break;
        }
        return names;
    }
    bool isInSight(const QString& name) {
        const auto* viewport = driver->item("viewport");
        const auto y = driver->item(name)->mapToItem(viewport, {}).y();
        return y >= 0 && y + driver->item(name)->height() <= viewport->height();
    }
};

TEST_F(Keyboard, GoesFromTopToBottomAndRound) {
    bridge.authorization->setStatus(PrivacyService::calendar, 3);
    open();
    EXPECT_EQ(stops("group.calendar"), (QStringList{"group.calendar",
                                                    "group.reminders",
                                                    "access.reminders",
                                                    "group.contacts",
                                                    "access.contacts",
                                                    "group.music",
                                                    "access.music",
                                                    "group.files",
                                                    "group.pages",
                                                    "group.numbers",
                                                    "group.keynote",
                                                    "group.locationMaps",
                                                    "access.locationMaps",
                                                    "launchAtLogin",
                                                    "serverAddress",
                                                    "pairingCode",
                                                    "pair",
                                                    "refresh",
                                                    "privacySettings",
                                                    "quit"}));
}

TEST_F(Keyboard, GoesThroughAnOpenGroup) {
    openAt("calendar");
    model().setEnabled(BridgeCapability::calendarCreate, true);
    bridge.loop.runUntilDone(model().setCalendar("team", true));
    const QStringList inside{"group.calendar",
                             "enableAll.calendar",
                             "disableAll.calendar",
                             "capability.calendar.events.read",
                             "capability.calendar.events.create",
                             "capability.calendar.events.update",
                             "capability.calendar.events.delete",
                             "capability.calendar.calendars.read",
                             "capability.calendar.calendars.create",
                             "capability.calendar.calendars.update",
                             "capability.calendar.calendars.delete",
                             "selectAll.calendar",
                             "selectNone.calendar",
                             "pick.team",
                             "group.reminders"};
    EXPECT_EQ(stops("group.calendar").mid(0, inside.size()), inside);
    auto back = stops("group.reminders", Qt::Key_Backtab, static_cast<int>(inside.size()));
    std::reverse(back.begin(), back.end());
    EXPECT_EQ(back, inside);
}

TEST_F(Keyboard, BringsWhatHasTheFocusIntoSight) {
    openAt("calendar");
    driver->focus("group.calendar");
    for (int step = 0; step < 30; ++step) {
        const auto name = driver->focused();
        if (name == "refresh") break;
        EXPECT_TRUE(isInSight(name)) << name.toStdString();
        driver->press(Qt::Key_Tab);
    }
    EXPECT_EQ(driver->focused(), "refresh");
}

TEST_F(Keyboard, WorksTheGroups) {
    openWithEverythingGranted();
    const auto expanded = [&] { return window->property("expandedGroup").toString(); };
    driver->focus("group.calendar");
    driver->press(Qt::Key_Return);
    EXPECT_EQ(expanded(), "calendar");
    driver->press(Qt::Key_Space);
    EXPECT_EQ(expanded(), "");
    driver->press(Qt::Key_Right);
    EXPECT_EQ(expanded(), "calendar");
    driver->press(Qt::Key_Right);
    EXPECT_EQ(expanded(), "calendar");
    driver->press(Qt::Key_Left);
    EXPECT_EQ(expanded(), "");
    driver->press(Qt::Key_Down);
    EXPECT_EQ(driver->focused(), "group.reminders");
    driver->press(Qt::Key_Up);
    driver->press(Qt::Key_Up);
    EXPECT_EQ(driver->focused(), "group.calendar");
}

TEST_F(Keyboard, WorksSwitchesAndButtons) {
    openAt("keynote");
    driver->focus("capability.iwork.keynote.create");
    driver->press(Qt::Key_Space);
    EXPECT_TRUE(driver->isOn("capability.iwork.keynote.create"));
    driver->press(Qt::Key_Return);
    EXPECT_FALSE(driver->isOn("capability.iwork.keynote.create"));
    driver->focus("enableAll.keynote");
    driver->press(Qt::Key_Return);
    EXPECT_EQ(model().enabledCapabilities.get().size(), 2u);
    driver->focus("disableAll.keynote");
    driver->press(Qt::Key_Space);
    EXPECT_TRUE(model().enabledCapabilities.get().empty());
}

TEST_F(Keyboard, ShowsWhereItIs) {
    openAt("keynote");
    driver->focus("capability.iwork.keynote.create");
    EXPECT_TRUE(driver->value<bool>("capability.iwork.keynote.create", "visualFocus"));
    const auto with = window->grabWindow();
    driver->focus("capability.iwork.keynote.export");
    EXPECT_NE(window->grabWindow(), with);
    // But not after a click.
    driver->click("capability.iwork.keynote.create");
    EXPECT_FALSE(driver->value<bool>("capability.iwork.keynote.create", "visualFocus"));
}

} // namespace
} // namespace bridge
