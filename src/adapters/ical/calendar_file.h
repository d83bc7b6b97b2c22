#pragma once

#include "adapters/ical/calendar_object.h"

namespace bridge {

// What could not be taken from a file, for the user to read.
struct CalendarFileProblem {
    std::string item;   // "event “Sowing”", "task “Seeds”", "line 17"
    std::string reason; // a sentence
    bool isLost = true; // whether the item is left out, or was taken without the part that is wrong
};

struct CalendarFile {
    std::optional<std::string> title; // X-WR-CALNAME, or NAME of RFC 7986
    std::vector<CalendarObject> objects;
    std::vector<CalendarFileProblem> problems;
};

// Reads an iCalendar file (RFC 5545) as programs really write them: several VCALENDARs in a row, a byte order mark, any
// line ends, zones defined after their use, by a name of another system or not at all. An item is taken whole or
// reported; two items of one UID that contradict each other are reported too. Components that are neither event nor
// task (journals, free-busy times) are reported. Throws PlatformError when nothing in it is iCalendar.
CalendarFile readCalendarFile(std::string_view bytes);

} // namespace bridge
