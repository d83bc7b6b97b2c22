#include "tests/adapters/portal/fake_portal.h"

#include <algorithm>

namespace bridge {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* objectPath = "/org/freedesktop/portal/desktop";
constexpr const char* interfaces = R"(<node>
<interface name="org.freedesktop.portal.FileChooser">
  <method name="OpenFile"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="a{sv}" direction="in"/>
    <arg type="o" direction="out"/></method>
  <property name="version" type="u" access="read"/>
</interface>
<interface name="org.freedesktop.portal.Request"><method name="Close"/>
  <signal name="Response"><arg type="u"/><arg type="a{sv}"/></signal></interface>
</node>)";

GDBusNodeInfo* nodes() {
    static GDBusNodeInfo* const parsed = g_dbus_node_info_new_for_xml(interfaces, nullptr);
    return parsed;
}

std::string textOption(GVariant* options, const char* name) {
    const char* text = nullptr;
    return g_variant_lookup(options, name, "&s", &text) ? text : "";
}

bool flagOption(GVariant* options, const char* name) {
    gboolean flag = FALSE;
    return g_variant_lookup(options, name, "b", &flag) && flag;
}

} // namespace

FakePortal::FakePortal(const PrivateBus& bus, Manners manners, unsigned version)
    : m_onBus(bus),
      m_manners(manners),
      m_version(version),
      m_context(g_main_context_new()),
      m_loop(g_main_loop_new(m_context, FALSE)) {
    std::promise<void> ready;
    auto isReady = ready.get_future();
    m_thread = std::thread([this, &ready] { run(ready); });
    isReady.get();
    m_onBus.waitUntil(PrivateBus::Owned::yes, service);
}

FakePortal::~FakePortal() {
    onThread([this] { g_main_loop_quit(m_loop); });
    m_thread.join();
    m_bus.reset();
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
    m_onBus.waitUntil(PrivateBus::Owned::no, service);
}

void FakePortal::run(std::promise<void>& ready) {
    g_main_context_push_thread_default(m_context);
    m_bus = m_onBus.connect();
    static const GDBusInterfaceVTable table{&FakePortal::handleCall, &FakePortal::version, nullptr, {}};
    g_dbus_connection_register_object(m_bus.get(), objectPath, nodes()->interfaces[0], &table, this, nullptr, nullptr);
    m_name = g_bus_own_name_on_connection(m_bus.get(), service, G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr,
                                          nullptr);
    ready.set_value();
    g_main_loop_run(m_loop);
    if (m_name) g_bus_unown_name(m_name);
    g_dbus_connection_close_sync(m_bus.get(), nullptr, nullptr);
    g_main_context_pop_thread_default(m_context);
}

void FakePortal::onThread(std::function<void()> action) {
    const GSourceFunc act = [](gpointer data) -> gboolean {
        (*static_cast<std::function<void()>*>(data))();
        return G_SOURCE_REMOVE;
    };
    const GDestroyNotify forget = [](gpointer data) { delete static_cast<std::function<void()>*>(data); };
    GSource* source = g_idle_source_new();
    g_source_set_callback(source, act, new std::function<void()>(std::move(action)), forget);
    g_source_attach(source, m_context);
    g_source_unref(source);
}

GVariant* FakePortal::version(GDBusConnection*, const char*, const char*, const char*, const char*, GError**,
                              void* self) {
    return g_variant_new_uint32(static_cast<FakePortal*>(self)->m_version);
}

void FakePortal::handleCall(GDBusConnection*, const char*, const char*, const char*, const char* method,
                            GVariant* parameters, GDBusMethodInvocation* invocation, void* self) {
    auto& portal = *static_cast<FakePortal*>(self);
    if (std::string_view(method) == "OpenFile") return portal.openFile(parameters, invocation);
    portal.close();
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

void FakePortal::openFile(GVariant* parameters, GDBusMethodInvocation* invocation) {
    if (m_manners == Manners::refuses)
        return g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.portal.Error.Failed",
                                                          "No room.");
    const char* parent = nullptr;
    const char* title = nullptr;
    GVariant* dictionary = nullptr;
    g_variant_get(parameters, "(&s&s@a{sv})", &parent, &title, &dictionary);
    const GLibPointer<GVariant> options(dictionary);
    PortalCall call{parent,
                    title,
                    textOption(options.get(), "accept_label"),
                    textOption(options.get(), "handle_token"),
                    flagOption(options.get(), "directory"),
                    flagOption(options.get(), "modal")};
    m_caller = g_dbus_method_invocation_get_sender(invocation);
    auto sender = m_caller.substr(1);
    std::ranges::replace(sender, '.', '_');
    m_handle = std::string(objectPath) + "/request/" + sender + "/" + call.handleToken;
    static const GDBusInterfaceVTable table{&FakePortal::handleCall, nullptr, nullptr, {}};
    m_request = g_dbus_connection_register_object(m_bus.get(), m_handle.c_str(), nodes()->interfaces[1], &table, this,
                                                  nullptr, nullptr);
    if (m_manners == Manners::answersBeforeItReturns) emitResponse();
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(o)", m_handle.c_str()));
    std::lock_guard lock(m_mutex);
    m_call = std::move(call);
    m_isOpen = m_manners != Manners::answersBeforeItReturns;
}

void FakePortal::close() {
    if (m_request) g_dbus_connection_unregister_object(m_bus.get(), std::exchange(m_request, 0));
    std::lock_guard lock(m_mutex);
    m_isOpen = false;
}

void FakePortal::emitResponse() {
    GVariantBuilder results;
    g_variant_builder_init(&results, G_VARIANT_TYPE_VARDICT);
    unsigned response = 0;
    {
        std::lock_guard lock(m_mutex);
        response = m_response;
        if (!m_uris.empty()) {
            GVariantBuilder uris;
            g_variant_builder_init(&uris, G_VARIANT_TYPE_STRING_ARRAY);
            for (const auto& uri : m_uris)
                g_variant_builder_add(&uris, "s", uri.c_str());
            g_variant_builder_add(&results, "{sv}", "uris", g_variant_builder_end(&uris));
        }
    }
    g_dbus_connection_emit_signal(m_bus.get(), m_caller.c_str(), m_handle.c_str(), "org.freedesktop.portal.Request",
                                  "Response", g_variant_new("(ua{sv})", response, &results), nullptr);
}

bool FakePortal::isOpen() const {
    std::lock_guard lock(m_mutex);
    return m_isOpen;
}

PortalCall FakePortal::call() const {
    std::lock_guard lock(m_mutex);
    return m_call;
}

void FakePortal::respond(unsigned response, const std::vector<std::string>& uris) {
    {
        std::lock_guard lock(m_mutex);
        m_response = response;
        m_uris = uris;
    }
    if (m_manners == Manners::answersBeforeItReturns) return;
    onThread([this] {
        emitResponse();
        close();
    });
}

void FakePortal::vanish() {
    onThread([this] { g_bus_unown_name(std::exchange(m_name, 0)); });
}

} // namespace bridge
