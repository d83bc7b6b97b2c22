#pragma once

#include "adapters/ical/calendar_file.h"
#include "adapters/sqlite/sqlite_event_store.h"

#include <functional>

namespace bridge {

struct ImportedCalendar {
    Calendar calendar;
    size_t itemCount = 0; // a series is one
};

// What became of a file.
struct ImportedFile {
    std::string name;                        // as the user gave it
    std::vector<ImportedCalendar> calendars; // none when there was nothing to take
    std::vector<CalendarFileProblem> problems;
    std::optional<std::string> failure; // why nothing of it was taken

    bool isWhole() const { return !failure && problems.empty(); }
};

// Hears what is being done with a file, for someone who waits.
using ImportProgress = std::function<void(const std::string& sentence)>;

// Takes an iCalendar file ("-" is standard input) into the account on this computer: its events as a new calendar, its
// tasks as a new reminder list, titled as the file says, else as it is called, with a number where such a calendar is
// there already. All that can be taken of the file is taken, or nothing. What goes wrong is in the answer.
Task<ImportedFile> importCalendarFile(SqliteEventStore& store, std::string name, ImportProgress progress);

} // namespace bridge
