#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QIcon>
#include <QObject>
#include <QPoint>

#include <optional>

namespace bridge {

// What a panel is told of the item.
struct NotifierLooks {
    QString id;
    QString title;
    QIcon icon;
    QString accessibleDescription;
};

// The status item as a StatusNotifierItem on a D-Bus connection. It registers with the watcher, also one that comes
// later or anew, and knows whether there is a panel that shows it.
class NotifierItem : public QObject {
    Q_OBJECT

public:
    NotifierItem(const QDBusConnection& bus, NotifierLooks looks);
    ~NotifierItem() override;

    const NotifierLooks& looks() const { return m_looks; }
    // Whether a panel shows such items; nothing until the bus has answered that.
    std::optional<bool> hasHost() const { return m_hasHost; }

signals:
    // A click, or its equal on the keyboard; in the pixels of the X server, (0, 0) where the panel doesn't say.
    void activated(QPoint place);
    void hasHostChanged();
    // The user's click as a Wayland compositor takes it as a reason to let a window to the front.
    void activationTokenGiven(const QString& token);

private:
    void registerItem();
    void setHasHost(bool hasHost);

private slots:
    void askForHost();

private:
    QDBusConnection m_bus;
    NotifierLooks m_looks;
    QString m_service;
    QDBusServiceWatcher m_watcher;
    std::optional<bool> m_hasHost;
};

} // namespace bridge
