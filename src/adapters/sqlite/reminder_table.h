#pragma once

#include "adapters/sqlite/database.h"
#include "platform/event_store.h"

namespace bridge {

// Reminders in columns, so that a search parses nothing.
class ReminderTable {
public:
    explicit ReminderTable(Database& database) : m_database(database) {}

    void add(int64_t calendar, int64_t item, const Reminder& reminder);
    void remove(int64_t item);

    // In the order in which they were added.
    void readAll(int64_t calendar, std::vector<Reminder>& reminders) const;
    // Throws DatabaseError when it isn't there.
    Reminder read(int64_t item) const;

private:
    Database& m_database;
};

} // namespace bridge
