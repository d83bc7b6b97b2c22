#pragma once

#include "app/shell/notifier_item.h"

#include <QRect>
#include <QSystemTrayIcon>

#include <memory>
#include <optional>

namespace bridge {

// The icon in the panel: by D-Bus where a panel shows such items, else in the tray of an X server.
class StatusItem : public QObject {
    Q_OBJECT

public:
    // `bus` is the session's, connected or not.
    explicit StatusItem(const QDBusConnection& bus);

signals:
    // The user clicked on it. `place` is the icon or the point that was clicked, where that is known.
    void clicked(const std::optional<QRect>& place);
    void activationTokenGiven(const QString& token);

private:
    void useTrayAsNeeded();

    NotifierItem m_notifier;
    std::unique_ptr<QSystemTrayIcon> m_tray;
};

} // namespace bridge
