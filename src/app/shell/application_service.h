#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QString>
#include <QVariantMap>

namespace bridge {

// The program under its name on the session bus, as org.freedesktop.Application has it, for launchers that show a
// running program instead of starting another.
class ApplicationService : public QObject {
    Q_OBJECT

public:
    static constexpr auto name = "org.brindlefox.AppleBridge";
    static constexpr auto path = "/org/brindlefox/AppleBridge";

    explicit ApplicationService(const QDBusConnection& bus);
    ~ApplicationService() override;

signals:
    void activated(const QString& activationToken);

private:
    QDBusConnection m_bus;
};

class ApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationAdaptor(ApplicationService& service) : QDBusAbstractAdaptor(&service), m_service(service) {}

public slots:
    void Activate(const QVariantMap& platformData);
    // It opens no files and has no actions.
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameter, const QVariantMap& platformData);

private:
    ApplicationService& m_service;
};

} // namespace bridge
