#pragma once

#include "adapters/sqlite/sqlite_event_store.h"

namespace bridge::playground {

// Calendars and reminder lists as people have them, with appointments around `now`: three accounts, of which one is
// subscribed, a calendar that takes no changes, single and all-day events, series with exceptions, tasks with and
// without a date, done, overdue and repeating. The store is a new one.
Task<> makeSampleCalendars(SqliteEventStore& store, Date now);

} // namespace bridge::playground
