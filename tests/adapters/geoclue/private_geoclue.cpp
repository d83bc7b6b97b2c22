#include "tests/adapters/geoclue/private_geoclue.h"

#include "tests/adapters/geoclue/private_system_bus.h"

#include <cstdlib>
#include <unistd.h>

namespace bridge {

namespace {

constexpr auto serviceName = "org.freedesktop.GeoClue2";
constexpr auto service = "/usr/libexec/geoclue";
constexpr auto agent = "/usr/libexec/geoclue-2.0/demos/agent";
constexpr auto configuration = "/etc/geoclue/geoclue.conf";

// Mounts of its own; in a user namespace where we are not root, and as ourselves there, for the bus looks who calls.
std::string ownMounts() {
    return getuid() == 0 ? "unshare --mount" : "unshare --map-current-user --keep-caps --mount";
}

bool canMount() {
    const auto attempt = ownMounts() + " mount --bind /etc /etc 2>/dev/null";
    return std::system(attempt.c_str()) == 0;
}

} // namespace

std::string PrivateGeoClue::hindrance() {
    if (!PrivateBus::isPossible()) return "dbus-daemon is not installed";
    for (const auto* needed : {service, agent, configuration})
        if (access(needed, F_OK) != 0) return std::string(needed) + " is not installed";
    return canMount() ? "" : "neither root nor a user namespace may mount another configuration of GeoClue";
}

std::map<std::string, std::string> PrivateGeoClue::environment() const {
    const auto& bus = PrivateSystemBus::instance().address();
    return {{"DBUS_SYSTEM_BUS_ADDRESS", bus},
            {"DBUS_SESSION_BUS_ADDRESS", bus},
            {"HOME", m_folder.path().string()},
            {"GSETTINGS_BACKEND", "memory"}};
}

void PrivateGeoClue::start(Us us) {
    const auto file = m_folder.file("geoclue.conf");
    // The server is asked also where it is switched off.
    putFile(file, "[agent]\nwhitelist=geoclue-demo-agent\n"
                  "[network-nmea]\nenable=true\nnmea-socket=" +
                      receiverSocket() +
                      "\n[3g]\nenable=false\n[cdma]\nenable=false\n[modem-gps]\nenable=false\n[compass]\nenable=false\n"
                      "[wifi]\nenable=false\nurl=http://127.0.0.1:9/\nsubmit-data=false\n"
                      "[brindlefox-apple-bridge]\nsystem=false\nusers=\nallowed=" +
                      (us == Us::allowed ? "true" : "false") + "\n");
    const auto script = std::string("mount --bind ") + file + " " + configuration + " && exec " + service + " -t 0";
    const std::vector<std::string> command{"sh", "-c", "exec " + ownMounts() + " sh -c '" + script + "'"};
    m_service = std::make_unique<ChildProcess>(command, environment(), "");
    PrivateSystemBus::instance().waitUntil(PrivateBus::Owned::yes, serviceName);
}

void PrivateGeoClue::startAgent() {
    const std::vector<std::string> command{agent};
    m_agent = std::make_unique<ChildProcess>(command, environment(), "");
}

void PrivateGeoClue::end() {
    if (!m_service) return;
    m_service.reset();
    m_agent.reset();
    PrivateSystemBus::instance().waitUntil(PrivateBus::Owned::no, serviceName);
}

bool PrivateGeoClue::isInUse() const {
    const auto connection = PrivateSystemBus::instance().connect();
    constexpr int usualTimeout = -1;
    const GLibPointer<GVariant> answer(g_dbus_connection_call_sync(
        connection.get(), serviceName, "/org/freedesktop/GeoClue2/Manager", "org.freedesktop.DBus.Properties", "Get",
        g_variant_new("(ss)", "org.freedesktop.GeoClue2.Manager", "InUse"), nullptr, G_DBUS_CALL_FLAGS_NONE,
        usualTimeout, nullptr, nullptr));
    if (!answer) throw std::runtime_error("GeoClue does not answer");
    GVariant* value = nullptr;
    g_variant_get(answer.get(), "(v)", &value);
    const GLibPointer<GVariant> owned(value);
    return g_variant_get_boolean(value);
}

} // namespace bridge
