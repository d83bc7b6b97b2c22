#include "app/shell/notifier_adaptor.h"

#include <QDBusMetaType>
#include <QImage>

namespace bridge {

QDBusArgument& operator<<(QDBusArgument& message, const NotifierPicture& picture) {
    message.beginStructure();
    message << picture.width << picture.height << picture.pixels;
    message.endStructure();
    return message;
}

const QDBusArgument& operator>>(const QDBusArgument& message, NotifierPicture& picture) {
    message.beginStructure();
    message >> picture.width >> picture.height >> picture.pixels;
    message.endStructure();
    return message;
}

QDBusArgument& operator<<(QDBusArgument& message, const NotifierToolTip& tip) {
    message.beginStructure();
    message << tip.iconName << tip.pictures << tip.title << tip.text;
    message.endStructure();
    return message;
}

const QDBusArgument& operator>>(const QDBusArgument& message, NotifierToolTip& tip) {
    message.beginStructure();
    message >> tip.iconName >> tip.pictures >> tip.title >> tip.text;
    message.endStructure();
    return message;
}

namespace {

NotifierPicture pictureOf(const QPixmap& pixmap) {
    const auto image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    NotifierPicture picture{image.width(), image.height(), {}};
    picture.pixels.reserve(4 * image.width() * image.height());
    for (int row = 0; row < image.height(); ++row)
        for (int column = 0; column < image.width(); ++column) {
            const auto pixel = image.pixel(column, row);
            for (const int part : {qAlpha(pixel), qRed(pixel), qGreen(pixel), qBlue(pixel)})
                picture.pixels.append(static_cast<char>(part));
        }
    return picture;
}

} // namespace

NotifierPictures picturesOf(const QIcon& icon) {
    NotifierPictures pictures;
    for (const auto size : icon.availableSizes())
        pictures.append(pictureOf(icon.pixmap(size, 1.0)));
    return pictures;
}

NotifierAdaptor::NotifierAdaptor(NotifierItem& item) : QDBusAbstractAdaptor(&item), m_item(item) {
    qDBusRegisterMetaType<NotifierPicture>();
    qDBusRegisterMetaType<NotifierPictures>();
    qDBusRegisterMetaType<NotifierToolTip>();
}

} // namespace bridge
