#pragma once

#include "adapters/sqlite/database.h"
#include "platform/event_store.h"

namespace bridge {

// What the components of calendar objects say, in columns, so that a search parses nothing.
class EventTable {
public:
    explicit EventTable(Database& database) : m_database(database) {}

    void add(int64_t item, size_t component, const CalendarEvent& event);
    void removeAll(int64_t item);

    // All but start and end, with the identifiers of the item and its calendar. Throws DatabaseError when the component
    // isn't there.
    CalendarEvent read(int64_t item, size_t component) const;

private:
    Database& m_database;
};

// "-900 @1786700000": seconds after the start, and moments.
std::string alarmText(const std::vector<Alarm>& alarms);
std::vector<Alarm> readAlarms(std::string_view text);

// An occurrence of a series has the identifier of its item, a slash and its recurrence id.
std::string occurrenceIdentifier(std::string_view item, std::string_view recurrenceID);

} // namespace bridge
