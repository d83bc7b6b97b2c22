#pragma once

#include "adapters/ical/calendar_file.h"
#include "adapters/ical/content_lines.h"

#include <string>
#include <vector>

namespace bridge {

// A component of a calendar file as it stands there, BEGIN and END included.
struct FileComponent {
    std::string kind;    // VEVENT, VTIMEZONE ...
    size_t calendar = 0; // in which VCALENDAR, counted from 0
    std::vector<ContentLine> lines;

    // The first value of that property of the component itself.
    std::string value(std::string_view name) const;
    // For the user: event “Sowing”, or by its line where it has no title.
    std::string description() const;
    std::string text() const; // for libical
};

struct FileComponents {
    std::optional<std::string> title;
    std::vector<FileComponent> components;
    std::vector<CalendarFileProblem> problems; // with what is no component
};

// Finds the components by their BEGIN and END alone, so that what is wrong in one of them does not reach the next.
// Throws PlatformError when nothing is iCalendar.
FileComponents findComponents(std::string_view bytes);

} // namespace bridge
