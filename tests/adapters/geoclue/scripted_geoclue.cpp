#include "tests/adapters/geoclue/scripted_geoclue.h"

#include "tests/adapters/geoclue/private_system_bus.h"

#include <algorithm>
#include <functional>

namespace bridge {

namespace {

constexpr auto serviceName = "org.freedesktop.GeoClue2";
constexpr auto managerPath = "/org/freedesktop/GeoClue2/Manager";
constexpr auto clientPath = "/org/freedesktop/GeoClue2/Client/1";
const std::string locationPaths = "/org/freedesktop/GeoClue2/Location/";

constexpr auto interfaces = R"xml(<node>
  <interface name="org.freedesktop.GeoClue2.Manager">
    <method name="CreateClient"><arg direction="out" type="o"/></method>
    <method name="DeleteClient"><arg direction="in" type="o"/></method>
  </interface>
  <interface name="org.freedesktop.GeoClue2.Client">
    <method name="Start"/>
    <method name="Stop"/>
    <property name="DesktopId" type="s" access="readwrite"/>
    <property name="RequestedAccuracyLevel" type="u" access="readwrite"/>
  </interface>
  <interface name="org.freedesktop.GeoClue2.Location">
    <property name="Latitude" type="d" access="read"/>
    <property name="Longitude" type="d" access="read"/>
    <property name="Accuracy" type="d" access="read"/>
    <property name="Altitude" type="d" access="read"/>
    <property name="Timestamp" type="(tt)" access="read"/>
  </interface>
</node>)xml";

void refuse(GDBusMethodInvocation* invocation) {
    g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.DBus.Error.AccessDenied", "not for you");
}

} // namespace

ScriptedGeoClue::ScriptedGeoClue(Plan plan) : m_plan(std::move(plan)) {
    m_node = g_dbus_node_info_new_for_xml(interfaces, nullptr);
    m_thread = std::thread([this] { run(); });
    PrivateSystemBus::instance().waitUntil(PrivateBus::Owned::yes, serviceName);
}

ScriptedGeoClue::~ScriptedGeoClue() {
    onThread([this] { g_main_loop_quit(m_loop); });
    m_thread.join();
    g_main_loop_unref(m_loop);
    g_dbus_node_info_unref(m_node);
    PrivateSystemBus::instance().waitUntil(PrivateBus::Owned::no, serviceName);
}

