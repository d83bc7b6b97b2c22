#include "adapters/portal/portal_request.h"

#include "adapters/dbus/session_bus.h"
#include "adapters/portal/portal_folder_chooser.h"

#include <algorithm>
#include <array>

namespace bridge {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* objectPath = "/org/freedesktop/portal/desktop";
constexpr const char* chooserInterface = "org.freedesktop.portal.FileChooser";
constexpr const char* requestInterface = "org.freedesktop.portal.Request";

struct Released {
    void operator()(GMainContext* context) const {
        g_main_context_pop_thread_default(context);
        g_main_context_unref(context);
    }
};

// For as long as one question takes, what the bus says to this thread.
class ThreadContext {
public:
    ThreadContext() : m_context(g_main_context_new()) { g_main_context_push_thread_default(m_context.get()); }
    GMainContext* get() const { return m_context.get(); }

private:
    std::unique_ptr<GMainContext, Released> m_context;
};

struct FreeError {
    GError* error = nullptr;
    ~FreeError() { g_clear_error(&error); }
    std::string text() const { return error ? error->message : "no reason given"; }
};

class Request {
public:
    Request(GDBusConnection* bus, GCancellable* cancellable) : m_bus(bus), m_cancellable(cancellable) {}
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;
    ~Request();

    void requireChooser();
    void open(const FolderQuestion& question, const std::string& parentWindow);
    std::optional<std::string> answer(GMainContext* context);

private:
    enum class State { open, answered, lost };

    void listenAt(std::string path);
    void heard(GVariant* parameters);
    void close();
    static std::string pathOf(const char* uri);

    GDBusConnection* m_bus;
    GCancellable* m_cancellable;
    std::string m_path;
    guint m_subscription = 0;
    guint m_watch = 0;
    State m_state = State::open;
    guint32 m_response = 0;
    std::string m_uri;
};

Request::~Request() {
    if (m_subscription) g_dbus_connection_signal_unsubscribe(m_bus, m_subscription);
    if (m_watch) g_bus_unwatch_name(m_watch);
}

void Request::requireChooser() {
    constexpr guint32 versionWithFolders = 3;
    constexpr int usualTimeout = -1;
    guint32 version = 0;
    const GLibPointer<GVariant> answer(
        g_dbus_connection_call_sync(m_bus, service, objectPath, "org.freedesktop.DBus.Properties", "Get",
                                    g_variant_new("(ss)", chooserInterface, "version"), G_VARIANT_TYPE("(v)"),
                                    G_DBUS_CALL_FLAGS_NONE, usualTimeout, m_cancellable, nullptr));
    if (answer) {
        GVariant* boxed = nullptr;
        g_variant_get(answer.get(), "(v)", &boxed);
        const GLibPointer<GVariant> value(boxed);
        if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_UINT32)) version = g_variant_get_uint32(value.get());
    }
    if (version < versionWithFolders) throw NoPortal("The desktop offers no dialog for choosing a folder.");
}

// The signal with the answer goes to an object whose path we can tell beforehand, so that none is missed.
void Request::listenAt(std::string path) {
    m_path = std::move(path);
    const GDBusSignalCallback callback = [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                                            GVariant* parameters,
                                            gpointer self) { static_cast<Request*>(self)->heard(parameters); };
    m_subscription = g_dbus_connection_signal_subscribe(m_bus, service, requestInterface, "Response", m_path.c_str(),
                                                        nullptr, G_DBUS_SIGNAL_FLAGS_NONE, callback, this, nullptr);
}

void Request::heard(GVariant* parameters) {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ua{sv})"))) return;
    GVariant* dictionary = nullptr;
    g_variant_get(parameters, "(u@a{sv})", &m_response, &dictionary);
    const GLibPointer<GVariant> results(dictionary);
    const gchar** uris = nullptr;
    if (g_variant_lookup(results.get(), "uris", "^a&s", &uris)) {
        if (uris[0]) m_uri = uris[0];
        g_free(uris);
    }
    m_state = State::answered;
}

void Request::close() {
    constexpr int usualTimeout = -1;
    g_dbus_connection_call(m_bus, service, m_path.c_str(), requestInterface, "Close", nullptr, nullptr,
                           G_DBUS_CALL_FLAGS_NO_AUTO_START, usualTimeout, nullptr, nullptr, nullptr);
}

