#include "adapters/sqlite/event_schema.h"

#include "adapters/sqlite/calendar_table.h"

#include <array>

namespace bridge {

namespace {

// Moments are seconds since 1970; of a floating time, as if its clock showed UTC.
constexpr auto version1 = R"(
    CREATE TABLE source(
        key INTEGER PRIMARY KEY,
        id TEXT NOT NULL UNIQUE,
        title TEXT NOT NULL,
        type INTEGER NOT NULL);

    CREATE TABLE calendar(
        key INTEGER PRIMARY KEY,
        id TEXT NOT NULL UNIQUE,
        source INTEGER NOT NULL REFERENCES source,
        entity_type INTEGER NOT NULL,
        title TEXT NOT NULL,
        takes_changes INTEGER NOT NULL);

    CREATE TABLE default_calendar(
        entity_type INTEGER PRIMARY KEY,
        calendar INTEGER NOT NULL REFERENCES calendar ON DELETE CASCADE);
    CREATE INDEX default_calendar_by_calendar ON default_calendar(calendar);

    -- A calendar object. Of a series, the occurrences that end after covered_from and start before covered_until are in
    -- the table of occurrences; where one is NULL, none lies beyond that side. extend_at is when to cover more.
    CREATE TABLE item(
        key INTEGER PRIMARY KEY,
        id TEXT NOT NULL UNIQUE,
        calendar INTEGER NOT NULL REFERENCES calendar ON DELETE CASCADE,
        uid TEXT NOT NULL,
        covered_from INTEGER,
        covered_until INTEGER,
        extend_at INTEGER,
        text TEXT NOT NULL,
        UNIQUE(calendar, uid));
    CREATE INDEX item_before ON item(calendar, covered_from) WHERE covered_from IS NOT NULL;
    CREATE INDEX item_after ON item(calendar, covered_until) WHERE covered_until IS NOT NULL;
    CREATE INDEX item_to_extend ON item(extend_at) WHERE extend_at IS NOT NULL;

    -- What the component of a calendar object says; of a series there is one for the series and each exception.
    CREATE TABLE event(
        item INTEGER NOT NULL REFERENCES item ON DELETE CASCADE,
        component INTEGER NOT NULL,
        title TEXT,
        location TEXT,
        notes TEXT,
        url TEXT,
        is_all_day INTEGER NOT NULL,
        has_rules INTEGER NOT NULL,
        alarms TEXT NOT NULL,
        PRIMARY KEY(item, component)) WITHOUT ROWID;

    -- clock: 0 for moments; 1 more when the start is floating, 2 more when the end is. reach: NULL up to a day, else the
    -- length rounded up to a power of two of days.
    CREATE TABLE occurrence(
        calendar INTEGER NOT NULL,
        clock INTEGER NOT NULL,
        start INTEGER NOT NULL,
        item INTEGER NOT NULL REFERENCES item ON DELETE CASCADE,
        recurrence_id TEXT NOT NULL,
        "end" INTEGER NOT NULL,
        component INTEGER NOT NULL,
        reach INTEGER,
        PRIMARY KEY(calendar, clock, start, item, recurrence_id)) WITHOUT ROWID;
    CREATE INDEX occurrence_of_item ON occurrence(item);
    CREATE INDEX occurrence_long ON occurrence(calendar, clock, reach, start) WHERE reach IS NOT NULL;

    CREATE TABLE reminder(
        item INTEGER PRIMARY KEY REFERENCES item ON DELETE CASCADE,
        calendar INTEGER NOT NULL,
        title TEXT,
        notes TEXT,
        due_year INTEGER,
        due_month INTEGER,
        due_day INTEGER,
        due_hour INTEGER,
        due_minute INTEGER,
        due_second INTEGER,
        due_zone TEXT,
        is_completed INTEGER NOT NULL,
        completed_at INTEGER,
        priority INTEGER NOT NULL);
    CREATE INDEX reminder_of_calendar ON reminder(calendar);
)";

constexpr std::array migrations{version1};

void fill(Database& database) {
    CalendarTable calendars(database);
    const auto source = calendars.addSource("On This Computer", SourceType::local);
    for (const auto& [type, title] :
         {std::pair{EntityType::event, "Calendar"}, std::pair{EntityType::reminder, "Reminders"}})
        calendars.setDefault(calendars.add(type, source, title, true));
}

} // namespace

const StoreSchema eventStoreSchema{
    .contents = "calendars on this computer",
    .applicationID = 0x42664576, // "BfEv"
    .migrations = migrations,
    .fill = fill,
};

} // namespace bridge
