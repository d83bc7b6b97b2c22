#include "app/shell/bridge_app_delegate.h"

#include "app/dashboard/dashboard.h"
#include "tests/shell/fake_panel.h"
#include "tests/shell/qt_environment.h"
#include "tests/shell/shell_environment.h"
#include "tests/support/temporary_folder.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QScreen>

namespace bridge {
namespace {

// Everything but the program around it: a model on embedded stores, the real dashboard, and a panel on the bus.
struct AppDelegate : testing::Test {
    TemporaryFolder folder;
    EventLoop loop;
    ConsentQuestion* question = new ConsentQuestion; // the platform's
    Platform platform = openEmbeddedPlatform(loop, folder.path(), std::unique_ptr<ConsentPrompt>(question));
    BridgeCapabilityPolicy policy{*platform.defaults};
    BridgeModel model{loop, platform, policy};
    std::optional<FakePanel> panel;
    std::optional<BridgeAppDelegate> delegate;

    void SetUp() override {
        if (!testbus::isPossible()) GTEST_SKIP() << "dbus-daemon is not installed";
        panel.emplace(QString::fromStdString(testbus::address()));
        const auto bus = QDBusConnection::connectToBus(QString::fromStdString(testbus::address()), "delegate");
        delegate.emplace(model, *question, bus,
                         [this, bus] { return std::make_unique<Dashboard>(model, *question, bus); });
    }
    ~AppDelegate() override {
        delegate.reset();
        QDBusConnection::disconnectFromBus("delegate");
    }
    void launchInPanel() {
        panel->appear();
        delegate->launch();
        ASSERT_TRUE(comesTrue([this] { return !panel->items.isEmpty(); }));
    }
    bool isShown() const { return delegate->dashboardPopover && delegate->dashboardPopover->isShown(); }
    bool opens() {
        return comesTrue([this] { return isShown(); });
    }
    bool closes() {
        return comesTrue([this] { return !isShown(); });
    }
    static QWindow* dashboard() {
        for (auto* window : QGuiApplication::topLevelWindows())
            if (window->isVisible() && qobject_cast<QQuickWindow*>(window)) return window;
        return nullptr;
    }
};

std::vector<QMessageBox*> failures() {
    std::vector<QMessageBox*> shown;
    for (auto* widget : QApplication::topLevelWidgets())
        if (auto* box = qobject_cast<QMessageBox*>(widget); box && box->isVisible()) shown.push_back(box);
    return shown;
}

void clickIn(const QMessageBox& box, const QString& text) {
    for (auto* button : box.buttons())
        if (button->text().remove('&') == text) return button->click();
    FAIL() << "there is no such button";
}

// Puts before a module of Qt one that lacks what it needs.
struct BrokenQt {
    BrokenQt() {
        std::filesystem::create_directories(folder / "QtQuick/Templates");
        putFile(folder / "QtQuick/Templates/qmldir", "module QtQuick.Templates\nimport ThisIsNotThere\n");
        qputenv("QML_IMPORT_PATH", folder.path().c_str());
    }
    ~BrokenQt() { qunsetenv("QML_IMPORT_PATH"); }
    TemporaryFolder folder;
};

// Before the others: what Qt has loaded it keeps for the whole process.
struct AppDelegateWithoutADashboard : BrokenQt, AppDelegate {};

TEST_F(AppDelegateWithoutADashboard, LeavesNoQuestionWithoutAnAnswer) {
    launchInPanel();
    model.perform(model.requestAccess(PrivacyService::contacts));
    EXPECT_TRUE(comesTrue([this] { return !question->current.get(); }));
    EXPECT_FALSE(delegate->dashboardPopover);
    const auto said = model.lastError.get().value_or("");
    EXPECT_TRUE(said.starts_with("You can't be asked for access. The dashboard can't be shown")) << said;
    EXPECT_EQ(model.contactsPermission.get(), BridgePermissionState::notDetermined);
}

TEST_F(AppDelegate, OpensTheDashboardBesideTheClickAndClosesItWithTheNext) {
    launchInPanel();
    EXPECT_FALSE(delegate->dashboardPopover) << "it is made when it is first wanted";
    const auto whole = QGuiApplication::primaryScreen()->geometry();
    panel->call("Activate", {whole.right() - 200, whole.top() + 5});
    ASSERT_TRUE(opens());
    ASSERT_NE(dashboard(), nullptr);
    EXPECT_EQ(dashboard()->geometry().right(), whole.right() - 8);
    panel->call("Activate", {whole.right() - 200, whole.top() + 5});
    EXPECT_TRUE(closes());
    panel->call("ContextMenu", {whole.right() - 200, whole.top() + 5});
    EXPECT_TRUE(opens());
}

TEST_F(AppDelegate, KeepsTheDashboardThatItMade) {
    launchInPanel();
    delegate->toggleDashboard(std::nullopt);
    const auto* first = dashboard();
    ASSERT_NE(first, nullptr);
    delegate->toggleDashboard(std::nullopt);
    delegate->toggleDashboard(std::nullopt);
    EXPECT_EQ(dashboard(), first);
}

TEST_F(AppDelegate, ShowsNothingByItself) {
    launchInPanel();
    EXPECT_FALSE(isShown());
    delegate->showDashboard({});
    EXPECT_TRUE(isShown());
}

TEST_F(AppDelegate, ReadsEverythingAnewWhenTheDashboardOpens) {
    launchInPanel();
    EXPECT_EQ(model.calendarPermission.get(), BridgePermissionState::unknown);
    delegate->toggleDashboard(std::nullopt);
    EXPECT_EQ(model.calendarPermission.get(), BridgePermissionState::notDetermined);
}

TEST_F(AppDelegate, ShowsTheDashboardWhenAQuestionWaits) {
    launchInPanel();
    model.perform(model.requestAccess(PrivacyService::contacts));
    EXPECT_TRUE(opens());
    question->answer(ConsentQuestion::Answer::allow);
    EXPECT_EQ(model.contactsPermission.get(), BridgePermissionState::fullAccess);
}

TEST_F(AppDelegate, TellsWhoeverAsksWhenThereCanBeNoDashboard) {
    delegate.reset();
    delegate.emplace(model, *question, QDBusConnection("none"),
                     []() -> std::unique_ptr<DashboardView> { throw PlatformError("A file is missing."); });
    EXPECT_THROW(loop.runUntilDone(question->ask(PrivacyService::contacts)), PlatformError);
    EXPECT_EQ(question->current.get(), std::nullopt);
    EXPECT_FALSE(isShown());
}

TEST_F(AppDelegate, TellsTheUserOnceWhenThereCanBeNoDashboardAndLetsHimQuit) {
    delegate.reset();
    delegate.emplace(model, *question, QDBusConnection("none"),
                     []() -> std::unique_ptr<DashboardView> { throw PlatformError("A <file> is missing."); });
    int quits = 0;
    QObject::connect(&*delegate, &BridgeAppDelegate::quitRequested, [&quits] { ++quits; });
    delegate->toggleDashboard(std::nullopt);
    delegate->showDashboard({});
    ASSERT_EQ(failures().size(), 1u);
    EXPECT_EQ(failures()[0]->text(), "A <file> is missing.");
    EXPECT_EQ(failures()[0]->textFormat(), Qt::PlainText);
    clickIn(*failures()[0], "Close");
    EXPECT_TRUE(failures().empty());
    EXPECT_EQ(quits, 0);
    delegate->toggleDashboard(std::nullopt);
    ASSERT_EQ(failures().size(), 1u) << "it is told again to who tries again";
    clickIn(*failures()[0], "Quit");
    EXPECT_EQ(quits, 1);
}

TEST_F(AppDelegate, MayGoWithTheDashboardOpenAndAQuestionInIt) {
    launchInPanel();
    model.perform(model.requestAccess(PrivacyService::calendar));
    EXPECT_TRUE(opens());
    delegate.reset();
    EXPECT_EQ(dashboard(), nullptr);
}

} // namespace
} // namespace bridge
