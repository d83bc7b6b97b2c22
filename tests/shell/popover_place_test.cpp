#include "app/shell/popover_place.h"

#include <gtest/gtest.h>

namespace bridge {

void PrintTo(const QRect& rectangle, std::ostream* out) {
    *out << rectangle.x() << "," << rectangle.y() << " " << rectangle.width() << "x" << rectangle.height();
}
void PrintTo(const QPoint& point, std::ostream* out) {
    *out << point.x() << "," << point.y();
}

namespace {

constexpr QSize size(640, 780);
const QRect screen(0, 0, 1920, 1080);

TEST(PopoverPlace, IsBelowAnIconInAPanelAtTheTop) {
    const QRect place = popoverPlace({1000, 4, 22, 22}, size, {screen, {0, 30, 1920, 1050}});
    EXPECT_EQ(place.size(), size);
    EXPECT_EQ(place.top(), 38);
    EXPECT_EQ(place.center().x(), QRect(1000, 4, 22, 22).center().x());
}

TEST(PopoverPlace, IsAboveAnIconInAPanelAtTheBottom) {
    const QRect place = popoverPlace({1000, 1054, 22, 22}, size, {screen, {0, 0, 1920, 1050}});
    EXPECT_EQ(place, QRect(691, 262, 640, 780));
}

TEST(PopoverPlace, IsBesideAPanelAtTheLeftOrTheRight) {
    const QRect left = popoverPlace({4, 500, 22, 22}, size, {screen, {30, 0, 1890, 1080}});
    EXPECT_EQ(left.left(), 38);
    EXPECT_EQ(left.center().y(), 510);
    const QRect right = popoverPlace({1894, 500, 22, 22}, size, {screen, {0, 0, 1890, 1080}});
    EXPECT_EQ(right.right(), 1881);
}

TEST(PopoverPlace, StaysOnTheScreenBesideAnIconInACorner) {
    const QRect place = popoverPlace({1900, 1058, 18, 18}, size, {screen, {0, 0, 1920, 1050}});
    EXPECT_EQ(place, QRect(1920 - 8 - 640, 1050 - 8 - 780, 640, 780));
}

TEST(PopoverPlace, KeepsClearOfAPanelThatHidesAndTakesNoRoom) {
    const QRect icon(1000, 1054, 22, 22);
    const QRect place = popoverPlace(icon, size, {screen, screen});
    EXPECT_EQ(place.bottom(), icon.top() - 9);
}

TEST(PopoverPlace, IsOnTheIconsScreenWhereverThatBegins) {
    const QRect second(1920, -300, 1280, 1024);
    const QRect place = popoverPlace({3170, -296, 22, 22}, size, {second, second.adjusted(0, 28, 0, 0)});
    EXPECT_TRUE(second.contains(place));
    EXPECT_EQ(place.right(), second.right() - 8);
    EXPECT_EQ(place.top(), -300 + 28 + 8);
}

TEST(PopoverPlace, ShrinksOnAScreenThatIsTooSmall) {
    const QRect small(0, 0, 1024, 600);
    const QRect place = popoverPlace({500, 2, 22, 22}, size, {small, small.adjusted(0, 26, 0, 0)});
    EXPECT_EQ(place, QRect(500 + 11 - 320, 34, 640, 600 - 26 - 16));
}

TEST(PopoverPlace, IsInTheMiddleWithoutAnIcon) {
    EXPECT_EQ(popoverPlace(size, {screen, {0, 0, 1920, 1050}}), QRect(640, 135, 640, 780));
}

TEST(ServerPixels, AreCountedFromTheBeginningOfTheirScreen) {
    EXPECT_EQ(fromServerPixels({100, 50}, {0, 0}, 1), QPoint(100, 50));
    EXPECT_EQ(fromServerPixels({3000, 40}, {0, 0}, 2), QPoint(1500, 20));
    EXPECT_EQ(fromServerPixels({2120, 100}, {1920, 0}, 2), QPoint(2020, 50));
}

} // namespace
} // namespace bridge
