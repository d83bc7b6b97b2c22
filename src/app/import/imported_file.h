#pragma once

#include "app/import/file_kind.h"
#include "platform/event_store.h"

#include <optional>
#include <string>
#include <vector>

namespace bridge {

struct ImportedCalendar {
    Calendar calendar;
    size_t itemCount = 0; // a series is one
};

struct ImportedContacts {
    size_t added = 0;
    size_t known = 0; // here already, saying the same
    size_t groups = 0;
};

// What could not be taken, for the user to read.
struct ImportProblem {
    std::string item;   // "event “Sowing”", "contact “Ada Lovelace”", "line 17"
    std::string reason; // a sentence
    bool isLost = true; // whether the item is left out, or was taken without the part that is wrong
};

// What became of a file.
struct ImportedFile {
    std::string name;             // as the user gave it
    std::optional<FileKind> kind; // nothing when it can't be told
    std::vector<ImportedCalendar> calendars;
    ImportedContacts contacts;
    std::vector<ImportProblem> problems;
    std::optional<std::string> failure; // why nothing of it was taken

    bool isWhole() const { return !failure && problems.empty(); }
};

} // namespace bridge
