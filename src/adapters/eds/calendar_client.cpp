#include "adapters/eds/calendar_client.h"

namespace bridge {

namespace {

constexpr auto noRecurrence = nullptr;

bool isKnown(const std::string& zone) {
    return zone == "UTC" || i_cal_timezone_get_builtin_timezone(zone.c_str()) != nullptr;
}

GSList* listOf(const Components& components) {
    GSList* list = nullptr;
    for (const auto& component : components)
        list = g_slist_append(list, component.get());
    return list;
}

} // namespace

EClient* CalendarClient::connect(ESource* source, GCancellable* cancellable, GError** error) const {
    // Any other wait blocks for its whole length.
    constexpr auto noWaiting = static_cast<guint32>(-1);
    const auto type =
        m_calendar.entityType == EntityType::event ? E_CAL_CLIENT_SOURCE_TYPE_EVENTS : E_CAL_CLIENT_SOURCE_TYPE_TASKS;
    return e_cal_client_connect_sync(source, type, noWaiting, cancellable, error);
}

void CalendarClient::fetchZones(ECalClient* client, const Components& components, GCancellable* cancellable) {
    for (const auto& identifier : zonesOf(components)) {
        if (m_zones.count(identifier) != 0 || isKnown(identifier)) continue;
        ICalTimezone* zone = nullptr; // the client's
        Outcome got;
        e_cal_client_get_timezone_sync(client, identifier.c_str(), &zone, cancellable, got.out());
        try {
            got.check(subject());
        } catch (const EdsError& error) {
            if (error.fault != EdsFault::notFound) throw;
        }
        const ComponentPointer definition(zone ? i_cal_timezone_get_component(zone) : nullptr);
        m_zones[identifier] = definition ? textOf(definition.get()) : "";
    }
}

std::vector<CalendarObject> CalendarClient::objects(const std::string& query, GCancellable* cancellable) {
    const auto groups = reading(cancellable, [&](EClient* connected) {
        auto* const client = E_CAL_CLIENT(connected);
        GSList* list = nullptr;
        Outcome found;
        e_cal_client_get_object_list_sync(client, query.c_str(), &list, cancellable, found.out());
        auto components = takeComponents(list);
        found.check(subject());
        fetchZones(client, components, cancellable);
        return groupedByUID(std::move(components));
    });
    std::vector<CalendarObject> objects;
    for (const auto& components : groups) {
        try {
            objects.push_back(CalendarObject::parse(calendarText(components, m_zones)));
        } catch (const PlatformError&) {
            // What can't be understood says so when it is asked for; it keeps nobody from the other items.
        }
    }
    return objects;
}

Components CalendarClient::stored(const std::string& uid, GCancellable* cancellable) {
    return reading(cancellable, [&](EClient* connected) {
        auto* const client = E_CAL_CLIENT(connected);
        GSList* list = nullptr;
        Outcome found;
        e_cal_client_get_objects_for_uid_sync(client, uid.c_str(), &list, cancellable, found.out());
        auto components = takeCalendarComponents(list);
        found.check(subject());
        fetchZones(client, components, cancellable);
        return components;
    });
}

std::optional<CalendarObject> CalendarClient::object(const std::string& uid, GCancellable* cancellable) {
    try {
        const auto components = stored(uid, cancellable);
        if (components.empty()) return std::nullopt;
        return CalendarObject::parse(calendarText(components, m_zones));
    } catch (const EdsError& error) {
        if (error.fault != EdsFault::notFound) throw;
        return std::nullopt;
    }
}

void CalendarClient::addZones(ECalClient* client, const CalendarObject& object, GCancellable* cancellable) {
    const auto calendar = componentFrom(object.text());
    ComponentPointer component(i_cal_component_get_first_component(calendar.get(), I_CAL_VTIMEZONE_COMPONENT));
    while (component) {
        const GObjectPointer<ICalTimezone> zone(i_cal_timezone_new());
        ComponentPointer definition(i_cal_component_clone(component.get()));
        if (i_cal_timezone_set_component(zone.get(), definition.get())) {
            Outcome added;
            e_cal_client_add_timezone_sync(client, zone.get(), cancellable, added.out());
            added.check(subject());
        }
        component.reset(i_cal_component_get_next_component(calendar.get(), I_CAL_VTIMEZONE_COMPONENT));
    }
}

std::string CalendarClient::create(const CalendarObject& object, GCancellable* cancellable) {
    // A lost connection shows here, where another attempt does no harm.
    if (this->object(object.uid(), cancellable)) {
        throw EdsError(EdsFault::exists, subject() + " already holds this item.");
    }
    Components components;
    for (size_t index = 0; index < object.componentCount(); ++index)
        components.push_back(componentFrom(object.componentText(index)));
    ECalClient* const connected = E_CAL_CLIENT(client(cancellable));
    addZones(connected, object, cancellable);
    GSList* const list = listOf(components);
    GSList* identifiers = nullptr;
    Outcome created;
    e_cal_client_create_objects_sync(connected, list, E_CAL_OPERATION_FLAG_NONE, &identifiers, cancellable,
                                     created.out());
    g_slist_free(list);
    std::string uid = object.uid();
    if (identifiers && identifiers->data) uid = static_cast<const char*>(identifiers->data);
    g_slist_free_full(identifiers, g_free);
    created.check(subject());
    return uid;
}

void CalendarClient::write(const CalendarObject& object, size_t component, GCancellable* cancellable) {
    const auto written = componentFrom(object.componentText(component));
    ECalClient* const connected = E_CAL_CLIENT(client(cancellable));
    addZones(connected, object, cancellable);
    // An exception that is written as if it were all replaces the series.
    const auto extent = e_cal_util_component_is_instance(written.get()) ? E_CAL_OBJ_MOD_THIS : E_CAL_OBJ_MOD_ALL;
    Outcome modified;
    e_cal_client_modify_object_sync(connected, written.get(), extent, E_CAL_OPERATION_FLAG_NONE, cancellable,
                                    modified.out());
    modified.check(subject());
}

void CalendarClient::remove(const std::string& uid, GCancellable* cancellable) {
    Outcome removed;
    e_cal_client_remove_object_sync(E_CAL_CLIENT(client(cancellable)), uid.c_str(), noRecurrence, E_CAL_OBJ_MOD_ALL,
                                    E_CAL_OPERATION_FLAG_NONE, cancellable, removed.out());
    removed.check(subject());
}

void CalendarClient::removeException(const std::string& uid, const std::string& componentText,
                                     GCancellable* cancellable) {
    const auto exception = componentFrom(componentText);
    // To the letter as it is stored: with any other spelling the exception would stay, and without an error.
    const GLibPointer<char> recurrence(e_cal_util_component_get_recurid_as_string(exception.get()));
    Outcome removed;
    e_cal_client_remove_object_sync(E_CAL_CLIENT(client(cancellable)), uid.c_str(), recurrence.get(),
                                    E_CAL_OBJ_MOD_THIS, E_CAL_OPERATION_FLAG_NONE, cancellable, removed.out());
    removed.check(subject());
}

} // namespace bridge
