#include "tests/shell/fake_panel.h"

#include <QDBusVariant>

namespace bridge {

namespace {

constexpr auto watcher = "org.kde.StatusNotifierWatcher";

} // namespace

FakePanel::FakePanel(const QString& busAddress) : m_bus(QDBusConnection::connectToBus(busAddress, "panel")) {
    new FakeWatcher(*this);
    m_bus.registerObject("/StatusNotifierWatcher", this);
}

FakePanel::~FakePanel() {
    vanish();
    QDBusConnection::disconnectFromBus("panel");
}

void FakePanel::appear() {
    m_bus.registerService(watcher);
}

void FakePanel::vanish() {
    m_bus.unregisterService(watcher);
    items.clear();
}

void FakePanel::setHasHost(bool has) {
    hasHost = has;
    if (has)
        emit StatusNotifierHostRegistered();
    else
        emit StatusNotifierHostUnregistered();
}

QDBusPendingCall FakePanel::call(const char* method, const QVariantList& arguments) {
    auto message =
        QDBusMessage::createMethodCall(items.last(), "/StatusNotifierItem", "org.kde.StatusNotifierItem", method);
    message.setArguments(arguments);
    return m_bus.asyncCall(message);
}

QDBusPendingCall FakePanel::property(const char* name) {
    auto message =
        QDBusMessage::createMethodCall(items.last(), "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get");
    message.setArguments({"org.kde.StatusNotifierItem", name});
    return m_bus.asyncCall(message);
}

} // namespace bridge
