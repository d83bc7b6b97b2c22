#include "tests/adapters/eds/eds_neighbour.h"

#include "tests/adapters/eds/private_eds.h"

#include <libecal/libecal.h>
#include <map>
#include <stdexcept>
#include <vector>

namespace bridge {

namespace {

constexpr auto managerPath = "/org/gnome/evolution/dataserver/SourceManager";
const std::string sourceInterface = "org.gnome.evolution.dataserver.Source";

// What the service may only read, and where that is.
std::map<std::string, std::string> readOnlyFiles;

void check(GError* failure) {
    if (!failure) return;
    const GLibPointer<GError> error(failure);
    throw std::runtime_error(error->message);
}

GLibPointer<GVariant> callRegistry(const std::string& path, const std::string& interface, const char* method,
                                   GVariant* arguments, const char* type) {
    constexpr int usualTimeout = -1;
    GError* error = nullptr;
    const auto bus = PrivateEds::get().connect();
    GLibPointer<GVariant> answer(g_dbus_connection_call_sync(
        bus.get(), "org.gnome.evolution.dataserver.Sources5", path.c_str(), interface.c_str(), method, arguments,
        G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NONE, usualTimeout, nullptr, &error));
    check(error);
    return answer;
}

struct Source {
    std::string path;
    std::string identifier;
    std::string data;
    bool isRemovable = false;

