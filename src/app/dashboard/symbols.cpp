#include "app/dashboard/symbols.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace bridge {

namespace {

void draw(QImage& image, const QString& file, const QString& colour) {
    QSvgRenderer drawing(file);
    QPainter painter(&image);
    drawing.render(&painter);
    if (colour.isEmpty()) return;
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), QColor('#' + colour));
}

} // namespace

QImage Symbols::requestImage(const QString& id, QSize* size, const QSize& wanted) {
    const auto name = id.section('/', 0, 0);
    const auto colour = id.section('/', 1, 1);
    const auto pixels = wanted.isEmpty() ? QSize(24, 24) : wanted;
    if (size) *size = pixels;
    const auto file = ":/qt/qml/Brindlefox/icons/" + name + ".svg";
    if (!QFile::exists(file)) return {}; // which the engine warns of
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    draw(image, file, colour);
    return image.copy(); // without what painting has attached to it, which is a hundred times its size
}

} // namespace bridge
