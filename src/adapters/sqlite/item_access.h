#pragma once

#include "adapters/sqlite/item_table.h"

namespace bridge {

// The store's items by their identifiers, as EventStore says of each call. Used within one transaction.
class ItemAccess {
public:
    ItemAccess(Database& database, Date now) : m_database(database), m_now(now), m_items(database, now) {}

    std::optional<CalendarItem> read(std::string_view identifier) const;

    CalendarEvent create(const CalendarEvent& event);
    CalendarEvent change(const CalendarEvent& event);
    void removeEvent(std::string_view identifier);

    Reminder create(const Reminder& reminder);
    Reminder change(const Reminder& reminder);
    void removeReminder(std::string_view identifier);

    // As another program put them there. Throws PlatformError for objects of the wrong type.
    void add(const CalendarRow& calendar, const std::vector<CalendarObject>& objects);

private:
    // An event with all that is known about it.
    struct Found {
        ItemRow row;
        CalendarObject object;
        Occurrence occurrence;
    };
    std::optional<Found> findEvent(std::string_view identifier) const;
    Found writableEvent(std::string_view identifier) const;
    ItemRow writableReminder(std::string_view identifier) const;
    CalendarEvent moveOutOfSeries(Found found, const CalendarEvent& event, const CalendarRow& target);
    void removeOccurrence(Found& found);

    Database& m_database;
    Date m_now;
    ItemTable m_items;
};

} // namespace bridge
