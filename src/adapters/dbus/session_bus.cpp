#include "adapters/dbus/session_bus.h"

#include <mutex>
#include <string_view>

namespace bridge {

namespace {

GLibPointer<GVariant> callBus(GDBusConnection* bus, const char* method, GVariant* arguments, const char* type,
                              GCancellable* cancellable) {
    constexpr int usualTimeout = -1;
    return GLibPointer<GVariant>(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments,
        G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NONE, usualTimeout, cancellable, nullptr));
}

} // namespace

GObjectPointer<GDBusConnection> sessionBus(GCancellable* cancellable) {
    // Without a bus GLib would launch one.
    const GLibPointer<char> address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, cancellable, nullptr));
    if (!address || std::string_view(address.get()).starts_with("autolaunch:")) return {};
    GObjectPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable, nullptr));
    if (!bus) return bus;
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    // GLib's one connection lives as long as somebody holds it, and the next one would end the program again with the
    // bus: a library that opens it by itself does not say otherwise.
    static std::mutex mutex;
    static GObjectPointer<GDBusConnection> kept;
    const std::lock_guard lock(mutex);
    if (kept.get() != bus.get()) kept.reset(G_DBUS_CONNECTION(g_object_ref(bus.get())));
    return bus;
}

GObjectPointer<GDBusConnection> openSystemBus(GCancellable* cancellable, GError** error) {
    const GLibPointer<char> address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, cancellable, error));
    if (!address) return {};
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return GObjectPointer<GDBusConnection>(
        g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, cancellable, error));
}

bool isNameServed(GDBusConnection* bus, const char* name, GCancellable* cancellable) {
    gboolean owned = FALSE;
    if (const auto answer = callBus(bus, "NameHasOwner", g_variant_new("(s)", name), "(b)", cancellable))
        g_variant_get(answer.get(), "(b)", &owned);
    if (owned) return true;

    const auto answer = callBus(bus, "ListActivatableNames", nullptr, "(as)", cancellable);
    if (!answer) return false;
    const GLibPointer<GVariant> names(g_variant_get_child_value(answer.get(), 0));
    const size_t count = g_variant_n_children(names.get());
    for (size_t index = 0; index < count; ++index) {
        const char* activatable = nullptr;
        g_variant_get_child(names.get(), index, "&s", &activatable);
        if (g_str_equal(activatable, name)) return true;
    }
    return false;
}

} // namespace bridge
