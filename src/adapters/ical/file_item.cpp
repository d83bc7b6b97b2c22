#include "adapters/ical/file_item.h"

#include "adapters/ical/library.h"
#include "adapters/ical/recurrence_rule.h"
#include "adapters/ical/shield.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <set>

namespace bridge {

namespace {

bool isAmong(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Without one of these it would be another event.
bool isVital(std::string_view name, std::string_view kind) {
    if (isAmong(name, {"RRULE", "RDATE", "EXDATE", "EXRULE", "RECURRENCE-ID"})) return true;
    return kind == "VEVENT" && name == "DTSTART";
}

class Check {
public:
    Check(const FileComponent& component, const Zones& zones, std::vector<CalendarFileProblem>& problems)
        : m_component(component), m_zones(zones), m_problems(problems), m_item(component.description()) {}

    bool run() {
        const ICalPointer<icalcomponent> item(icalparser_parse_string(m_component.text().c_str()));
        if (!item) return lose("It can't be read.");
        if (icalcomponent_count_errors(item.get()) > 0) checkLines();
        checkParts();
        if (auto* id = firstProperty(item.get(), ICAL_RECURRENCEID_PROPERTY);
            id && icalproperty_get_first_parameter(id, ICAL_RANGE_PARAMETER))
            note("It stands for all later ones too, but was taken for its own day alone.");
        for (const auto kind : {ICAL_DTSTART_PROPERTY, ICAL_RECURRENCEID_PROPERTY, ICAL_RDATE_PROPERTY,
                                ICAL_EXDATE_PROPERTY, ICAL_DTEND_PROPERTY, ICAL_DUE_PROPERTY, ICAL_COMPLETED_PROPERTY})
            for (auto* property : properties(item.get(), kind))
                checkTime(property);
        if (m_isTaken && m_component.kind == "VEVENT" && !firstProperty(item.get(), ICAL_DTSTART_PROPERTY))
            lose("It does not say when it starts.");
        if (m_isTaken) checkRules(item.get());
        if (std::any_of(m_component.lines.begin(), m_component.lines.end(),
                        [](const ContentLine& line) { return line.isRepaired; }))
            note("Some of its characters are not UTF-8; they were replaced by “\uFFFD”.");
        return m_isTaken;
    }

private:
    bool lose(std::string reason) {
        m_problems.push_back({m_item, std::move(reason)});
        m_isTaken = false;
        return false;
    }
    void note(std::string reason) { m_problems.push_back({m_item, std::move(reason), false}); }

    // libical says that something was wrong, but hardly what.
    void checkLines() {
        int depth = 0;
        for (const auto& line : m_component.lines) {
            const auto name = line.name();
            if (name == "BEGIN") ++depth;
            if (name == "END") --depth;
            if (name == "BEGIN" || name == "END" || !m_isTaken) continue;
            const ICalPointer<icalproperty> property(icalproperty_new_from_string(shield(line).c_str()));
            if (property && line.isWellFormed()) continue;
            // An empty property says nothing, so nothing is lost with it.
            const bool isEmpty = line.text.find(':') != std::string::npos && line.value().empty();
            if (depth == 1 && isVital(name, m_component.kind) && !(isEmpty && name != "DTSTART"))
                lose(fmt::format("Its {} in line {} can't be read.", name, line.number));
            else if (property)
                note(fmt::format("Line {} is kept, but it can't be read.", line.number));
            else if (depth > 1 && !isEmpty)
                note(fmt::format("It was taken without line {}, a part of its alarm.", line.number));
            else if (!isEmpty)
                note(fmt::format("It was taken without line {}, which can't be read.", line.number));
        }
    }

    // libical keeps no other parts than alarms.
    void checkParts() {
        int depth = 0;
        std::set<std::string> leftOut;
        for (const auto& line : m_component.lines) {
            const auto name = line.name();
            if (name == "END") --depth;
            if (name != "BEGIN") continue;
            const std::string part(trim(line.value()));
            const bool isAlarm = depth == 1 && uppercase(part) == "VALARM";
            if (++depth > 1 && !isAlarm && leftOut.insert(part).second)
                note(fmt::format("It was taken without its {}.", part));
        }
    }

    void checkTime(icalproperty* property) {
        const std::string name = icalproperty_kind_to_string(icalproperty_isa(property));
        const auto time = readTime(property, m_zones);
        if (!time && m_isTaken) {
            if (isVital(name, m_component.kind))
                lose(fmt::format("Its {} “{}” is no date.", name, valueText(property)));
            else
                note(fmt::format("Its {} “{}” is no date and does not count.", name, valueText(property)));
        }
        if (time && !time->form.zone && !time->form.tzid.empty() && m_unknownZones.insert(time->form.tzid).second)
            note(fmt::format("Nothing is known of its time zone “{}”: it takes place at that time of day wherever you "
                             "are.",
                             time->form.tzid));
    }

    void checkRules(icalcomponent* item) {
        auto start = readTime(item, ICAL_DTSTART_PROPERTY, m_zones);
        if (!start) start = readTime(item, ICAL_DUE_PROPERTY, m_zones);
        for (const auto kind : {ICAL_RRULE_PROPERTY, ICAL_EXRULE_PROPERTY})
            for (auto* property : properties(item, kind)) {
                if (!m_isTaken) return;
                if (!start)
                    lose("It repeats, but does not say from when on.");
                else if (!RecurrenceRule::read(property, *start))
                    lose(fmt::format("Its rule “{}” can't be followed.", valueText(property)));
            }
    }

    const FileComponent& m_component;
    const Zones& m_zones;
    std::vector<CalendarFileProblem>& m_problems;
    std::string m_item;
    std::set<std::string> m_unknownZones;
    bool m_isTaken = true;
};

} // namespace

bool checkFileItem(const FileComponent& component, const Zones& zones, std::vector<CalendarFileProblem>& problems) {
    return Check(component, zones, problems).run();
}

} // namespace bridge
