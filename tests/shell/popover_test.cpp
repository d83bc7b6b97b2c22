#include "app/shell/popover.h"

#include "tests/shell/qt_environment.h"

#include <QScreen>

namespace bridge {
namespace {

using namespace std::chrono_literals;

struct PopoverTest : testing::Test {
    std::chrono::steady_clock::time_point now{1h};
    bool hasModal = false;
    QWindow window;
    QWindow other;
    std::optional<Popover> popover;

    PopoverTest() {
        window.resize(200, 300);
        window.setFlags(Qt::Tool | Qt::FramelessWindowHint);
        popover.emplace(
            window, [this] { return hasModal; }, [this] { return now; });
    }
    void turnElsewhere() {
        other.show();
        other.requestActivate();
        ASSERT_TRUE(comesTrue([this] { return other.isActive(); }));
    }
    void open() {
        popover->toggle(std::nullopt);
        ASSERT_TRUE(comesTrue([this] { return window.isActive(); }));
    }
};

TEST_F(PopoverTest, OpensWithTheFirstClickAndClosesWithTheSecond) {
    int opened = 0;
    QObject::connect(&*popover, &Popover::aboutToShow, [&opened] { ++opened; });
    open();
    EXPECT_TRUE(popover->isShown());
    popover->toggle(std::nullopt);
    EXPECT_FALSE(popover->isShown());
    popover->toggle(std::nullopt);
    EXPECT_TRUE(popover->isShown());
    EXPECT_EQ(opened, 2);
}

TEST_F(PopoverTest, HasTheKeyboardAsSoonAsItIsOpen) {
    turnElsewhere();
    open();
    EXPECT_EQ(QGuiApplication::focusWindow(), &window);
}

TEST_F(PopoverTest, GoesAwayWhenTheUserTurnsElsewhere) {
    open();
    turnElsewhere();
    EXPECT_FALSE(popover->isShown());
}

TEST_F(PopoverTest, StaysWhileSomethingInItWaitsForTheUser) {
    hasModal = true;
    open();
    turnElsewhere();
    EXPECT_TRUE(popover->isShown());
}

TEST_F(PopoverTest, TakesTheClickThatTurnedAwayFromItAsTheOneThatClosesIt) {
    open();
    turnElsewhere();
    now += 249ms;
    popover->toggle(std::nullopt);
    EXPECT_FALSE(popover->isShown());
    popover->toggle(std::nullopt);
    EXPECT_TRUE(popover->isShown()) << "one click is forgiven, not two";
}

TEST_F(PopoverTest, OpensAgainWithALaterClick) {
    open();
    turnElsewhere();
    now += 250ms;
    popover->toggle(std::nullopt);
    EXPECT_TRUE(popover->isShown());
}

TEST_F(PopoverTest, ComesToTheFrontWhenItIsToBeShownAndIsAlready) {
    hasModal = true;
    open();
    turnElsewhere();
    popover->show(std::nullopt);
    EXPECT_TRUE(comesTrue([this] { return window.isActive(); }));
}

TEST_F(PopoverTest, HasItsFullSizeAgainAfterASmallScreen) {
    open();
    popover->hide();
    window.resize(100, 100);
    open();
    EXPECT_EQ(window.size(), QSize(200, 300));
}

TEST_F(PopoverTest, IsBesideTheIcon) {
    const auto whole = QGuiApplication::primaryScreen()->geometry();
    const QRect icon(whole.right() - 30, whole.bottom() - 20, 18, 18);
    popover->toggle(icon);
    EXPECT_EQ(window.geometry().bottomRight(), QPoint(whole.right() - 8, icon.top() - 9));
}

} // namespace
} // namespace bridge
