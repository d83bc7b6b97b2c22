#include "app/shell/notifier_item.h"

#include "app/shell/notifier_adaptor.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace bridge {

namespace {

constexpr auto watcherService = "org.kde.StatusNotifierWatcher";
constexpr auto watcherPath = "/StatusNotifierWatcher";
constexpr auto itemPath = "/StatusNotifierItem";

QDBusMessage callToWatcher(const char* interface, const char* method) {
    return QDBusMessage::createMethodCall(watcherService, watcherPath, interface, method);
}

} // namespace

NotifierItem::NotifierItem(const QDBusConnection& bus, NotifierLooks looks)
    : m_bus(bus),
      m_looks(std::move(looks)),
      m_service("org.kde.StatusNotifierItem-" + QString::number(QCoreApplication::applicationPid()) + "-1"),
      m_watcher(watcherService, m_bus) {
    new NotifierAdaptor(*this); // ours from now on
    if (!m_bus.isConnected()) {
        m_hasHost = false;
        return;
    }
    m_bus.registerObject(itemPath, this);
    m_bus.registerService(m_service);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                if (owner.isEmpty()) return setHasHost(false);
                registerItem();
            });
    for (const auto* change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_bus.connect(watcherService, watcherPath, watcherService, change, this, SLOT(askForHost()));
    registerItem();
}

NotifierItem::~NotifierItem() {
    if (!m_bus.isConnected()) return;
    m_bus.unregisterService(m_service);
    m_bus.unregisterObject(itemPath);
}

void NotifierItem::registerItem() {
    auto call = callToWatcher(watcherService, "RegisterStatusNotifierItem");
    call << m_service;
    // Without a watcher nothing is started for its sake.
    call.setAutoStartService(false);
    m_bus.asyncCall(call);
    askForHost();
}

void NotifierItem::askForHost() {
    auto call = callToWatcher("org.freedesktop.DBus.Properties", "Get");
    call << QString(watcherService) << QString("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto* const answer = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        setHasHost(reply.isValid() && reply.value().variant().toBool());
        answer->deleteLater();
    });
}

void NotifierItem::setHasHost(bool hasHost) {
    if (m_hasHost == hasHost) return;
    m_hasHost = hasHost;
    emit hasHostChanged();
}

} // namespace bridge
