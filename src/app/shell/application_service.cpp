#include "app/shell/application_service.h"

namespace bridge {

ApplicationService::ApplicationService(const QDBusConnection& bus) : m_bus(bus) {
    new ApplicationAdaptor(*this); // ours from now on
    if (!m_bus.isConnected()) return;
    m_bus.registerObject(path, this);
    m_bus.registerService(name);
}

ApplicationService::~ApplicationService() {
    if (!m_bus.isConnected()) return;
    m_bus.unregisterService(name);
    m_bus.unregisterObject(path);
}

void ApplicationAdaptor::Activate(const QVariantMap& platformData) {
    emit m_service.activated(platformData.value("activation-token").toString());
}

void ApplicationAdaptor::Open(const QStringList&, const QVariantMap& platformData) {
    Activate(platformData);
}

void ApplicationAdaptor::ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData) {
    Activate(platformData);
}

} // namespace bridge
