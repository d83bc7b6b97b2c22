#include "tests/dashboard/dashboard_test.h"
#include "tests/fakes/failing_event_store.h"
#include "tests/fakes/gated_event_store.h"

#include <QSignalSpy>
#include <netinet/in.h>
#include <sys/socket.h>

namespace bridge {
namespace {

class TheRest : public DashboardTest {
protected:
    QString loginDetail() { return driver->value<QString>("launchAtLogin", "detail"); }
};

TEST_F(TheRest, StartsTheBridgeAtLogin) {
    openWithEverythingGranted();
    EXPECT_FALSE(driver->isOn("launchAtLogin"));
    EXPECT_EQ(loginDetail(), "");
    driver->click("launchAtLogin");
    EXPECT_EQ(bridge.login->now, LoginItemStatus::enabled);
    EXPECT_TRUE(driver->isOn("launchAtLogin"));
    EXPECT_EQ(loginDetail(), "Starts automatically when you sign in");
    driver->click("launchAtLogin");
    EXPECT_EQ(bridge.login->now, LoginItemStatus::notRegistered);
    EXPECT_FALSE(driver->isOn("launchAtLogin"));
}

TEST_F(TheRest, SaysThatLoginNeedsApproval) {
    bridge.login->now = LoginItemStatus::requiresApproval;
    openWithEverythingGranted();
    EXPECT_EQ(loginDetail(), "Approval required in System Settings");
    driver->click("launchAtLogin");
    EXPECT_EQ(bridge.login->settingsOpened, 1);
    EXPECT_EQ(bridge.login->now, LoginItemStatus::requiresApproval);
    EXPECT_FALSE(driver->isOn("launchAtLogin"));
    EXPECT_FALSE(driver->value<bool>("launchAtLogin", "checked"));
}

TEST_F(TheRest, SaysThatLoginIsUnavailable) {
    bridge.login->now = LoginItemStatus::notFound;
    openWithEverythingGranted();
    EXPECT_EQ(loginDetail(), "Launch at Login is unavailable");
    EXPECT_FALSE(driver->isEnabled("launchAtLogin"));
}

TEST_F(TheRest, ShowsTheLastErrorAndTriesAgain) {
    openWithEverythingGranted();
    EXPECT_FALSE(driver->find("lastError"));
    bridge.login->failure = "The disk is full.";
    driver->click("launchAtLogin");
    EXPECT_EQ(driver->texts("lastError"),
              (QStringList{"Could not update Launch at Login: The disk is full.", "Try again"}));
    EXPECT_FALSE(driver->isOn("launchAtLogin"));
    driver->click("tryAgain");
    EXPECT_TRUE(driver->find("lastError"));
    bridge.login->failure.clear();
    driver->click("tryAgain");
    EXPECT_FALSE(driver->find("lastError"));
    EXPECT_TRUE(driver->isOn("launchAtLogin"));
}

TEST_F(TheRest, TriesToReadAgainWhatCouldNotBeReadAndNotWhatSucceededBefore) {
    auto* calendars = bridge.watchCalendars<FailingEventStore>();
    openAt("files");
    driver->click("addFolder");
    bridge.chooser->answered.open();
    driver->settle();
    calendars->isLost = true;
    window->hide();
    window->show();
    driver->settle();
    ASSERT_TRUE(driver->find("lastError"));
    EXPECT_TRUE(driver->texts("lastError").front().startsWith("The reminder lists could not be read"));
    driver->click("tryAgain");
    EXPECT_TRUE(driver->find("lastError"));
    calendars->isLost = false;
    driver->click("tryAgain");
    EXPECT_FALSE(driver->find("lastError"));
    EXPECT_EQ(bridge.chooser->questions.size(), 1u);
}

TEST_F(TheRest, TriesAgainWhatFailedAndNotThePairingAfterIt) {
    openWithEverythingGranted();
    bridge.login->failure = "The disk is full.";
    driver->click("launchAtLogin");
    bridge.agentServer->willAnswer(200, R"({"credential":"secret"})");
    driver->focus("pairingCode");
    driver->type("abcd");
    driver->press(Qt::Key_Return);
    ASSERT_TRUE(model().isPaired.get());
    bridge.login->failure.clear();
    driver->click("tryAgain");
    EXPECT_EQ(bridge.agentServer->requests().size(), 1u);
    EXPECT_TRUE(driver->isOn("launchAtLogin"));
    EXPECT_FALSE(driver->find("lastError"));
}

TEST_F(TheRest, TriesAgainWhatFailedAndNotWhatWasBegunAfterIt) {
    openAt("files");
    bridge.chooser->failure = "The dialog can't be shown.";
    driver->click("addFolder");
    driver->click("launchAtLogin");
    ASSERT_EQ(bridge.login->now, LoginItemStatus::enabled);
    bridge.chooser->answered.open();
    driver->settle();
    EXPECT_EQ(driver->texts("lastError"), (QStringList{"The dialog can't be shown.", "Try again"}));
    bridge.chooser->failure.clear();
    driver->click("tryAgain");
    EXPECT_EQ(bridge.chooser->questions.size(), 2u);
    EXPECT_EQ(bridge.login->now, LoginItemStatus::enabled);
    bridge.chooser->answered.open();
    driver->settle();
    EXPECT_FALSE(driver->find("lastError"));
}

TEST_F(TheRest, TriesAgainWhatFailedAndNotTheRefreshBeforeIt) {
    openWithEverythingGranted();
    driver->click("refresh");
    bridge.privacySettings->failure = "There is no such page here.";
    driver->click("privacySettings");
    EXPECT_EQ(driver->texts("lastError"), (QStringList{"There is no such page here.", "Try again"}));
    bridge.privacySettings->failure.clear();
    driver->click("tryAgain");
    EXPECT_EQ(bridge.privacySettings->opened, 2);
    EXPECT_FALSE(driver->find("lastError"));
}

TEST_F(TheRest, RefreshesWhatChangedElsewhere) {
    openWithEverythingGranted();
    bridge.authorization->setStatus(PrivacyService::contacts, 2);
    EXPECT_EQ(driver->texts("permission.contacts"), QStringList("Full access"));
    driver->click("refresh");
    EXPECT_EQ(driver->texts("permission.contacts"), QStringList("Denied"));
}

TEST_F(TheRest, RefreshesWhenItIsShownAgain) {
    openWithEverythingGranted();
    window->hide();
    bridge.authorization->setStatus(PrivacyService::contacts, 2);
    window->show();
    driver->settle();
    EXPECT_EQ(driver->texts("permission.contacts"), QStringList("Denied"));
}

TEST_F(TheRest, ReadsOnceWhenItIsShown) {
    auto* calendars = bridge.watchCalendars<FailingEventStore>();
    openWithEverythingGranted();
    window->hide();
    calendars->reset();
    window->show();
    driver->settle();
    const FailingEventStore::Call listing{"calendars", ""};
    EXPECT_EQ(calendars->calls, (std::vector{listing, listing})) << "the calendars, and the reminder lists";
}

TEST_F(TheRest, RefreshesAlsoWhileItReadsBecauseItIsShown) {
    auto* calendars = bridge.watchCalendars<GatedEventStore>();
    openWithEverythingGranted();
    bridge.login->failure = "The disk is full.";
    driver->click("launchAtLogin");
    window->hide();
    calendars->hold("calendars", "", GatedEventStore::When::beforeEffect);
    window->show();
    driver->settle();
    EXPECT_TRUE(driver->value<bool>("refresh", "busy"));
    EXPECT_TRUE(driver->find("lastError"));
    driver->click("refresh");
    EXPECT_FALSE(driver->find("lastError"));
    calendars->holdNoMore();
    calendars->release();
    driver->settle();
    EXPECT_FALSE(driver->value<bool>("refresh", "busy"));
}

TEST_F(TheRest, FadesInWhereMotionIsWelcome) {
    openWithEverythingGranted();
    auto* content = driver->item("content");
    std::vector<double> seen;
    QObject::connect(content, &QQuickItem::opacityChanged, content, [&] { seen.push_back(content->opacity()); });
    const auto showAgain = [&] {
        window->hide();
        window->show();
    };
    showAgain();
    driver->settle();
    EXPECT_TRUE(seen.empty());

    driver->singleton("Theme")->setProperty("reduceMotion", false);
    showAgain();
    ASSERT_TRUE(driver->eventually([&] { return content->opacity() == 1; }));
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front(), 0);
    EXPECT_TRUE(std::ranges::is_sorted(seen));
    // Whole, also after it was hidden half-way.
    showAgain();
    window->hide();
    EXPECT_EQ(content->opacity(), 1);
}

TEST_F(TheRest, OpensThePrivacySettings) {
    openWithEverythingGranted();
    driver->click("privacySettings");
    EXPECT_EQ(bridge.privacySettings->opened, 1);
}

TEST_F(TheRest, QuitsAndCloses) {
    openWithEverythingGranted();
    QSignalSpy quit(bridge.dashboard.get(), &Dashboard::quitRequested);
    QSignalSpy dismissed(bridge.dashboard.get(), &Dashboard::dismissed);
    driver->click("quit");
    EXPECT_EQ(quit.size(), 1);
    driver->press(Qt::Key_Escape);
    EXPECT_EQ(dismissed.size(), 1);
    // Also while a text field has the keys.
    driver->focus("pairingCode");
    driver->press(Qt::Key_Escape);
    EXPECT_EQ(dismissed.size(), 2);
}

TEST_F(TheRest, IsMadeOnceAndAsLargeAsItShouldBe) {
    openWithEverythingGranted();
    EXPECT_EQ(bridge.dashboard->window(), window);
    EXPECT_EQ(window->size(), QSize(640, 780));
    EXPECT_EQ(window->grabWindow().size(), QSize(640, 780));
    bridge.dashboard->setRounded(true);
    driver->settle();
    EXPECT_EQ(window->color().alpha(), 0);
    bridge.dashboard->setRounded(false);
    driver->settle();
    EXPECT_EQ(window->color().alpha(), 255);
}

// Takes the port that the bridge listens on.
class TakenPort {
public:
    TakenPort() {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        place.sin_port = htons(BridgeHTTPServer::port);
        const int one = 1;
        setsockopt(m_socket.get(), SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
        if (bind(m_socket.get(), reinterpret_cast<sockaddr*>(&place), sizeof place) || listen(m_socket.get(), 1))
            throw std::runtime_error("the port is in use");
    }

private:
    FileDescriptor m_socket{socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

TEST_F(TheRest, SaysThatTheServerDoesNotListen) {
    auto taken = std::make_unique<TakenPort>();
    openWithEverythingGranted();
    model().httpServer.start();
    ASSERT_TRUE(driver->eventually([&] { return driver->find("serverFailure") != nullptr; }));
    EXPECT_EQ(driver->texts("serverFailure"), (QStringList{"The bridge can't be reached by the Agent Server",
                                                           "127.0.0.1:32123: address already in use", "Try again"}));
    taken.reset();
    driver->click("startServer");
    EXPECT_TRUE(driver->eventually([&] { return !driver->find("serverFailure"); }));
    EXPECT_EQ(model().httpServer.state.get(), BridgeServerState(ServerListening{32123}));
}

} // namespace
} // namespace bridge