void Request::open(const FolderQuestion& question, const std::string& parentWindow) {
    const GLibPointer<char> random(g_uuid_string_random());
    std::string token = std::string("brindlefox_") + random.get();
    std::ranges::replace(token, '-', '_');
    std::string sender = g_dbus_connection_get_unique_name(m_bus) + 1;
    std::ranges::replace(sender, '.', '_');
    listenAt(std::string(objectPath) + "/request/" + sender + "/" + token);

    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&options, "{sv}", "handle_token", g_variant_new_string(token.c_str()));
    g_variant_builder_add(&options, "{sv}", "accept_label", g_variant_new_string(question.confirmLabel.c_str()));
    g_variant_builder_add(&options, "{sv}", "modal", g_variant_new_boolean(TRUE));
    g_variant_builder_add(&options, "{sv}", "multiple", g_variant_new_boolean(FALSE));
    g_variant_builder_add(&options, "{sv}", "directory", g_variant_new_boolean(TRUE));
    const auto title = question.title + " \xe2\x80\x94 " + question.message;
    constexpr int usualTimeout = -1;
    FreeError failure;
    const GLibPointer<GVariant> reply(g_dbus_connection_call_sync(
        m_bus, service, objectPath, chooserInterface, "OpenFile",
        g_variant_new("(ssa{sv})", parentWindow.c_str(), title.c_str(), &options), G_VARIANT_TYPE("(o)"),
        G_DBUS_CALL_FLAGS_NONE, usualTimeout, m_cancellable, &failure.error));
    if (!reply) {
        // The dialog may be there all the same.
        if (g_cancellable_is_cancelled(m_cancellable)) return close();
        throw PlatformError("The desktop's folder chooser does not open: " + failure.text());
    }
    const GBusNameVanishedCallback vanished = [](GDBusConnection*, const gchar*, gpointer self) {
        auto& state = static_cast<Request*>(self)->m_state;
        if (state == State::open) state = State::lost;
    };
    m_watch =
        g_bus_watch_name_on_connection(m_bus, service, G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr, vanished, this, nullptr);
}

std::string Request::pathOf(const char* uri) {
    FreeError failure;
    char* hostName = nullptr;
    const GLibPointer<char> path(g_filename_from_uri(uri, &hostName, &failure.error));
    const GLibPointer<char> host(hostName);
    if (!path || (host && !g_str_equal(host.get(), "localhost")))
        throw PlatformError("Only folders of this computer can be used.");
    return path.get();
}

std::optional<std::string> Request::answer(GMainContext* context) {
    // Whoever cancels does so on another thread.
    GSource* cancelled = g_cancellable_source_new(m_cancellable);
    const GCancellableSourceFunc nothing = [](GCancellable*, gpointer) -> gboolean { return G_SOURCE_REMOVE; };
    g_source_set_callback(cancelled, G_SOURCE_FUNC(nothing), nullptr, nullptr);
    g_source_attach(cancelled, context);
    while (m_state == State::open && !g_cancellable_is_cancelled(m_cancellable))
        g_main_context_iteration(context, TRUE);
    g_source_destroy(cancelled);
    g_source_unref(cancelled);

    if (m_state == State::lost) throw PlatformError("The desktop's folder chooser ended without an answer.");
    if (m_state == State::open) {
        close();
        return std::nullopt;
    }
    constexpr guint32 success = 0;
    constexpr guint32 cancelledByUser = 1;
    if (m_response == cancelledByUser) return std::nullopt;
    if (m_response != success || m_uri.empty()) throw PlatformError("The desktop's folder chooser failed.");
    return pathOf(m_uri.c_str());
}

} // namespace

std::optional<std::string> askPortal(const FolderQuestion& question, const std::string& parentWindow,
                                     GCancellable* cancellable) {
    const ThreadContext context;
    const auto bus = sessionBus(cancellable);
    if (!bus) throw NoPortal("There is no session bus to ask for a folder.");
    Request request(bus.get(), cancellable);
    request.requireChooser();
    request.open(question, parentWindow);
    return request.answer(context.get());
}

} // namespace bridge
