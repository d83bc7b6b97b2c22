#include "adapters/geoclue/geoclue_session.h"

#include "adapters/dbus/session_bus.h"
#include "adapters/geoclue/geoclue_error.h"
#include "adapters/geoclue/geoclue_names.h"
#include "adapters/geoclue/location_properties.h"

#include <utility>

namespace bridge {

namespace {

constexpr guint32 exactAccuracy = 8; // GClueAccuracyLevel
constexpr double goodAccuracy = 100; // metres
constexpr int noTimeout = G_MAXINT;  // whoever waits has a clock

void throwIf(GError* error) {
    if (!error) return;
    const GLibPointer<GError> owned(error);
    throw geoclueError(*owned);
}

gboolean raise(gpointer flag) {
    *static_cast<bool*>(flag) = true;
    return G_SOURCE_REMOVE;
}

// An accuracy below zero is none.
bool isGood(const LocationFix& fix) {
    return fix.horizontalAccuracy >= 0 && fix.horizontalAccuracy <= goodAccuracy;
}

bool isBetter(const LocationFix& fix, const LocationFix& other) {
    if (fix.horizontalAccuracy < 0) return false;
    return other.horizontalAccuracy < 0 || fix.horizontalAccuracy <= other.horizontalAccuracy;
}

} // namespace

ThreadContext::~ThreadContext() {
    g_main_context_pop_thread_default(m_context.get());
}

void ThreadContext::attach(GSource* source, GSourceFunc function, void* data) const {
    g_source_set_callback(source, function, data, nullptr);
    g_source_attach(source, m_context.get());
    g_source_unref(source);
}

GeoClueSession::GeoClueSession(GCancellable* cancellable) : m_cancellable(cancellable) {
    GError* error = nullptr;
    m_bus = openSystemBus(m_cancellable, &error);
    if (!m_bus) {
        const GLibPointer<GError> owned(error);
        throw PlatformError(std::string("The system bus, where GeoClue finds the location, can't be reached: ") +
                            owned->message);
    }
    // Not by a source of GLib's for cancellables: one that is disposed of while it is cancelled may be lost.
    const auto wakeUp = [](GCancellable*, gpointer context) { static_cast<ThreadContext*>(context)->wakeUp(); };
    m_waking = g_cancellable_connect(m_cancellable, G_CALLBACK(+wakeUp), &m_context, nullptr);
    watchService();
}

GeoClueSession::~GeoClueSession() {
    g_cancellable_disconnect(m_cancellable, m_waking);
    for (const guint subscription : m_subscriptions)
        g_dbus_connection_signal_unsubscribe(m_bus.get(), subscription);
    if (!m_client.empty()) {
        // Nobody waits for the answer; the user's location indicator goes off with the client.
        g_dbus_connection_call(m_bus.get(), geoclue::service, geoclue::managerPath, geoclue::managerInterface,
                               "DeleteClient", g_variant_new("(o)", m_client.c_str()), nullptr,
                               G_DBUS_CALL_FLAGS_NO_AUTO_START, noTimeout, nullptr, nullptr, nullptr);
        g_dbus_connection_flush_sync(m_bus.get(), nullptr, nullptr);
    }
    g_dbus_connection_close_sync(m_bus.get(), nullptr, nullptr);
    // Until that is said, connection and context keep each other alive.
    while (!m_isClosed)
        m_context.wait();
}

GLibPointer<GVariant> GeoClueSession::call(const std::string& path, const char* interface, const char* method,
                                           GVariant* arguments, const char* type, GError** error) const {
    return GLibPointer<GVariant>(g_dbus_connection_call_sync(m_bus.get(), geoclue::service, path.c_str(), interface,
                                                             method, arguments, type ? G_VARIANT_TYPE(type) : nullptr,
                                                             G_DBUS_CALL_FLAGS_NONE, noTimeout, m_cancellable, error));
}

GLibPointer<GVariant> GeoClueSession::call(const std::string& path, const char* interface, const char* method,
                                           GVariant* arguments, const char* type) const {
    GError* error = nullptr;
    auto answer = call(path, interface, method, arguments, type, &error);
    throwIf(error);
    return answer;
}

void GeoClueSession::watchService() {
    const auto changed = [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* names,
                            gpointer isGone) {
        const char* owner = nullptr;
        g_variant_get(names, "(&s&s&s)", nullptr, nullptr, &owner);
        if (*owner == '\0') *static_cast<bool*>(isGone) = true;
    };
    m_subscriptions.push_back(g_dbus_connection_signal_subscribe(
        m_bus.get(), "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged", "/org/freedesktop/DBus",
        geoclue::service, G_DBUS_SIGNAL_FLAGS_NONE, changed, &m_isGone, nullptr));
    const auto closed = [](GDBusConnection*, gboolean, GError*, gpointer isClosed) {
        *static_cast<bool*>(isClosed) = true;
    };
    g_signal_connect(m_bus.get(), "closed", G_CALLBACK(+closed), &m_isClosed);
}

void GeoClueSession::createClient() {
    const auto answer = call(geoclue::managerPath, geoclue::managerInterface, "CreateClient", nullptr, "(o)");
    const char* path = nullptr;
    g_variant_get(answer.get(), "(&o)", &path);
    m_client = path;
}

void GeoClueSession::startClient() {
    const auto updated = [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* paths,
                            gpointer update) {
        const char* newest = nullptr;
        if (!g_variant_is_of_type(paths, G_VARIANT_TYPE("(oo)"))) return;
        g_variant_get(paths, "(&o&o)", nullptr, &newest);
        *static_cast<std::string*>(update) = newest;
    };
    m_subscriptions.push_back(g_dbus_connection_signal_subscribe(
        m_bus.get(), geoclue::service, geoclue::clientInterface, "LocationUpdated", m_client.c_str(), nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE, updated, &m_update, nullptr));
    const auto set = [&](const char* property, GVariant* value) {
        call(m_client, "org.freedesktop.DBus.Properties", "Set",
             g_variant_new("(ssv)", geoclue::clientInterface, property, value), nullptr);
    };
    set("DesktopId", g_variant_new_string(geoclue::desktopID));
    set("RequestedAccuracyLevel", g_variant_new_uint32(exactAccuracy));
    call(m_client, geoclue::clientInterface, "Start", nullptr, nullptr);
}

LocationFix GeoClueSession::locate(std::chrono::milliseconds settling) {
    createClient();
    startClient();
    std::optional<LocationFix> best;
    while (!best || (!isGood(*best) && !m_isSettled)) {
        if (!g_cancellable_is_cancelled(m_cancellable)) m_context.wait();
        if (g_cancellable_is_cancelled(m_cancellable)) throw PlatformError("Nobody waits for the location any more.");
        if (m_isGone || m_isClosed) {
            if (best) break;
            throw geoclueIsGone();
        }
        const auto found = nextFix();
        if (found && !best) settleWithin(settling);
        if (found && (!best || isBetter(*found, *best))) best = found;
    }
    return *best;
}

// One that has come since the last.
std::optional<LocationFix> GeoClueSession::nextFix() {
    const auto path = std::exchange(m_update, {});
    if (path.empty()) return std::nullopt;
    GError* error = nullptr;
    const auto answer = call(path, "org.freedesktop.DBus.Properties", "GetAll",
                             g_variant_new("(s)", geoclue::locationInterface), "(a{sv})", &error);
    // A newer one has taken its place already, and is being told of.
    if (g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD) ||
        g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_OBJECT)) {
        g_error_free(error);
        return std::nullopt;
    }
    throwIf(error);
    const GLibPointer<GVariant> properties(g_variant_get_child_value(answer.get(), 0));
    return fixFromProperties(properties.get());
}

void GeoClueSession::settleWithin(std::chrono::milliseconds time) {
    m_context.attach(g_timeout_source_new(static_cast<guint>(time.count())), raise, &m_isSettled);
}

} // namespace bridge
