#include "app/shell/status_item.h"

#include "app/shell/app_icon.h"
#include "app/shell/popover_place.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace bridge {

namespace {

NotifierLooks looks() {
    auto [icon, description] = statusIcon();
    return {"brindlefox-apple-bridge", productName, std::move(icon), std::move(description)};
}

// Panels that know no place say (0, 0); then it is where the pointer is, which has just clicked.
QRect clickedPlace(QPoint pixels) {
    QPoint point = QCursor::pos();
    for (const auto* screen : QGuiApplication::screens()) {
        const auto ratio = screen->devicePixelRatio();
        const auto origin = screen->geometry().topLeft();
        const bool isHere = QRect(origin, screen->geometry().size() * ratio).contains(pixels);
        if (isHere && !pixels.isNull()) point = fromServerPixels(pixels, origin, ratio);
    }
    return {point, QSize(1, 1)};
}

} // namespace

StatusItem::StatusItem(const QDBusConnection& bus) : m_notifier(bus, looks()) {
    connect(&m_notifier, &NotifierItem::activated, this, [this](QPoint place) { emit clicked(clickedPlace(place)); });
    connect(&m_notifier, &NotifierItem::activationTokenGiven, this, &StatusItem::activationTokenGiven);
    connect(&m_notifier, &NotifierItem::hasHostChanged, this, &StatusItem::useTrayAsNeeded);
    useTrayAsNeeded();
}

void StatusItem::useTrayAsNeeded() {
    const auto hasHost = m_notifier.hasHost();
    if (!hasHost) return;
    // Qt asks the bus once whether a panel is there. It must not before the answer is no, or it would talk to the panel
    // by D-Bus as well, in a way that loses the place of a click.
    if (*hasHost) {
        if (m_tray) m_tray->hide();
    } else if (QGuiApplication::platformName() == "xcb") {
        if (!m_tray) {
            m_tray = std::make_unique<QSystemTrayIcon>(m_notifier.looks().icon);
            m_tray->setToolTip(m_notifier.looks().title);
            connect(m_tray.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
                // The second of two quick clicks comes as this and as nothing else.
                const bool isSecond = reason == QSystemTrayIcon::DoubleClick;
                if (!isSecond && reason != QSystemTrayIcon::Trigger && reason != QSystemTrayIcon::Context) return;
                const auto place = m_tray->geometry();
                emit clicked(place.isValid() ? place : QRect(QCursor::pos(), QSize(1, 1)));
            });
        }
        m_tray->show();
    }
}

} // namespace bridge
