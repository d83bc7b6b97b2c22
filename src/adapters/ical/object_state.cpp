#include "adapters/ical/object_state.h"

#include "adapters/ical/content_lines.h"
#include "adapters/ical/shield.h"
#include "base/platform_error.h"
#include "base/uuid.h"

#include <algorithm>

namespace bridge {

namespace {

// An alarm in an event in a calendar is three. What goes on and on would have libical call itself as often.
constexpr int deepest = 10;

std::string readableText(std::string_view text) {
    std::string lines;
    int depth = 0;
    for (const auto& line : readContentLines(text)) {
        const auto name = line.name();
        if (name == "BEGIN" && ++depth > deepest) throw PlatformError("The calendar item is nested too deeply.");
        if (name == "END") --depth;
        if (depth < 0) throw PlatformError("The calendar item ends before it begins.");
        lines += shield(line);
        lines += "\r\n";
    }
    return lines;
}

bool isItem(icalcomponent* component) {
    const auto kind = icalcomponent_isa(component);
    return kind == ICAL_VEVENT_COMPONENT || kind == ICAL_VTODO_COMPONENT;
}

bool isException(icalcomponent* component) {
    return firstProperty(component, ICAL_RECURRENCEID_PROPERTY);
}

std::string uidOf(icalcomponent* component) {
    return textOf(component, ICAL_UID_PROPERTY).value_or("");
}

} // namespace

CalendarObject::State::State(ICalPointer<icalcomponent> given) : calendar(std::move(given)) {
    for (auto* component : components(calendar.get()))
        if (isItem(component)) items.push_back(component);
    if (items.empty()) throw PlatformError("There is no event and no task in the calendar item.");
    std::stable_partition(items.begin(), items.end(), [](icalcomponent* item) { return !isException(item); });

    uid = uidOf(items.front());
    for (auto* item : items) {
        if (uidOf(item) != uid || icalcomponent_isa(item) != icalcomponent_isa(items.front()))
            throw PlatformError("The calendar item holds several items.");
        if (item != items.front() && !isException(item))
            throw PlatformError("The calendar item holds the same item twice.");
    }
    if (uid.empty()) {
        uid = makeUUID();
        for (auto* item : items)
            setText(item, ICAL_UID_PROPERTY, uid);
    }
    const bool isEvent = icalcomponent_isa(items.front()) == ICAL_VEVENT_COMPONENT;
    entityType = isEvent ? EntityType::event : EntityType::reminder;
    zones = Zones(calendar.get());
}

std::unique_ptr<CalendarObject::State> CalendarObject::State::parse(std::string_view text) {
    prepareLibical();
    ICalPointer<icalcomponent> root(icalparser_parse_string(readableText(text).c_str()));
    if (!root) throw PlatformError("The calendar item is no iCalendar.");
    icalcomponent_strip_errors(root.get());
    if (isItem(root.get())) {
        auto calendar = emptyCalendar();
        icalcomponent_add_component(calendar.get(), root.release());
        root = std::move(calendar);
    }
    if (icalcomponent_isa(root.get()) != ICAL_VCALENDAR_COMPONENT)
        throw PlatformError("The calendar item is no iCalendar.");
    return std::make_unique<State>(std::move(root));
}

ICalPointer<icalcomponent> CalendarObject::State::emptyCalendar() {
    prepareLibical();
    ICalPointer<icalcomponent> calendar(icalcomponent_new(ICAL_VCALENDAR_COMPONENT));
    icalcomponent_add_property(calendar.get(), icalproperty_new_version("2.0"));
    icalcomponent_add_property(calendar.get(), icalproperty_new_prodid("-//Brindlefox//Apple Bridge//EN"));
    return calendar;
}

std::unique_ptr<CalendarObject::State> CalendarObject::State::copy() const {
    return std::make_unique<State>(clone(calendar.get()));
}

icalcomponent* CalendarObject::State::master() const {
    return isException(items.front()) ? nullptr : items.front();
}

icalcomponent* CalendarObject::State::item(size_t component) const {
    if (component >= items.size()) throw PlatformError("The occurrence is not one of this event.");
    return items[component];
}

} // namespace bridge
