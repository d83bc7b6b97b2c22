#include "tests/dashboard/dashboard_test.h"

#include <QGuiApplication>

namespace bridge {
namespace {

class Direction : public DashboardTest {
protected:
    ~Direction() override { QGuiApplication::setLayoutDirection(Qt::LeftToRight); }

    double middle(const QString& name) {
        const auto* item = driver->item(name);
        return item->mapToScene({item->width() / 2, 0}).x();
    }
};

TEST_F(Direction, IsTheOneOfTheUsersLanguage) {
    open();
    EXPECT_GT(middle("access.contacts"), 320);
    EXPECT_GT(middle("quit"), 320);
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    driver->settle();
    EXPECT_LT(middle("access.contacts"), 320);
    EXPECT_LT(middle("quit"), 320);
    driver->click("group.keynote");
    driver->click("capability.iwork.keynote.create");
    EXPECT_TRUE(model().enabledCapabilities.get().contains(BridgeCapability::keynoteCreate));
    // Arrows go with it.
    driver->focus("group.keynote");
    driver->press(Qt::Key_Right);
    EXPECT_EQ(window->property("expandedGroup").toString(), "");
    driver->press(Qt::Key_Left);
    EXPECT_EQ(window->property("expandedGroup").toString(), "keynote");
}

} // namespace
} // namespace bridge
