#include "adapters/ical/calendar_file.h"

#include "adapters/ical/file_components.h"
#include "adapters/ical/file_item.h"
#include "adapters/ical/library.h"
#include "adapters/ical/zones.h"
#include "base/platform_error.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

namespace bridge {

namespace {

// The VTIMEZONEs of the file.
class Definitions {
public:
    explicit Definitions(const std::vector<FileComponent>& all) {
        for (const auto& component : all)
            if (component.kind == "VTIMEZONE") m_all.push_back(&component);
    }

    // Those that the text names and that the system knows nothing of.
    std::string usedBy(const std::string& text, size_t calendar) {
        std::string used;
        for (const auto& [tzid, definition] : of(calendar))
            if (text.find(tzid) != std::string::npos && !TimeZone::named(tzid)) used += definition->text();
        return used;
    }

    const Zones& zones(size_t calendar) {
        const auto known = m_zones.find(calendar);
        if (known != m_zones.end()) return known->second;
        std::string text = "BEGIN:VCALENDAR\r\n";
        for (const auto& [tzid, definition] : of(calendar))
            text += definition->text();
        const ICalPointer<icalcomponent> parsed(icalparser_parse_string((text + "END:VCALENDAR\r\n").c_str()));
        return m_zones.emplace(calendar, parsed ? Zones(parsed.get()) : Zones()).first->second;
    }

private:
    using Chosen = std::map<std::string, const FileComponent*>; // by TZID

    // Those of that VCALENDAR, and from elsewhere in the file those it hasn't got.
    const Chosen& of(size_t calendar) {
        const auto [place, isNew] = m_chosen.try_emplace(calendar);
        if (!isNew) return place->second;
        for (const auto* definition : m_all) {
            auto& chosen = place->second[definition->value("TZID")];
            if (!chosen || (chosen->calendar != calendar && definition->calendar == calendar)) chosen = definition;
        }
        return place->second;
    }

    std::vector<const FileComponent*> m_all;
    std::map<size_t, Chosen> m_chosen;
    std::map<size_t, Zones> m_zones;
};

// Which of two that can't both be right is the later (RFC 5546, 2.1.5).
std::tuple<int, std::string> age(const FileComponent& component) {
    int sequence = 0;
    for (const char digit : component.value("SEQUENCE")) {
        if (digit < '0' || digit > '9' || sequence > 100'000'000) break;
        sequence = sequence * 10 + (digit - '0');
    }
    return {sequence, component.value("DTSTAMP")};
}

// The items of one UID.
class Group {
public:
    void add(const FileComponent& component, std::vector<CalendarFileProblem>& problems) {
        const auto recurrenceID = component.value("RECURRENCE-ID");
        const auto [present, isNew] = m_items.emplace(recurrenceID, &component);
        if (isNew) {
            m_order.push_back(recurrenceID);
            return;
        }
        if (present->second->text() == component.text()) return;
        const bool isLater = age(*present->second) < age(component);
        const auto& older = isLater ? *present->second : component;
        problems.push_back({older.description(), "There is another one with the same UID, which was taken."});
        if (isLater) present->second = &component;
    }

    const FileComponent& first() const { return *m_items.at(m_order.front()); }

    CalendarObject object(Definitions& definitions) const {
        std::string items;
        for (const auto& id : m_order)
            items += m_items.at(id)->text();
        return CalendarObject::parse("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Brindlefox//Apple Bridge//EN\r\n" +
                                     definitions.usedBy(items, first().calendar) + items + "END:VCALENDAR\r\n");
    }

private:
    std::map<std::string, const FileComponent*> m_items; // by RECURRENCE-ID; "" is the master
    std::vector<std::string> m_order;
};

std::string_view reasonToLeaveOut(const std::string& kind) {
    if (kind == "VJOURNAL") return "Journals can't be kept.";
    if (kind == "VFREEBUSY") return "Free-busy times can't be kept.";
    return "Nothing is known of this kind.";
}

} // namespace

CalendarFile readCalendarFile(std::string_view bytes) {
    prepareLibical();
    auto found = findComponents(bytes);
    CalendarFile file{.title = std::move(found.title), .objects = {}, .problems = std::move(found.problems)};
    Definitions definitions(found.components);
    std::vector<Group> groups;
    std::map<std::pair<std::string, std::string>, size_t> places; // by kind and UID
    for (const auto& component : found.components) {
        if (component.kind == "VTIMEZONE") continue;
        if (component.kind != "VEVENT" && component.kind != "VTODO") {
            file.problems.push_back({component.description(), std::string(reasonToLeaveOut(component.kind))});
            continue;
        }
        if (!checkFileItem(component, definitions.zones(component.calendar), file.problems)) continue;
        const auto uid = component.value("UID");
        size_t place = groups.size();
        if (!uid.empty()) place = places.emplace(std::pair(component.kind, uid), place).first->second;
        if (place == groups.size()) groups.emplace_back();
        groups[place].add(component, file.problems);
    }
    for (const auto& group : groups) {
        try {
            file.objects.push_back(group.object(definitions));
        } catch (const PlatformError& error) {
            file.problems.push_back({group.first().description(), error.what()});
        }
    }
    return file;
}

} // namespace bridge
