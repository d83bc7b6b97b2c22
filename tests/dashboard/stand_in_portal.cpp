#include "tests/dashboard/stand_in_portal.h"

#include <QDBusMetaType>
#include <QDBusVariant>

#include <stdexcept>

namespace {

struct Colour {
    double red = 0, green = 0, blue = 0;
};
QDBusArgument& operator<<(QDBusArgument& argument, const Colour& colour) {
    argument.beginStructure();
    argument << colour.red << colour.green << colour.blue;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, Colour& colour) {
    argument.beginStructure();
    argument >> colour.red >> colour.green >> colour.blue;
    argument.endStructure();
    return argument;
}

constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* interface = "org.freedesktop.portal.Settings";

} // namespace

Q_DECLARE_METATYPE(Colour)

namespace bridge {

StandInPortal::StandInPortal() {
    qDBusRegisterMetaType<Colour>();
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
    const auto configuration = m_folder.file("bus.conf");
    putFile(configuration,
            "<busconfig><type>session</type><keep_umask/><listen>unix:tmpdir=" + m_folder.path().string() +
                "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                "<allow eavesdrop=\"true\"/>"
                "<allow own=\"*\"/></policy></busconfig>");
    m_daemon.emplace(
        std::vector<std::string>{"dbus-daemon", "--nofork", "--print-address=1", "--config-file=" + configuration},
        std::map<std::string, std::string>{}, "");
    m_address = QString::fromStdString(m_daemon->readLine());
    m_name = QString::fromStdString(m_folder.path().filename().string());
    m_service = QDBusConnection::connectToBus(m_address, m_name + "-portal");
    if (!m_service->isConnected()) throw std::runtime_error("the private bus can't be reached");
}

StandInPortal::~StandInPortal() {
    m_service->unregisterObject(path);
    m_service.reset();
    QDBusConnection::disconnectFromBus(m_name + "-portal");
    QDBusConnection::disconnectFromBus(m_name + "-client");
}

void StandInPortal::open() {
    if (!m_service->registerVirtualObject(path, this) || !m_service->registerService("org.freedesktop.portal.Desktop"))
        throw std::runtime_error("the portal can't be on the bus");
}

QDBusConnection StandInPortal::client() const {
    return QDBusConnection::connectToBus(m_address, m_name + "-client");
}

void StandInPortal::change(const QString& group, const QString& key, const QVariant& value) {
    auto signal = QDBusMessage::createSignal(path, interface, "SettingChanged");
    signal << group << key << QVariant::fromValue(QDBusVariant(value));
    m_service->send(signal);
}

QVariant StandInPortal::colour(double red, double green, double blue) {
    return QVariant::fromValue(Colour{red, green, blue});
}

bool StandInPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.member() != "ReadAll") return false;
    asked << message.arguments().value(0).toStringList();
    return connection.send(message.createReply(QVariant::fromValue(settings)));
}

} // namespace bridge
