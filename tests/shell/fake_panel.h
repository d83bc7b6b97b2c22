#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QStringList>

namespace bridge {

// A panel with its watcher of status items, at its own door on the bus. `items` are those that registered.
class FakePanel : public QObject {
    Q_OBJECT

public:
    explicit FakePanel(const QString& busAddress);
    ~FakePanel() override;

    // The watcher's name on the bus.
    void appear();
    void vanish();
    // Whether the watcher has a panel that shows items.
    void setHasHost(bool hasHost);

    // As a panel does, to the last item.
    QDBusPendingCall call(const char* method, const QVariantList& arguments);
    QDBusPendingCall property(const char* name);

    QStringList items;
    bool hasHost = true;

signals:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    QDBusConnection m_bus;
};

class FakeWatcher : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

public:
    explicit FakeWatcher(FakePanel& panel) : QDBusAbstractAdaptor(&panel), m_panel(panel) { setAutoRelaySignals(true); }
    bool hasHost() const { return m_panel.hasHost; }

public slots:
    void RegisterStatusNotifierItem(const QString& service) { m_panel.items.append(service); }

signals:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

private:
    FakePanel& m_panel;
};

} // namespace bridge
