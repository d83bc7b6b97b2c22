#include "tests/adapters/secretservice/private_keyring.h"

#include "adapters/secretservice/glib_pointer.h"

#include <fstream>

namespace bridge {

namespace {

constexpr auto serviceName = "org.freedesktop.secrets";
constexpr unsigned patienceSeconds = 30;

std::string busAddress;

// A connection that shares nothing with the code under test.
GObjectPointer<GDBusConnection> connect() {
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GObjectPointer<GDBusConnection> bus(
        g_dbus_connection_new_for_address_sync(busAddress.c_str(), flags, nullptr, nullptr, nullptr));
    if (!bus) throw std::runtime_error("the private bus can't be reached");
    return bus;
}

struct Watch {
    bool wanted;
    bool seen = false;
    bool late = false;
};

void waitUntilOwned(bool owned) {
    const GLibPointer<GMainContext> context(g_main_context_new());
    g_main_context_push_thread_default(context.get());
    Watch watch{owned};
    const auto bus = connect();
    const auto appeared = [](GDBusConnection*, const gchar*, const gchar*, gpointer data) {
        static_cast<Watch*>(data)->seen |= static_cast<Watch*>(data)->wanted;
    };
    const auto vanished = [](GDBusConnection*, const gchar*, gpointer data) {
        static_cast<Watch*>(data)->seen |= !static_cast<Watch*>(data)->wanted;
    };
    const auto watching = g_bus_watch_name_on_connection(bus.get(), serviceName, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                                         appeared, vanished, &watch, nullptr);
    GSource* patience = g_timeout_source_new_seconds(patienceSeconds);
    const GSourceFunc giveUp = [](gpointer data) -> gboolean {
        static_cast<Watch*>(data)->late = true;
        return G_SOURCE_REMOVE;
    };
    g_source_set_callback(patience, giveUp, &watch, nullptr);
    g_source_attach(patience, context.get());
    while (!watch.seen && !watch.late)
        g_main_context_iteration(context.get(), TRUE);
    g_source_destroy(patience);
    g_source_unref(patience);
    g_bus_unwatch_name(watching);
    g_main_context_pop_thread_default(context.get());
    if (watch.late) throw std::runtime_error("the keyring neither came nor went");
}

[[maybe_unused]] auto* const environment = testing::AddGlobalTestEnvironment(new PrivateBus);

} // namespace

const std::string& PrivateBus::address() {
    return busAddress;
}

void PrivateBus::SetUp() {
    if (!isPossible()) return;
    m_folder.emplace();
    const auto configuration = m_folder->file("bus.conf");
    std::ofstream(configuration)
        << "<busconfig><type>session</type><keep_umask/><listen>unix:tmpdir=" << m_folder->path().string()
        << "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
    const std::vector<std::string> command{"dbus-daemon", "--nofork", "--print-address=1",
                                           "--config-file=" + configuration};
    m_daemon = std::make_unique<ChildProcess>(command, std::map<std::string, std::string>(), "");
    busAddress = m_daemon->readLine();
    ASSERT_NE(busAddress, "") << "dbus-daemon does not start";
    setenv("DBUS_SESSION_BUS_ADDRESS", busAddress.c_str(), 1);
}

void PrivateBus::TearDown() {
    m_daemon.reset();
    m_folder.reset();
}

std::string PrivateKeyring::hindrance() {
    for (const auto* program : {"dbus-daemon", "gnome-keyring-daemon"})
        if (!ChildProcess::isInstalled(program)) return std::string(program) + " is not installed";
    return {};
}

void PrivateKeyring::start(State state) {
    const auto home = m_home.path().string();
    const std::map<std::string, std::string> variables{{"DBUS_SESSION_BUS_ADDRESS", busAddress},
                                                       {"HOME", home},
                                                       {"XDG_RUNTIME_DIR", home},
                                                       {"XDG_DATA_HOME", home + "/data"},
                                                       {"XDG_CONFIG_HOME", home + "/config"},
                                                       {"XDG_CACHE_HOME", home + "/cache"}};
    std::vector<std::string> command{"gnome-keyring-daemon", "--foreground", "--components=secrets"};
    if (state == State::unlocked) command.emplace_back("--unlock");
    m_daemon = std::make_unique<ChildProcess>(command, variables, state == State::unlocked ? "password" : "");
    waitUntilOwned(true);
}

void PrivateKeyring::end() {
    m_daemon.reset();
    waitUntilOwned(false);
}

void PrivateKeyring::lock() {
    const auto bus = connect();
    const char* const collections[] = {"/org/freedesktop/secrets/collection/login", nullptr};
    constexpr int usualTimeout = -1;
    const GLibPointer<GVariant> answer(g_dbus_connection_call_sync(
        bus.get(), serviceName, "/org/freedesktop/secrets", "org.freedesktop.Secret.Service", "Lock",
        g_variant_new("(^ao)", collections), nullptr, G_DBUS_CALL_FLAGS_NONE, usualTimeout, nullptr, nullptr));
    if (!answer) throw std::runtime_error("the keyring can't be locked");
}

} // namespace bridge
