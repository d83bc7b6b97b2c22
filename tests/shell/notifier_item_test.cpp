#include "app/shell/notifier_item.h"

#include "app/shell/app_icon.h"
#include "app/shell/notifier_adaptor.h"
#include "tests/shell/fake_panel.h"
#include "tests/shell/qt_environment.h"
#include "tests/shell/shell_environment.h"

#include <QDBusPendingReply>

namespace bridge {
namespace {

struct NotifierItemTest : testing::Test {
    void SetUp() override {
        if (!testbus::isPossible()) GTEST_SKIP() << "dbus-daemon is not installed";
        panel.emplace(QString::fromStdString(testbus::address()));
    }
    ~NotifierItemTest() override {
        item.reset();
        QDBusConnection::disconnectFromBus("item");
    }
    void makeItem() {
        item.emplace(QDBusConnection::connectToBus(QString::fromStdString(testbus::address()), "item"),
                     NotifierLooks{"brindlefox-apple-bridge", productName, statusIcon().icon, {}});
        QObject::connect(&*item, &NotifierItem::activated, [this](QPoint place) { clicks.append(place); });
    }
    void makeItemInPanel() {
        panel->appear();
        makeItem();
        ASSERT_TRUE(comesTrue([this] { return !panel->items.isEmpty(); }));
    }
    QVariant property(const char* name) {
        const QDBusPendingReply<QDBusVariant> reply = panel->property(name);
        EXPECT_TRUE(comesTrue([&reply] { return reply.isFinished(); }));
        EXPECT_TRUE(reply.isValid()) << name << ": " << reply.error().message().toStdString();
        return reply.isValid() ? reply.value().variant() : QVariant();
    }

    std::optional<FakePanel> panel;
    std::optional<NotifierItem> item;
    QList<QPoint> clicks;
};

TEST_F(NotifierItemTest, RegistersUnderAnOwnNameWithTheWatcher) {
    makeItemInPanel();
    EXPECT_EQ(panel->items, QStringList("org.kde.StatusNotifierItem-" + QString::number(getpid()) + "-1"));
    EXPECT_TRUE(comesTrue([this] { return item->hasHost() == true; }));
}

TEST_F(NotifierItemTest, DescribesItself) {
    makeItemInPanel();
    EXPECT_EQ(property("Category"), "ApplicationStatus");
    EXPECT_EQ(property("Id"), "brindlefox-apple-bridge");
    EXPECT_EQ(property("Title"), "Brindlefox Apple Bridge");
    EXPECT_EQ(property("Status"), "Active");
    EXPECT_EQ(property("ItemIsMenu"), false);
    const auto toolTip = qdbus_cast<NotifierToolTip>(property("ToolTip"));
    EXPECT_EQ(toolTip.title, "Brindlefox Apple Bridge");
}

TEST_F(NotifierItemTest, BringsItsPictureInSeveralSizes) {
    makeItemInPanel();
    const auto pictures = qdbus_cast<NotifierPictures>(property("IconPixmap"));
    EXPECT_GE(pictures.size(), 2);
    for (const auto& picture : pictures) {
        EXPECT_EQ(picture.pixels.size(), 4 * picture.width * picture.height);
        EXPECT_NE(picture.pixels.count('\xff'), 0) << "it is not all transparent";
    }
}

TEST_F(NotifierItemTest, NamesNoIconOfTheThemeInsteadOfItsPicture) {
    makeItemInPanel();
    EXPECT_EQ(property("IconName"), "");
}

TEST_F(NotifierItemTest, TellsWhereItWasClicked) {
    makeItemInPanel();
    panel->call("Activate", {1234, 56});
    panel->call("ContextMenu", {7, 8});
    ASSERT_TRUE(comesTrue([this] { return clicks.size() == 2; }));
    EXPECT_EQ(clicks, (QList<QPoint>{{1234, 56}, {7, 8}}));
}

TEST_F(NotifierItemTest, TakesOtherCallsOfAPanelInItsStride) {
    makeItemInPanel();
    QDBusPendingCall calls[] = {panel->call("SecondaryActivate", {1, 2}), panel->call("Scroll", {3, "vertical"})};
    for (auto& call : calls) {
        EXPECT_TRUE(comesTrue([&call] { return call.isFinished(); }));
        EXPECT_FALSE(call.isError());
    }
    EXPECT_TRUE(clicks.isEmpty());
}

TEST_F(NotifierItemTest, HandsOnTheTokenOfAClick) {
    makeItemInPanel();
    QString token;
    QObject::connect(&*item, &NotifierItem::activationTokenGiven, [&token](const QString& given) { token = given; });
    panel->call("ProvideXdgActivationToken", {"token-1"});
    EXPECT_TRUE(comesTrue([&token] { return token == "token-1"; }));
}

TEST_F(NotifierItemTest, KnowsThatThereIsNoPanel) {
    makeItem();
    EXPECT_EQ(item->hasHost(), std::nullopt);
    EXPECT_TRUE(comesTrue([this] { return item->hasHost() == false; }));
}

TEST_F(NotifierItemTest, RegistersWithAPanelThatComesLate) {
    makeItem();
    ASSERT_TRUE(comesTrue([this] { return item->hasHost() == false; }));
    panel->appear();
    EXPECT_TRUE(comesTrue([this] { return panel->items.size() == 1 && item->hasHost() == true; }));
}

TEST_F(NotifierItemTest, RegistersAnewWithAPanelThatWasStartedAgain) {
    makeItemInPanel();
    panel->vanish();
    EXPECT_TRUE(comesTrue([this] { return item->hasHost() == false; }));
    panel->appear();
    EXPECT_TRUE(comesTrue([this] { return panel->items.size() == 1 && item->hasHost() == true; }));
}

TEST_F(NotifierItemTest, NoticesThatTheWatcherGetsAndLosesItsPanel) {
    panel->hasHost = false;
    makeItemInPanel();
    EXPECT_TRUE(comesTrue([this] { return item->hasHost() == false; }));
    panel->setHasHost(true);
    EXPECT_TRUE(comesTrue([this] { return item->hasHost() == true; }));
    panel->setHasHost(false);
    EXPECT_TRUE(comesTrue([this] { return item->hasHost() == false; }));
}

TEST_F(NotifierItemTest, LeavesTheBusWhenItGoes) {
    makeItemInPanel();
    const auto name = panel->items.last().toStdString();
    EXPECT_TRUE(testbus::isOwned(name));
    item.reset();
    testbus::waitUntilFree(name);
}

TEST(NotifierItemWithoutABus, HasNoPanel) {
    const NotifierItem item(QDBusConnection("none"), {});
    EXPECT_EQ(item.hasHost(), false);
}

} // namespace
} // namespace bridge
