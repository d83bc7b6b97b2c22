#pragma once

#include <QQuickImageProvider>

namespace bridge {

// Our own symbols, drawn at any size and in any colour: "image://symbol/<name>/<aarrggbb>", or without a colour as they
// are. By the processor alone, so that every renderer shows the same.
class Symbols : public QQuickImageProvider {
public:
    Symbols() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& wanted) override;
};

} // namespace bridge
