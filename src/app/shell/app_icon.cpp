#include "app/shell/app_icon.h"

#include "app/shell/status_icon.h"

#include <QPainter>

namespace bridge {

namespace {

// Two links of a chain, for a theme that has no such symbol.
QPixmap drawnLink() {
    constexpr int side = 32;
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::gray, 3));
    painter.translate(side / 2, side / 2);
    painter.rotate(-45);
    constexpr int length = 16;
    constexpr int height = 10;
    for (const int left : {-length + 3, -3})
        painter.drawRoundedRect(left, -height / 2, length, height, height / 2, height / 2);
    return picture;
}

QIcon scaledDown(const QPixmap& picture) {
    QIcon icon;
    icon.addPixmap(picture.scaled(StatusIcon::side, StatusIcon::side, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    // For a display with twice as many dots.
    constexpr int most = 2 * StatusIcon::side;
    const bool isLarger = picture.width() > most || picture.height() > most;
    auto fine = isLarger ? picture.scaled(most, most, Qt::KeepAspectRatio, Qt::SmoothTransformation) : picture;
    fine.setDevicePixelRatio(2);
    icon.addPixmap(fine);
    return icon;
}

} // namespace

StatusIcon statusIcon(const QByteArray& base64) {
    QPixmap picture;
    const auto decoded = QByteArray::fromBase64Encoding(base64, QByteArray::AbortOnBase64DecodingErrors);
    if (decoded && picture.loadFromData(*decoded, "PNG")) return {scaledDown(picture), {}};
    return {QIcon::fromTheme("insert-link", scaledDown(drawnLink())), QString(productName) + " (link)"};
}

StatusIcon statusIcon() {
    return statusIcon(QByteArray(statusIconBase64.data(), static_cast<qsizetype>(statusIconBase64.size())));
}

} // namespace bridge