void ScriptedGeoClue::run() {
    g_main_context_push_thread_default(m_context.get());
    m_bus = PrivateSystemBus::instance().connect();
    registerObject(managerPath, m_node->interfaces[0]);
    registerObject(clientPath, m_node->interfaces[1]);
    const guint32 doNotQueue = 4;
    const GLibPointer<GVariant> named(g_dbus_connection_call_sync(
        m_bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", serviceName, doNotQueue), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    g_main_loop_run(m_loop);
    for (const guint object : m_objects)
        g_dbus_connection_unregister_object(m_bus.get(), object);
    bool isClosed = false;
    g_signal_connect(m_bus.get(), "closed", G_CALLBACK(+[](GDBusConnection*, gboolean, GError*, gpointer flag) {
                         *static_cast<bool*>(flag) = true;
                     }),
                     &isClosed);
    g_dbus_connection_flush_sync(m_bus.get(), nullptr, nullptr);
    g_dbus_connection_close_sync(m_bus.get(), nullptr, nullptr);
    while (!isClosed)
        g_main_context_iteration(m_context.get(), TRUE);
    m_bus.reset();
    while (g_main_context_iteration(m_context.get(), FALSE)) {
    }
    g_main_context_pop_thread_default(m_context.get());
}

void ScriptedGeoClue::registerObject(const std::string& path, GDBusInterfaceInfo* interface) {
    static const GDBusInterfaceVTable table{&handleCall, &handleGet, &handleSet, {}};
    m_objects.push_back(
        g_dbus_connection_register_object(m_bus.get(), path.c_str(), interface, &table, this, nullptr, nullptr));
}

void ScriptedGeoClue::onThread(std::function<void()> action) {
    auto* const carried = new std::function<void()>(std::move(action));
    g_main_context_invoke(
        m_context.get(),
        [](gpointer data) -> gboolean {
            const std::unique_ptr<std::function<void()>> owned(static_cast<std::function<void()>*>(data));
            (*owned)();
            return G_SOURCE_REMOVE;
        },
        carried);
}

void ScriptedGeoClue::note(const std::string& call, const char* caller) {
    const std::lock_guard lock(m_mutex);
    m_calls.push_back(call);
    m_caller = caller;
    m_called.notify_all();
}

void ScriptedGeoClue::handleCall(GDBusConnection*, const char* caller, const char*, const char*, const char* method,
                                 GVariant*, GDBusMethodInvocation* invocation, gpointer data) {
    auto& self = *static_cast<ScriptedGeoClue*>(data);
    const std::string name = method;
    const auto answer = name == "CreateClient" ? self.m_plan.createClient
                        : name == "Start"      ? self.m_plan.start
                                               : Answer::usual;
    if (answer == Answer::usual)
        g_dbus_method_invocation_return_value(invocation,
                                              name == "CreateClient" ? g_variant_new("(o)", clientPath) : nullptr);
    else if (answer == Answer::refusal)
        refuse(invocation);
    else
        g_object_unref(invocation);
    if (name == "Start" && answer == Answer::usual)
        for (const auto& place : self.m_plan.places)
            self.update(place);
    self.note(name, caller);
}

gboolean ScriptedGeoClue::handleSet(GDBusConnection*, const char* caller, const char*, const char*,
                                    const char* property, GVariant* value, GError**, gpointer data) {
    const GLibPointer<char> text(g_variant_print(value, FALSE));
    static_cast<ScriptedGeoClue*>(data)->note(std::string(property) + "=" + text.get(), caller);
    return TRUE;
}

GVariant* ScriptedGeoClue::handleGet(GDBusConnection*, const char* caller, const char* path, const char*,
                                     const char* property, GError** error, gpointer data) {
    const std::string_view name = property;
    const std::string_view where = path;
    if (!where.starts_with(locationPaths)) return g_variant_new_string("");
    auto& self = *static_cast<ScriptedGeoClue*>(data);
    const auto& place = self.m_places.at(std::stoul(std::string(where.substr(locationPaths.size()))));
    if (name == "Latitude") self.note("Read", caller);
    if (name == "Latitude") return g_variant_new_double(place.latitude);
    if (name == "Longitude" && place.lacksLongitude) {
        g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_FAILED, "no longitude");
        return nullptr;
    }
    if (name == "Longitude") return g_variant_new_double(place.longitude);
    if (name == "Accuracy") return g_variant_new_double(place.accuracy);
    if (name == "Altitude") return g_variant_new_double(place.altitude);
    return g_variant_new("(tt)", place.seconds, guint64{500'000});
}

void ScriptedGeoClue::update(Place place) {
    const auto path = locationPaths + std::to_string(m_places.size());
    m_places.push_back(place);
    if (!place.isGone) registerObject(path, m_node->interfaces[2]);
    emit(g_variant_new("(oo)", "/", path.c_str()));
}

void ScriptedGeoClue::emit(GVariant* paths) {
    g_dbus_connection_emit_signal(m_bus.get(), nullptr, clientPath, "org.freedesktop.GeoClue2.Client",
                                  "LocationUpdated", paths, nullptr);
}

void ScriptedGeoClue::tell(Place place) {
    onThread([this, place] { update(place); });
}

void ScriptedGeoClue::tellNonsense() {
    onThread([this] { emit(g_variant_new("(si)", "where?", 1)); });
}

std::vector<std::string> ScriptedGeoClue::calls() const {
    const std::lock_guard lock(m_mutex);
    return m_calls;
}

void ScriptedGeoClue::waitFor(const std::string& call, ptrdiff_t count) {
    std::unique_lock lock(m_mutex);
    m_called.wait(lock, [&] { return std::ranges::count(m_calls, call) >= count; });
}

std::string ScriptedGeoClue::caller() const {
    const std::lock_guard lock(m_mutex);
    return m_caller;
}

} // namespace bridge
