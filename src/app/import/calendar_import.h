#pragma once

#include "adapters/ical/calendar_file.h"
#include "adapters/sqlite/sqlite_event_store.h"
#include "app/import/imported_file.h"

namespace bridge {

// Takes what a file says, called `name` by the user, into the account on this computer: its events as a new calendar,
// its tasks as a new reminder list, titled as the file says, else as it is called, with a number where such a calendar
// is there already. All or nothing; throws PlatformError then.
Task<std::vector<ImportedCalendar>> importCalendars(SqliteEventStore& store, CalendarFile file, std::string name);

} // namespace bridge
