#include "tests/adapters/eds/eds_neighbour.h"

#include "tests/adapters/eds/private_eds.h"

#include <libecal/libecal.h>
#include <map>
#include <stdexcept>
#include <vector>

namespace bridge {

namespace {

// What the service may only read, and where that is.
std::map<std::string, std::string> readOnlyFiles;

class Connection : public NeighbourConnection {
public:
    explicit Connection(const std::string& identifier) : NeighbourConnection(identifier, connectTo(identifier)) {}
    ECalClient* get() const { return E_CAL_CLIENT(NeighbourConnection::get()); }

private:
    static Connect connectTo(const std::string& identifier) {
        const auto type = NeighbourRegistry::has(identifier, "Calendar") ? E_CAL_CLIENT_SOURCE_TYPE_EVENTS
                                                                         : E_CAL_CLIENT_SOURCE_TYPE_TASKS;
        return [type](ESource* source, GError** error) {
            return e_cal_client_connect_sync(source, type, static_cast<guint32>(-1), nullptr, error);
        };
    }
};

const char* extensionOf(EntityType type) {
    return type == EntityType::event ? E_SOURCE_EXTENSION_CALENDAR : E_SOURCE_EXTENSION_TASK_LIST;
}

void addZone(ECalClient* client, ICalComponent* definition) {
    const GObjectPointer<ICalTimezone> zone(i_cal_timezone_new());
    const GObjectPointer<ICalComponent> copy(i_cal_component_clone(definition));
    if (!i_cal_timezone_set_component(zone.get(), copy.get())) throw std::runtime_error("no time zone");
    GError* error = nullptr;
    e_cal_client_add_timezone_sync(client, zone.get(), nullptr, &error);
    NeighbourRegistry::check(error);
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
    NeighbourRegistry::check(error);
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
    setAddress(source.get(), address);
    return create(source.get());
}

void EdsNeighbour::setDefault(EntityType type, const std::string& identifier) {
    NeighbourRegistry::setDefault(type == EntityType::event ? "default-calendar" : "default-task-list", identifier);
}

void EdsNeighbour::removeAllCalendars() {
    removeAll({"Calendar", "Task List"});
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
    NeighbourRegistry::check(error);
}

} // namespace bridge
