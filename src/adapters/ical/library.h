#pragma once

#include "adapters/ical/ical_pointer.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// Sets what libical keeps for the whole process, once. Called before its first use.
void prepareLibical();

// All of one kind. A list of their own, since libical's way of walking them keeps its place in the component.
std::vector<icalproperty*> properties(icalcomponent* component, icalproperty_kind kind);
icalproperty* firstProperty(icalcomponent* component, icalproperty_kind kind);
std::vector<icalcomponent*> components(icalcomponent* parent, icalcomponent_kind kind = ICAL_ANY_COMPONENT);

void removeProperties(icalcomponent* component, icalproperty_kind kind);
// The component takes the property.
void addProperty(icalcomponent* component, ICalPointer<icalproperty> property);

// The value as it stands in the file, with its escapes; empty when there is none.
std::string valueText(icalproperty* property);

std::optional<std::string> textOf(icalcomponent* component, icalproperty_kind kind);
// Nothing, and "", take the property away: iCalendar as libical reads it has no empty text. Characters that a text
// can't hold (RFC 5545, 3.3.11: controls but tab and line feed) are left out; line ends become line feeds.
void setText(icalcomponent* component, icalproperty_kind kind, const std::optional<std::string>& text);

// What setText() stores of it.
std::string storableText(std::string_view text);

std::string componentText(icalcomponent* component);

ICalPointer<icalcomponent> clone(icalcomponent* component);

} // namespace bridge
