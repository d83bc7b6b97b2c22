#pragma once

#include <QByteArray>
#include <QIcon>
#include <QString>

namespace bridge {

inline constexpr auto productName = "Brindlefox Apple Bridge";

// The icon of the status item, in as many sizes as panels ask for.
struct StatusIcon {
    // In panels an icon is as high as a line of text.
    static constexpr int side = 18;

    QIcon icon;
    // What a screen reader says of the icon; empty where the product's own picture, with its tool tip, says it all.
    QString accessibleDescription;
};

// The picture that is stored in the program; the symbol "link" when it can't be decoded.
StatusIcon statusIcon(const QByteArray& base64);
StatusIcon statusIcon();

} // namespace bridge
