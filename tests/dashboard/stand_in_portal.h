#pragma once

#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariantMap>

#include <optional>

namespace bridge {

// A session bus of the test's own, and on it the desktop's portal as far as its settings go.
class StandInPortal : public QDBusVirtualObject {
public:
    static bool isPossible() { return ChildProcess::isInstalled("dbus-daemon"); }

    StandInPortal();
    ~StandInPortal() override;

    QMap<QString, QVariantMap> settings;
    QList<QStringList> asked; // the groups of each call

    // From now on it is on the bus.
    void open();
    // A connection for the code under test.
    QDBusConnection client() const;
    void change(const QString& group, const QString& key, const QVariant& value);
    static QVariant colour(double red, double green, double blue);

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    TemporaryFolder m_folder;
    std::optional<ChildProcess> m_daemon;
    QString m_address;
    QString m_name; // of our connections
    std::optional<QDBusConnection> m_service;
};

} // namespace bridge
