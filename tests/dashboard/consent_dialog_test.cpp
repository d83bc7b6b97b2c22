#include "tests/dashboard/dashboard_test.h"

#include <QSignalSpy>

namespace bridge {
namespace {

class ConsentInTheWindow : public DashboardTest {
protected:
    QString state(const QString& group) { return driver->texts("permission." + group).value(0); }
};

TEST_F(ConsentInTheWindow, IsAskedForByGrantAccess) {
    open();
    QSignalSpy modal(bridge.dashboard.get(), &Dashboard::hasModalChanged);
    EXPECT_FALSE(driver->find("consent"));
    driver->click("access.contacts");
    EXPECT_TRUE(bridge.dashboard->hasModal());
    EXPECT_EQ(driver->texts("consentTitle"), QStringList("Allow access to your contacts?"));
    EXPECT_FALSE(driver->texts("consentText").isEmpty());
    EXPECT_EQ(driver->texts("dontAllow"), QStringList("Don't Allow"));
    EXPECT_EQ(driver->texts("allow"), QStringList("Allow"));
    driver->click("allow");
    EXPECT_FALSE(driver->find("consent"));
    EXPECT_EQ(state("contacts"), "Full access");
    EXPECT_FALSE(driver->find("access.contacts"));
    EXPECT_FALSE(bridge.dashboard->hasModal());
    EXPECT_EQ(modal.size(), 2);
}

TEST_F(ConsentInTheWindow, IsRefusedByDefault) {
    open();
    driver->click("access.contacts");
    EXPECT_EQ(driver->focused(), "dontAllow");
    driver->press(Qt::Key_Return);
    EXPECT_EQ(state("contacts"), "Denied");
    driver->click("access.calendar");
    driver->press(Qt::Key_Escape);
    EXPECT_EQ(state("calendar"), "Denied");
    driver->click("access.reminders");
    driver->click("dontAllow");
    EXPECT_EQ(state("reminders"), "Denied");
}

TEST_F(ConsentInTheWindow, IsGivenByTheKeyboardAlone) {
    open();
    driver->focus("access.contacts");
    driver->press(Qt::Key_Space);
    for (const auto* next : {"allow", "dontAllow", "allow"}) {
        driver->press(Qt::Key_Tab);
        EXPECT_EQ(driver->focused(), next); // and never what is behind
    }
    driver->press(Qt::Key_Space);
    EXPECT_EQ(state("contacts"), "Full access");
}

TEST_F(ConsentInTheWindow, BlocksWhatIsBehind) {
    open();
    QSignalSpy dismissed(bridge.dashboard.get(), &Dashboard::dismissed);
    driver->click("access.contacts");
    driver->click("group.files");
    EXPECT_EQ(window->property("expandedGroup").toString(), "");
    EXPECT_FALSE(driver->isEnabled("group.files"));
    driver->press(Qt::Key_Escape);
    EXPECT_EQ(dismissed.size(), 0);
    EXPECT_TRUE(driver->isEnabled("group.files"));
}

TEST_F(ConsentInTheWindow, ComesAtOnceForEveryServiceAndInItsTurn) {
    open();
    auto first = bridge.consent->ask(PrivacyService::music);
    auto second = bridge.consent->ask(PrivacyService::location);
    first.start();
    second.start();
    driver->settle();
    EXPECT_EQ(driver->texts("consentTitle"), QStringList("Allow access to your music library?"));
    first = {};
    driver->settle();
    EXPECT_EQ(driver->texts("consentTitle"), QStringList("Allow access to your location?"));
    driver->click("allow");
    EXPECT_TRUE(second.take());
    EXPECT_FALSE(driver->find("consent"));
}

TEST_F(ConsentInTheWindow, NamesEveryService) {
    open();
    const std::map<PrivacyService, QString> titles{{PrivacyService::calendar, "Allow access to your calendars?"},
                                                   {PrivacyService::reminders, "Allow access to your reminders?"},
                                                   {PrivacyService::contacts, "Allow access to your contacts?"},
                                                   {PrivacyService::music, "Allow access to your music library?"},
                                                   {PrivacyService::location, "Allow access to your location?"}};
    for (const auto& [service, title] : titles) {
        auto asked = bridge.consent->ask(service);
        asked.start();
        driver->settle();
        EXPECT_EQ(driver->texts("consentTitle"), QStringList(title));
        EXPECT_FALSE(driver->texts("consentText").value(0).isEmpty());
    }
}

TEST_F(ConsentInTheWindow, GoesBackToWhatHadTheFocus) {
    open();
    driver->focus("access.reminders");
    driver->press(Qt::Key_Space);
    driver->press(Qt::Key_Escape);
    EXPECT_EQ(driver->focused(), "access.reminders");
}

TEST_F(ConsentInTheWindow, EndsWithTheDashboard) {
    open();
    driver->click("access.contacts");
    bridge.dashboard.reset();
    EXPECT_EQ(bridge.consent->current.get(), std::nullopt);
    EXPECT_EQ(bridge.authorization->status(PrivacyService::contacts), 0);
}

} // namespace
} // namespace bridge
