#pragma once

#include "adapters/sqlite/database.h"
#include "platform/event_store.h"

namespace bridge {

struct CalendarRow {
    int64_t key = 0;
    Calendar calendar;
};

// The accounts and calendars of the store.
class CalendarTable {
public:
    explicit CalendarTable(Database& database) : m_database(database) {}

    std::vector<CalendarSource> sources() const;
    CalendarSource existingSource(std::string_view identifier) const; // throws PlatformError when it isn't there
    CalendarSource addSource(std::string_view title, SourceType type);

    // In the order in which they were added.
    std::vector<CalendarRow> all(EntityType entityType) const;
    std::optional<CalendarRow> find(std::string_view identifier) const;
    std::optional<CalendarRow> find(int64_t key) const;
    CalendarRow add(EntityType entityType, const CalendarSource& source, std::string_view title, bool takesChanges);
    void rename(const CalendarRow& row, std::string_view title);
    void remove(const CalendarRow& row);

    // The one that was chosen, else the first that takes changes.
    std::optional<CalendarRow> defaultFor(EntityType entityType) const;
    void setDefault(const CalendarRow& row);

    // Throw PlatformError for a calendar that is not there or of the other type, and for one that takes no changes.
    CalendarRow existing(std::string_view identifier, std::optional<EntityType> entityType = std::nullopt) const;
    CalendarRow writable(std::string_view identifier, std::optional<EntityType> entityType = std::nullopt) const;

private:
    Database& m_database;
};

bool takesCalendars(const CalendarSource& source);
void requireWritable(const Calendar& calendar);
// calendar “Home”, reminder list “Shopping”
std::string nameOf(const Calendar& calendar);

} // namespace bridge