    bool has(const std::string& group) const { return data.find("\n[" + group + "]\n") != data.npos; }
};

std::vector<Source> sources() {
    const auto answer = callRegistry(managerPath, "org.freedesktop.DBus.ObjectManager", "GetManagedObjects", nullptr,
                                     "(a{oa{sa{sv}}})");
    const GLibPointer<GVariant> objects(g_variant_get_child_value(answer.get(), 0));
    std::vector<Source> found;
    const size_t count = g_variant_n_children(objects.get());
    for (size_t index = 0; index < count; ++index) {
        const char* path = nullptr;
        GVariant* interfaces = nullptr;
        g_variant_get_child(objects.get(), index, "{&o@a{sa{sv}}}", &path, &interfaces);
        const GLibPointer<GVariant> owned(interfaces);
        const GLibPointer<GVariant> properties(
            g_variant_lookup_value(interfaces, sourceInterface.c_str(), G_VARIANT_TYPE_VARDICT));
        if (!properties) continue;
        const char *identifier = "", *data = "";
        g_variant_lookup(properties.get(), "UID", "&s", &identifier);
        g_variant_lookup(properties.get(), "Data", "&s", &data);
        const GLibPointer<GVariant> removable(
            g_variant_lookup_value(interfaces, (sourceInterface + ".Removable").c_str(), nullptr));
        found.push_back({path, identifier, data, removable != nullptr});
    }
    return found;
}

Source find(const std::string& identifier) {
    for (auto& source : sources())
        if (source.identifier == identifier) return std::move(source);
    throw std::runtime_error("no source " + identifier);
}

// Sets one key of a source's own group.
void write(const std::string& identifier, const char* key, const std::string& value) {
    const auto source = find(identifier);
    const GLibPointer<GKeyFile> file(g_key_file_new());
    g_key_file_load_from_data(file.get(), source.data.c_str(), source.data.size(), G_KEY_FILE_NONE, nullptr);
    g_key_file_set_string(file.get(), "Data Source", key, value.c_str());
    const GLibPointer<char> text(g_key_file_to_data(file.get(), nullptr, nullptr));
    callRegistry(source.path, sourceInterface + ".Writable", "Write", g_variant_new("(s)", text.get()), "()");
}

std::string create(ESource* source) {
    const GLibPointer<char> data(e_source_to_string(source, nullptr));
    GVariantBuilder list;
    g_variant_builder_init(&list, G_VARIANT_TYPE("a{ss}"));
    g_variant_builder_add(&list, "{ss}", e_source_get_uid(source), data.get());
    callRegistry(managerPath, "org.gnome.evolution.dataserver.SourceManager", "CreateSources",
                 g_variant_new("(a{ss})", &list), "()");
    return e_source_get_uid(source);
}

// Signals of the library's objects go nowhere.
class Connection {
public:
    explicit Connection(const std::string& identifier) {
        g_main_context_push_thread_default(m_context.get());
        const auto found = find(identifier);
        const GObjectPointer<ESource> source(e_source_new_with_uid(identifier.c_str(), nullptr, nullptr));
        GError* error = nullptr;
        EClient* client = e_cal_client_connect_sync(
            source.get(), found.has("Calendar") ? E_CAL_CLIENT_SOURCE_TYPE_EVENTS : E_CAL_CLIENT_SOURCE_TYPE_TASKS,
            static_cast<guint32>(-1), nullptr, &error);
        check(error);
        m_client.reset(E_CAL_CLIENT(client));
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        m_client.reset();
        while (g_main_context_iteration(m_context.get(), FALSE)) {
        }
        g_main_context_pop_thread_default(m_context.get());
    }
    ECalClient* get() const { return m_client.get(); }

private:
    GLibPointer<GMainContext> m_context{g_main_context_new()};
    GObjectPointer<ECalClient> m_client;
};

const char* extensionOf(EntityType type) {
    return type == EntityType::event ? E_SOURCE_EXTENSION_CALENDAR : E_SOURCE_EXTENSION_TASK_LIST;
}

GObjectPointer<ESource> newSource(const char* extension, const char* backend, const char* parent,
                                  std::string_view title) {
    GObjectPointer<ESource> source(e_source_new(nullptr, nullptr, nullptr));
    e_source_set_parent(source.get(), parent);
    e_source_set_display_name(source.get(), std::string(title).c_str());
    e_source_backend_set_backend_name(E_SOURCE_BACKEND(e_source_get_extension(source.get(), extension)), backend);
    return source;
}

void addZone(ECalClient* client, ICalComponent* definition) {
    const GObjectPointer<ICalTimezone> zone(i_cal_timezone_new());
    const GObjectPointer<ICalComponent> copy(i_cal_component_clone(definition));
    if (!i_cal_timezone_set_component(zone.get(), copy.get())) throw std::runtime_error("no time zone");
    GError* error = nullptr;
    e_cal_client_add_timezone_sync(client, zone.get(), nullptr, &error);
    check(error);
}

bool isStored(ECalClient* client, ICalComponent* component) {
    ICalComponent* found = nullptr;
    e_cal_client_get_object_sync(client, i_cal_component_get_uid(component), nullptr, &found, nullptr, nullptr);
    return GObjectPointer<ICalComponent>(found) != nullptr;
}

void putItem(ECalClient* client, ICalComponent* item) {
    GError* error = nullptr;
    const GObjectPointer<ICalComponent> copy(i_cal_component_clone(item));
    if (e_cal_util_component_is_instance(item) && isStored(client, item)) {
        e_cal_client_modify_object_sync(client, copy.get(), E_CAL_OBJ_MOD_THIS, E_CAL_OPERATION_FLAG_NONE, nullptr,
                                        &error);
    } else {
        char* uid = nullptr;
        e_cal_client_create_object_sync(client, copy.get(), E_CAL_OPERATION_FLAG_NONE, &uid, nullptr, &error);
        g_free(uid);
    }
    check(error);
}

template <typename Use> void forEach(ICalComponent* calendar, ICalComponentKind kind, Use use) {
    GObjectPointer<ICalComponent> component(i_cal_component_get_first_component(calendar, kind));
    while (component) {
        use(component.get());
        component.reset(i_cal_component_get_next_component(calendar, kind));
    }
}

} // namespace

std::string EdsNeighbour::addLocalCalendar(EntityType type, std::string_view title) {
    return create(newSource(extensionOf(type), "local", "local-stub", title).get());
}

std::string EdsNeighbour::addReadOnlyCalendar(EntityType type, std::string_view title) {
    const auto source = newSource(extensionOf(type), "local", "local-stub", title);
    const auto path = std::string(g_get_home_dir()) + "/" + e_source_get_uid(source.get()) + ".ics";
    const GObjectPointer<GFile> file(g_file_new_for_path(path.c_str()));
    auto* local = E_SOURCE_LOCAL(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_LOCAL_BACKEND));
    // The switch counts for files that the user chose.
    e_source_local_set_custom_file(local, file.get());
    e_source_local_set_writable(local, FALSE);
    readOnlyFiles[e_source_get_uid(source.get())] = path;
    return create(source.get());
}

