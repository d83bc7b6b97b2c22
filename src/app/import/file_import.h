#pragma once

#include "adapters/sqlite/sqlite_contact_store.h"
#include "adapters/sqlite/sqlite_event_store.h"
#include "app/import/imported_file.h"

#include <functional>

namespace bridge {

// Where files are taken to. They outlive every import.
struct ImportStores {
    SqliteEventStore& calendars;
    SqliteContactStore& contacts;
};

// Hears what is being done with a file, for someone who waits.
using ImportProgress = std::function<void(const std::string& sentence)>;

// Takes an iCalendar or a vCard file ("-" is standard input), which of the two its content tells. Calendars go where
// importCalendars() says, contacts and their groups where SqliteContactStore::importFile() says. All that can be taken
// of the file is taken, or nothing. What goes wrong is in the answer.
Task<ImportedFile> importFile(ImportStores stores, std::string name, ImportProgress progress);

} // namespace bridge
