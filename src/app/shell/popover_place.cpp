#include "app/shell/popover_place.h"

#include <algorithm>
#include <array>

namespace bridge {

namespace {

constexpr int gap = 8;

enum class Edge { top, bottom, left, right };

// The edge that the icon's panel is at: where it takes room, else the nearest, for a panel may hide.
Edge edgeOf(const QRect& anchor, const ScreenSpace& screen) {
    const auto middle = anchor.center();
    if (middle.y() < screen.available.top()) return Edge::top;
    if (middle.y() > screen.available.bottom()) return Edge::bottom;
    if (middle.x() < screen.available.left()) return Edge::left;
    if (middle.x() > screen.available.right()) return Edge::right;
    const std::array distances{std::pair(middle.y() - screen.whole.top(), Edge::top),
                               std::pair(screen.whole.bottom() - middle.y(), Edge::bottom),
                               std::pair(middle.x() - screen.whole.left(), Edge::left),
                               std::pair(screen.whole.right() - middle.x(), Edge::right)};
    return std::ranges::min(distances, {}, [](const auto& distance) { return distance.first; }).second;
}

QSize fitted(QSize size, const QRect& room) {
    return size.boundedTo(room.size());
}

// What stays free around a popover.
QRect roomOf(const ScreenSpace& screen) {
    return screen.available.adjusted(gap, gap, -gap, -gap);
}

} // namespace

QRect popoverPlace(const QRect& anchor, QSize size, const ScreenSpace& screen) {
    const auto room = roomOf(screen);
    QRect place({}, fitted(size, room));
    place.moveCenter(anchor.center());
    switch (edgeOf(anchor, screen)) {
    case Edge::top:
        place.moveTop(std::max(room.top(), anchor.bottom() + 1 + gap));
        break;
    case Edge::bottom:
        place.moveBottom(std::min(room.bottom(), anchor.top() - 1 - gap));
        break;
    case Edge::left:
        place.moveLeft(std::max(room.left(), anchor.right() + 1 + gap));
        break;
    case Edge::right:
        place.moveRight(std::min(room.right(), anchor.left() - 1 - gap));
        break;
    }
    place.moveLeft(std::clamp(place.left(), room.left(), room.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), room.top(), room.bottom() + 1 - place.height()));
    return place;
}

QRect popoverPlace(QSize size, const ScreenSpace& screen) {
    const auto room = roomOf(screen);
    QRect place({}, fitted(size, room));
    place.moveCenter(room.center());
    return place;
}

QPoint fromServerPixels(QPoint pixels, QPoint screenOrigin, qreal ratio) {
    return screenOrigin + (pixels - screenOrigin) / ratio;
}

} // namespace bridge