std::string EdsNeighbour::addWebCalendar(std::string_view title, std::string_view address) {
    const auto source = newSource(E_SOURCE_EXTENSION_CALENDAR, "webcal", "webcal-stub", title);
    auto* web = E_SOURCE_WEBDAV(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_WEBDAV_BACKEND));
    GUri* const uri = g_uri_parse(std::string(address).c_str(), G_URI_FLAGS_NONE, nullptr);
    e_source_webdav_set_uri(web, uri);
    g_uri_unref(uri);
    return create(source.get());
}

void EdsNeighbour::setEnabled(const std::string& identifier, bool isEnabled) {
    write(identifier, "Enabled", isEnabled ? "true" : "false");
}

void EdsNeighbour::setDefault(EntityType type, const std::string& identifier) {
    const GObjectPointer<GSettings> settings(g_settings_new("org.gnome.Evolution.DefaultSources"));
    g_settings_set_string(settings.get(), type == EntityType::event ? "default-calendar" : "default-task-list",
                          identifier.c_str());
}

void EdsNeighbour::rename(const std::string& identifier, std::string_view title) {
    write(identifier, "DisplayName", std::string(title));
}

void EdsNeighbour::removeAllCalendars() {
    for (const auto& source : sources())
        if (source.isRemovable && (source.has("Calendar") || source.has("Task List")))
            callRegistry(source.path, sourceInterface + ".Removable", "Remove", nullptr, "()");
}

void EdsNeighbour::put(const std::string& identifier, std::string_view iCalendar) {
    if (const auto file = readOnlyFiles.find(identifier); file != readOnlyFiles.end())
        return putFile(file->second, iCalendar);
    const Connection client(identifier);
    const GObjectPointer<ICalComponent> calendar(i_cal_component_new_from_string(std::string(iCalendar).c_str()));
    if (!calendar) throw std::runtime_error("no iCalendar");
    forEach(calendar.get(), I_CAL_VTIMEZONE_COMPONENT, [&](ICalComponent* zone) { addZone(client.get(), zone); });
    for (const auto kind : {I_CAL_VEVENT_COMPONENT, I_CAL_VTODO_COMPONENT})
        forEach(calendar.get(), kind, [&](ICalComponent* item) { putItem(client.get(), item); });
}

std::string EdsNeighbour::stored(const std::string& identifier, std::string_view uid) {
    const Connection client(identifier);
    GSList* list = nullptr;
    e_cal_client_get_objects_for_uid_sync(client.get(), std::string(uid).c_str(), &list, nullptr, nullptr);
    std::string text;
    for (const GSList* entry = list; entry; entry = entry->next) {
        const GLibPointer<char> item(e_cal_component_get_as_string(static_cast<ECalComponent*>(entry->data)));
        text += item.get();
    }
    g_slist_free_full(list, g_object_unref);
    return text;
}

void EdsNeighbour::remove(const std::string& identifier, std::string_view uid) {
    const Connection client(identifier);
    GError* error = nullptr;
    e_cal_client_remove_object_sync(client.get(), std::string(uid).c_str(), nullptr, E_CAL_OBJ_MOD_ALL,
                                    E_CAL_OPERATION_FLAG_NONE, nullptr, &error);
    check(error);
}

} // namespace bridge
