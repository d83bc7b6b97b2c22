#include "tests/dashboard/dashboard_test.h"
#include "tests/fakes/gated_event_store.h"

namespace bridge {
namespace {

using Identifiers = std::set<std::string>;

class Resources : public DashboardTest {
protected:
    void offerMany(int number) {
        bridge.calendars->allCalendars.clear();
        const auto account = bridge.calendars->allSources.front();
        for (int each = 0; each < number; ++each) {
            const auto name = QString("%1").arg(each, 4, 10, QChar('0')).toStdString();
            bridge.calendars->add(EntityType::event, name, "Calendar " + name, account);
        }
    }
    size_t rowsAlive() {
        return driver->all([](QQuickItem& item) { return item.objectName().startsWith("pick."); }).size();
    }
    double scrolled() { return driver->value<double>("viewport", "contentY"); }
    void scroll(double y) {
        driver->item("viewport")->setProperty("contentY", y);
        driver->settle();
    }
};

TEST_F(Resources, AreSwitchedOneByOne) {
    openAt("calendar");
    driver->click("pick.team");
    EXPECT_EQ(model().allowedCalendarIDs.get(), Identifiers{"team"});
    EXPECT_TRUE(driver->isOn("pick.team"));
    EXPECT_TRUE(driver->value<bool>("pick.team", "checked"));
    driver->click("pick.personal");
    driver->click("pick.team");
    EXPECT_EQ(model().allowedCalendarIDs.get(), Identifiers{"personal"});
    EXPECT_FALSE(driver->isOn("pick.team"));
}

TEST_F(Resources, AreAsTheLastClickSaysAlsoWhileTheListIsReadAnew) {
    auto* calendars = bridge.watchCalendars<GatedEventStore>();
    openAt("calendar");
    calendars->hold("calendars", "", GatedEventStore::When::beforeEffect);
    driver->click("pick.team");
    calendars->release(); // what it asks before the change, but not the reading after it
    driver->settle();
    ASSERT_EQ(model().allowedCalendarIDs.get(), Identifiers{"team"});
    ASSERT_EQ(calendars->waiting(), 1u);
    driver->click("pick.team");
    calendars->holdNoMore();
    while (calendars->waiting() > 0)
        calendars->release();
    driver->settle();
    EXPECT_TRUE(model().allowedCalendarIDs.get().empty());
    EXPECT_FALSE(driver->isOn("pick.team"));
}

TEST_F(Resources, AreSelectedAllAndNone) {
    openAt("calendar");
    EXPECT_FALSE(driver->isEnabled("selectNone.calendar"));
    driver->click("selectAll.calendar");
    EXPECT_EQ(model().allowedCalendarIDs.get(), (Identifiers{"personal", "team", "holidays"}));
    EXPECT_TRUE(driver->isOn("pick.holidays"));
    EXPECT_FALSE(driver->isEnabled("selectAll.calendar"));
    driver->click("selectNone.calendar");
    EXPECT_TRUE(model().allowedCalendarIDs.get().empty());
    EXPECT_TRUE(model().allowedReminderListIDs.get().empty());
}

TEST_F(Resources, AreReminderListsInTheRemindersGroup) {
    openAt("reminders");
    driver->click("pick.errands");
    EXPECT_EQ(model().allowedReminderListIDs.get(), Identifiers{"errands"});
    driver->click("selectAll.list");
    EXPECT_EQ(model().allowedReminderListIDs.get(), (Identifiers{"errands", "projects", "ideas"}));
    driver->click("selectNone.list");
    EXPECT_TRUE(model().allowedReminderListIDs.get().empty());
    EXPECT_TRUE(model().allowedCalendarIDs.get().empty());
}

TEST_F(Resources, ComeAndGoWithoutDisturbingTheOthers) {
    openAt("calendar");
    driver->reveal("pick.personal");
    auto* kept = driver->item("pick.personal");
    const auto place = scrolled();
    bridge.calendars->add(EntityType::event, "new", "New", bridge.calendars->allSources.back());
    bridge.loop.runUntilDone(model().refresh());
    driver->settle();
    EXPECT_TRUE(driver->find("pick.new"));
    EXPECT_EQ(driver->item("pick.personal"), kept);
    EXPECT_EQ(scrolled(), place);
    bridge.loop.runUntilDone(model().setCalendar("personal", true));
    driver->settle();
    EXPECT_EQ(driver->item("pick.personal"), kept);
    EXPECT_TRUE(driver->isOn("pick.personal"));
    std::erase_if(bridge.calendars->allCalendars, [](const Calendar& each) { return each.id == "new"; });
    bridge.loop.runUntilDone(model().refresh());
    driver->settle();
    EXPECT_FALSE(driver->find("pick.new"));
    EXPECT_EQ(driver->item("pick.personal"), kept);
}

TEST_F(Resources, AreThereByHundredsOnlyWhereTheyAreInSight) {
    offerMany(200);
    openAt("calendar");
    EXPECT_LE(rowsAlive(), 30u);
    const auto height = driver->value<double>("resources.calendar", "height");
    EXPECT_EQ(height, 200 * driver->singleton("Theme")->property("row").toDouble());
    auto* list = driver->item("resources.calendar");
    const auto top = list->mapToItem(driver->item("viewport"), {}).y() + scrolled();
    for (const int row : {0, 57, 120, 199}) {
        scroll(top + row * height / 200 - 200);
        const auto name = QString("pick.%1").arg(row, 4, 10, QChar('0'));
        ASSERT_TRUE(driver->find(name)) << name.toStdString();
        EXPECT_LE(rowsAlive(), 30u);
        const auto y = driver->item(name)->mapToItem(driver->item("viewport"), {}).y();
        EXPECT_NEAR(y, top + row * height / 200 - scrolled(), 0.5) << name.toStdString();
    }
    driver->click("pick.0199");
    EXPECT_EQ(model().allowedCalendarIDs.get(), Identifiers{"0199"});
}

TEST_F(Resources, AreReachedByArrowsHoweverManyThereAre) {
    offerMany(200);
    openAt("calendar");
    driver->focus("resources.calendar");
    EXPECT_EQ(driver->focused(), "pick.0000");
    driver->press(Qt::Key_Down);
    EXPECT_EQ(driver->focused(), "pick.0001");
    driver->press(Qt::Key_End);
    EXPECT_EQ(driver->focused(), "pick.0199");
    driver->press(Qt::Key_Space);
    EXPECT_EQ(model().allowedCalendarIDs.get(), Identifiers{"0199"});
    driver->press(Qt::Key_Up);
    EXPECT_EQ(driver->focused(), "pick.0198");
    driver->press(Qt::Key_PageUp);
    EXPECT_NE(driver->focused(), "pick.0198");
    driver->press(Qt::Key_Home);
    EXPECT_EQ(driver->focused(), "pick.0000");
    // Scrolled away by the mouse, the place is kept and the next key comes back to it.
    scroll(scrolled() + 4000);
    EXPECT_FALSE(driver->find("pick.0000"));
    driver->press(Qt::Key_Down);
    EXPECT_EQ(driver->focused(), "pick.0001");
    // And Tab leaves it.
    driver->press(Qt::Key_Tab);
    EXPECT_EQ(driver->focused(), "group.reminders");
    driver->press(Qt::Key_Backtab);
    EXPECT_EQ(driver->focused(), "pick.0001");
    driver->press(Qt::Key_Backtab);
    EXPECT_EQ(driver->focused(), "selectNone.calendar");
}

TEST_F(Resources, KeepALongTitleInTheirRow) {
    bridge.calendars->allCalendars[0].title = std::string(400, 'W');
    bridge.calendars->allCalendars[1].title = "تقويم العائلة";
    openAt("calendar");
    const auto width = driver->item("pick.personal")->width();
    for (auto* each : driver->all([](QQuickItem& item) { return item.inherits("QQuickText"); })) {
        const auto right = each->mapToScene({each->width(), 0}).x();
        EXPECT_LE(right, 640) << each->property("text").toString().left(40).toStdString();
    }
    EXPECT_LE(width, 640);
    EXPECT_EQ(driver->item("pick.personal")->height(), driver->item("pick.holidays")->height());
}

TEST_F(Resources, SayWhenAChangeFails) {
    openAt("calendar");
    bridge.calendars->allCalendars.erase(bridge.calendars->allCalendars.begin());
    driver->click("pick.personal");
    EXPECT_TRUE(model().lastError.get());
    EXPECT_TRUE(driver->find("lastError"));
    EXPECT_FALSE(driver->find("pick.personal"));
}

} // namespace
} // namespace bridge
