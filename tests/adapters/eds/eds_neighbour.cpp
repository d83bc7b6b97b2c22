#include "tests/adapters/eds/eds_neighbour.h"

#include "adapters/dbus/glib_pointer.h"
#include "tests/support/temporary_folder.h"

#include <libecal/libecal.h>
#include <stdexcept>
#include <vector>

namespace bridge {

namespace {

// Signals of the library's objects go nowhere.
class Session {
public:
    Session() { g_main_context_push_thread_default(m_context.get()); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() {
        while (g_main_context_iteration(m_context.get(), FALSE)) {
        }
        g_main_context_pop_thread_default(m_context.get());
    }

    static void check(GError* failure) {
        if (!failure) return;
        const GLibPointer<GError> error(failure);
        throw std::runtime_error(error->message);
    }

    ESourceRegistry* registry() {
        if (!m_registry) {
            GError* error = nullptr;
            m_registry.reset(e_source_registry_new_sync(nullptr, &error));
            check(error);
        }
        return m_registry.get();
    }

    GObjectPointer<ESource> source(const std::string& identifier) {
        GObjectPointer<ESource> found(e_source_registry_ref_source(registry(), identifier.c_str()));
        if (!found) throw std::runtime_error("no source " + identifier);
        return found;
    }

    GObjectPointer<ECalClient> connect(const std::string& identifier) {
        const auto found = source(identifier);
        const auto type = e_source_has_extension(found.get(), E_SOURCE_EXTENSION_CALENDAR)
                              ? E_CAL_CLIENT_SOURCE_TYPE_EVENTS
                              : E_CAL_CLIENT_SOURCE_TYPE_TASKS;
        GError* error = nullptr;
        EClient* client = e_cal_client_connect_sync(found.get(), type, static_cast<guint32>(-1), nullptr, &error);
        check(error);
        return GObjectPointer<ECalClient>(E_CAL_CLIENT(client));
    }

    void commit(ESource* changed) {
        GError* error = nullptr;
        e_source_registry_commit_source_sync(registry(), changed, nullptr, &error);
        check(error);
    }

private:
    GLibPointer<GMainContext> m_context{g_main_context_new()};
    GObjectPointer<ESourceRegistry> m_registry;
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
    Session::check(error);
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
    Session::check(error);
}

// The file that the user chose for the calendar, if that is what it is.
std::string fileOf(ESource* source) {
    if (!e_source_has_extension(source, E_SOURCE_EXTENSION_LOCAL_BACKEND)) return {};
    auto* local = E_SOURCE_LOCAL(e_source_get_extension(source, E_SOURCE_EXTENSION_LOCAL_BACKEND));
    const GObjectPointer<GFile> file(e_source_local_dup_custom_file(local));
    const GLibPointer<char> path(file ? g_file_get_path(file.get()) : nullptr);
    return path ? path.get() : "";
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
    Session session;
    const auto source = newSource(extensionOf(type), "local", "local-stub", title);
    session.commit(source.get());
    return e_source_get_uid(source.get());
}

std::string EdsNeighbour::addReadOnlyCalendar(EntityType type, std::string_view title) {
    Session session;
    const auto source = newSource(extensionOf(type), "local", "local-stub", title);
    auto* local = E_SOURCE_LOCAL(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_LOCAL_BACKEND));
    const auto path = std::string(g_get_home_dir()) + "/" + e_source_get_uid(source.get()) + ".ics";
    const GObjectPointer<GFile> file(g_file_new_for_path(path.c_str()));
    // The switch counts for files that the user chose.
    e_source_local_set_custom_file(local, file.get());
    e_source_local_set_writable(local, FALSE);
    session.commit(source.get());
    return e_source_get_uid(source.get());
}

std::string EdsNeighbour::addWebCalendar(std::string_view title, std::string_view address) {
    Session session;
    const auto source = newSource(E_SOURCE_EXTENSION_CALENDAR, "webcal", "webcal-stub", title);
    auto* web = E_SOURCE_WEBDAV(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_WEBDAV_BACKEND));
    GUri* const uri = g_uri_parse(std::string(address).c_str(), G_URI_FLAGS_NONE, nullptr);
    e_source_webdav_set_uri(web, uri);
    g_uri_unref(uri);
    session.commit(source.get());
    return e_source_get_uid(source.get());
}

void EdsNeighbour::setEnabled(const std::string& identifier, bool isEnabled) {
    Session session;
    const auto source = session.source(identifier);
    e_source_set_enabled(source.get(), isEnabled);
    session.commit(source.get());
}

void EdsNeighbour::setDefault(EntityType type, const std::string& identifier) {
    Session session;
    const auto source = session.source(identifier);
    if (type == EntityType::event)
        e_source_registry_set_default_calendar(session.registry(), source.get());
    else
        e_source_registry_set_default_task_list(session.registry(), source.get());
}

void EdsNeighbour::rename(const std::string& identifier, std::string_view title) {
    Session session;
    const auto source = session.source(identifier);
    e_source_set_display_name(source.get(), std::string(title).c_str());
    session.commit(source.get());
}

void EdsNeighbour::removeAllCalendars() {
    Session session;
    for (const auto* extension : {E_SOURCE_EXTENSION_CALENDAR, E_SOURCE_EXTENSION_TASK_LIST}) {
        GList* const list = e_source_registry_list_sources(session.registry(), extension);
        for (const GList* entry = list; entry; entry = entry->next) {
            auto* source = static_cast<ESource*>(entry->data);
            GError* error = nullptr;
            if (e_source_get_removable(source)) e_source_remove_sync(source, nullptr, &error);
            Session::check(error);
        }
        g_list_free_full(list, g_object_unref);
    }
}

void EdsNeighbour::put(const std::string& identifier, std::string_view iCalendar) {
    Session session;
    if (const auto file = fileOf(session.source(identifier).get()); !file.empty()) return putFile(file, iCalendar);
    const auto client = session.connect(identifier);
    const GObjectPointer<ICalComponent> calendar(i_cal_component_new_from_string(std::string(iCalendar).c_str()));
    if (!calendar) throw std::runtime_error("no iCalendar");
    forEach(calendar.get(), I_CAL_VTIMEZONE_COMPONENT, [&](ICalComponent* zone) { addZone(client.get(), zone); });
    for (const auto kind : {I_CAL_VEVENT_COMPONENT, I_CAL_VTODO_COMPONENT})
        forEach(calendar.get(), kind, [&](ICalComponent* item) { putItem(client.get(), item); });
}

std::string EdsNeighbour::stored(const std::string& identifier, std::string_view uid) {
    Session session;
    const auto client = session.connect(identifier);
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
    Session session;
    const auto client = session.connect(identifier);
    GError* error = nullptr;
    e_cal_client_remove_object_sync(client.get(), std::string(uid).c_str(), nullptr, E_CAL_OBJ_MOD_ALL,
                                    E_CAL_OPERATION_FLAG_NONE, nullptr, &error);
    Session::check(error);
}

} // namespace bridge
