#pragma once

#include "adapters/dbus/glib_pointer.h"

#include <libecal/libecal.h>
#include <map>
#include <string>
#include <vector>

namespace bridge {

using ComponentPointer = GObjectPointer<ICalComponent>;
using Components = std::vector<ComponentPointer>;

// Takes the list and what is in it.
Components takeComponents(GSList* list);
Components takeCalendarComponents(GSList* list); // of ECalComponents

std::string textOf(ICalComponent* component);
// Throws PlatformError for what is no component.
ComponentPointer componentFrom(const std::string& text);

// Whether the component stands for one occurrence of a series.
bool isException(const std::string& componentText);

// By UID, in the order of their first component; those without one are left out.
std::vector<Components> groupedByUID(Components components);

// The identifiers of the zones that their times are given in, each once.
std::vector<std::string> zonesOf(const Components& components);

// A VCALENDAR of the components and the definitions of their zones, by identifier.
std::string calendarText(const Components& components, const std::map<std::string, std::string>& zones);

} // namespace bridge
