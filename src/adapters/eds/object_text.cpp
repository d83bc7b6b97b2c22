#include "adapters/eds/object_text.h"

#include "base/platform_error.h"

#include <algorithm>

namespace bridge {

Components takeComponents(GSList* list) {
    Components components;
    for (const GSList* entry = list; entry; entry = entry->next)
        components.emplace_back(static_cast<ICalComponent*>(entry->data));
    g_slist_free(list);
    return components;
}

Components takeCalendarComponents(GSList* list) {
    Components components;
    for (const GSList* entry = list; entry; entry = entry->next) {
        const GObjectPointer<ECalComponent> item(static_cast<ECalComponent*>(entry->data));
        components.emplace_back(i_cal_component_clone(e_cal_component_get_icalcomponent(item.get())));
    }
    g_slist_free(list);
    return components;
}

std::string textOf(ICalComponent* component) {
    const GLibPointer<char> text(i_cal_component_as_ical_string(component));
    return text ? text.get() : "";
}

ComponentPointer componentFrom(const std::string& text) {
    ComponentPointer component(i_cal_component_new_from_string(text.c_str()));
    if (!component) throw PlatformError("The item can't be written as iCalendar.");
    return component;
}

bool isException(const std::string& componentText) {
    return e_cal_util_component_is_instance(componentFrom(componentText).get());
}

std::vector<Components> groupedByUID(Components components) {
    std::vector<Components> groups;
    std::map<std::string, size_t> places;
    for (auto& component : components) {
        const char* uid = i_cal_component_get_uid(component.get());
        if (!uid || !*uid) continue;
        const auto [place, isNew] = places.emplace(uid, groups.size());
        if (isNew) groups.emplace_back();
        groups[place->second].push_back(std::move(component));
    }
    return groups;
}

std::vector<std::string> zonesOf(const Components& components) {
    std::vector<std::string> zones;
    const ICalComponentForeachTZIDFunc add = [](ICalParameter* parameter, gpointer data) {
        auto& found = *static_cast<std::vector<std::string>*>(data);
        const char* identifier = i_cal_parameter_get_tzid(parameter);
        if (identifier && std::find(found.begin(), found.end(), identifier) == found.end())
            found.emplace_back(identifier);
    };
    for (const auto& component : components)
        i_cal_component_foreach_tzid(component.get(), add, &zones);
    return zones;
}

std::string calendarText(const Components& components, const std::map<std::string, std::string>& zones) {
    std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Brindlefox//Apple Bridge//EN\r\n";
    for (const auto& identifier : zonesOf(components))
        if (const auto zone = zones.find(identifier); zone != zones.end()) text += zone->second;
    for (const auto& component : components)
        text += textOf(component.get());
    return text + "END:VCALENDAR\r\n";
}

} // namespace bridge
