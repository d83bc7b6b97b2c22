#include "tests/support/private_bus.h"

namespace bridge {

namespace {

constexpr unsigned patienceSeconds = 30;

struct Watch {
    bool wanted;
    bool seen = false;
    bool late = false;
};

} // namespace

void PrivateBus::start(const std::map<std::string, std::string>& environment) {
    if (!isPossible()) return;
    m_folder.emplace();
    std::filesystem::create_directory(serviceFolder());
    const auto configuration = m_folder->file("bus.conf");
    putFile(configuration,
            "<busconfig><type>session</type><keep_umask/><listen>unix:tmpdir=" + m_folder->path().string() +
                "</listen><servicedir>" + serviceFolder().string() +
                "</servicedir><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
                "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>");
    const std::vector<std::string> command{"dbus-daemon", "--nofork", "--print-address=1",
                                           "--config-file=" + configuration};
    m_daemon = std::make_unique<ChildProcess>(command, environment, "");
    m_address = m_daemon->readLine();
    ASSERT_NE(m_address, "") << "dbus-daemon does not start";
    setenv("DBUS_SESSION_BUS_ADDRESS", m_address.c_str(), 1);
}

void PrivateBus::TearDown() {
    m_daemon.reset();
    m_folder.reset();
}

GObjectPointer<GDBusConnection> PrivateBus::connect() const {
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GObjectPointer<GDBusConnection> bus(
        g_dbus_connection_new_for_address_sync(m_address.c_str(), flags, nullptr, nullptr, nullptr));
    if (!bus) throw std::runtime_error("the private bus can't be reached");
    return bus;
}

void PrivateBus::waitUntil(Owned owned, const std::string& name) const {
    const GLibPointer<GMainContext> context(g_main_context_new());
    g_main_context_push_thread_default(context.get());
    Watch watch{owned == Owned::yes};
    const auto bus = connect();
    const auto appeared = [](GDBusConnection*, const gchar*, const gchar*, gpointer data) {
        static_cast<Watch*>(data)->seen |= static_cast<Watch*>(data)->wanted;
    };
    const auto vanished = [](GDBusConnection*, const gchar*, gpointer data) {
        static_cast<Watch*>(data)->seen |= !static_cast<Watch*>(data)->wanted;
    };
    const auto watching = g_bus_watch_name_on_connection(bus.get(), name.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE,
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
    if (watch.late) throw std::runtime_error(name + " neither came nor went");
}

GLibPointer<GVariant> PrivateBus::call(const char* method, GVariant* arguments, const char* type) const {
    constexpr int usualTimeout = -1;
    const auto bus = connect();
    return GLibPointer<GVariant>(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments,
        G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NONE, usualTimeout, nullptr, nullptr));
}

void PrivateBus::reload() const {
    if (!call("ReloadConfig", nullptr, "()")) throw std::runtime_error("the private bus does not read its folder");
}

pid_t PrivateBus::processOf(const std::string& name) const {
    guint32 process = 0;
    if (const auto answer = call("GetConnectionUnixProcessID", g_variant_new("(s)", name.c_str()), "(u)"))
        g_variant_get(answer.get(), "(u)", &process);
    return static_cast<pid_t>(process);
}

std::vector<std::string> PrivateBus::names() const {
    std::vector<std::string> found;
    const auto answer = call("ListNames", nullptr, "(as)");
    if (!answer) throw std::runtime_error("the private bus does not answer");
    const GLibPointer<GVariant> names(g_variant_get_child_value(answer.get(), 0));
    const size_t count = g_variant_n_children(names.get());
    for (size_t index = 0; index < count; ++index) {
        const char* name = nullptr;
        g_variant_get_child(names.get(), index, "&s", &name);
        found.emplace_back(name);
    }
    return found;
}

} // namespace bridge
