#pragma once

#include <QRect>

namespace bridge {

// One screen: all of it, and what panels leave of it.
struct ScreenSpace {
    QRect whole;
    QRect available;
};

// Where a popover of `size` goes that belongs to `anchor`, an icon in a panel: beside the panel, as near to the icon's
// middle as the screen allows, and never outside what is available; smaller when that is smaller.
QRect popoverPlace(const QRect& anchor, QSize size, const ScreenSpace& screen);

// In the middle, for want of an icon.
QRect popoverPlace(QSize size, const ScreenSpace& screen);

// A point in the pixels of the X server, or of a panel that asks it, as Qt counts: a screen begins where it does for
// the server, and within it counts in units of `ratio` pixels.
QPoint fromServerPixels(QPoint pixels, QPoint screenOrigin, qreal ratio);

} // namespace bridge
