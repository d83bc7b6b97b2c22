#pragma once

#include "adapters/sqlite/calendar_table.h"
#include "adapters/sqlite/occurrence_table.h"

namespace bridge {

struct ItemRow {
    int64_t key = 0;
    std::string id;
    CalendarRow calendar;

    EntityType entityType() const { return calendar.calendar.entityType; }
};

// A series of which not all occurrences are in the table of occurrences.
struct OpenSeries {
    int64_t item = 0;
    std::string id;
    Coverage coverage;
};

// The calendar objects. Whatever is derived from one is written with it here, and nowhere else.
class ItemTable {
public:
    ItemTable(Database& database, Date now) : m_database(database), m_now(now) {}

    std::optional<ItemRow> find(std::string_view identifier) const;
    CalendarObject object(int64_t item) const;

    // Throw PlatformError when the calendar has an item of that UID already.
    ItemRow add(const CalendarRow& calendar, const CalendarObject& object);
    void write(const ItemRow& row, const CalendarObject& object); // also into another calendar
    void remove(const ItemRow& row);

    // Those that may have occurrences in start ..< end beyond their coverage.
    std::vector<OpenSeries> openSeries(int64_t calendar, Date start, Date end) const;
    // Covers what has come nearer since it was written.
    void extendCoverage();

private:
    Coverage writeIndex(int64_t calendar, int64_t item, const CalendarObject& object);
    void writeCoverage(int64_t item, const Coverage& coverage);
    void removeIndex(int64_t item);

    Database& m_database;
    Date m_now;
};

} // namespace bridge
