#include "adapters/ical/file_components.h"

#include "adapters/ical/shield.h"
#include "base/platform_error.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace bridge {

namespace {

// An alarm, with a place of its own, in an event.
constexpr size_t deepest = 4;

std::string upper(std::string_view text) {
    std::string all(trim(text));
    std::transform(all.begin(), all.end(), all.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return all;
}

// What stands in a calendar, and never in another component.
bool isOuter(std::string_view kind) {
    static constexpr std::array kinds{"VCALENDAR", "VEVENT", "VTODO", "VJOURNAL", "VFREEBUSY", "VTIMEZONE"};
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

std::string unescape(std::string_view value) {
    std::string text;
    for (size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        ++i;
        text += value[i] == 'n' || value[i] == 'N' ? ' ' : value[i];
    }
    return std::string(trim(text));
}

class Finder {
public:
    FileComponents find(std::string_view bytes) {
        for (auto& line : readContentLines(bytes))
            take(std::move(line));
        if (isOpen()) giveUp("It has no end.");
        const bool hasAny = m_calendars > 0 || std::any_of(m_found.components.begin(), m_found.components.end(),
                                                           [](const auto& found) { return isOuter(found.kind); });
        if (!hasAny) throw PlatformError("The file is no iCalendar file.");
        return std::move(m_found);
    }

private:
    bool isOpen() const { return !m_open.empty(); }

    void take(ContentLine line) {
        const auto name = line.name();
        if (name == "X-LIC-ERROR") return; // what a library said of the file when it was written
        if (name == "BEGIN") return begin(std::move(line));
        if (name == "END") return end(std::move(line));
        if (isOpen()) {
            m_component.lines.push_back(std::move(line));
            return;
        }
        if (line.text.find(':') == std::string::npos || m_calendars == 0) return noteNonsense(line);
        m_isNonsense = false;
        const bool isTitle = name == "X-WR-CALNAME" || (name == "NAME" && !m_found.title);
        if (const auto title = unescape(line.value()); isTitle && !title.empty()) m_found.title = title;
    }

    void begin(ContentLine line) {
        const auto kind = upper(line.value());
        if (isOpen() && isOuter(kind)) giveUp("It has no end.");
        m_isNonsense = false;
        if (kind == "VCALENDAR") {
            ++m_calendars;
            return;
        }
        if (!isOpen()) {
            m_component = {.kind = kind, .calendar = m_calendars, .lines = {}};
            m_isTooDeep = false;
        }
        m_open.push_back(kind);
        m_isTooDeep = m_isTooDeep || m_open.size() > deepest;
        m_component.lines.push_back(std::move(line));
    }

    void end(ContentLine line) {
        const auto kind = upper(line.value());
        if (!isOpen()) {
            if (kind != "VCALENDAR") noteNonsense(line);
            return;
        }
        if (m_open.back() != kind) {
            if (kind == "VCALENDAR" || kind == m_component.kind) giveUp("A part of it has no end.");
            return;
        }
        m_open.pop_back();
        m_component.lines.push_back(std::move(line));
        if (isOpen()) return;
        if (m_isTooDeep) return giveUp("Its parts are nested too deeply.");
        m_found.components.push_back(std::move(m_component));
    }

    void giveUp(const char* reason) {
        m_found.problems.push_back({m_component.description(), reason});
        m_open.clear();
    }

    // Told once for lines in a row.
    void noteNonsense(const ContentLine& line) {
        if (!m_isNonsense && m_calendars > 0)
            m_found.problems.push_back({fmt::format("line {}", line.number), "This is not iCalendar."});
        m_isNonsense = true;
    }

    FileComponents m_found;
    FileComponent m_component;       // while m_open has any
    std::vector<std::string> m_open; // the kinds of the component and of those in it
    bool m_isTooDeep = false;
    bool m_isNonsense = false;
    size_t m_calendars = 0;
};

} // namespace

std::string FileComponent::value(std::string_view name) const {
    int depth = 0;
    for (const auto& line : lines) {
        const auto lineName = line.name();
        if (lineName == "BEGIN") ++depth;
        if (lineName == "END") --depth;
        if (depth == 1 && lineName == name) return std::string(line.value());
    }
    return {};
}

std::string FileComponent::description() const {
    std::string what = "part " + kind;
    if (kind == "VEVENT") what = "event";
    if (kind == "VTODO") what = "task";
    if (kind == "VJOURNAL") what = "journal entry";
    if (kind == "VFREEBUSY") what = "free-busy time";
    if (kind == "VTIMEZONE") what = "time zone";
    auto title = unescape(value(kind == "VTIMEZONE" ? "TZID" : "SUMMARY"));
    constexpr size_t longest = 80;
    if (title.size() > longest) {
        title.resize(longest);
        while (!title.empty() && !isUTF8(title))
            title.pop_back();
        title += "…";
    }
    if (title.empty()) return fmt::format("{} of line {}", what, lines.empty() ? 0 : lines.front().number);
    return fmt::format("{} “{}”", what, title);
}

std::string FileComponent::text() const {
    std::string all;
    for (const auto& line : lines) {
        all += shield(line);
        all += "\r\n";
    }
    return all;
}

FileComponents findComponents(std::string_view bytes) {
    return Finder().find(bytes);
}

} // namespace bridge
