#include "adapters/sqlite/sqlite_event_store.h"

#include "adapters/sqlite/event_schema.h"
#include "adapters/sqlite/event_search.h"
#include "adapters/sqlite/item_access.h"
#include "adapters/sqlite/reminder_table.h"

#include <algorithm>

namespace bridge {

namespace {

// In the store's order, each once.
std::vector<CalendarRow> existingCalendars(Database& database, const std::vector<std::string>& identifiers,
                                           EntityType entityType) {
    std::vector<CalendarRow> rows;
    for (const auto& identifier : identifiers)
        rows.push_back(CalendarTable(database).existing(identifier, entityType));
    std::ranges::sort(rows, {}, &CalendarRow::key);
    const auto isSame = [](const CalendarRow& one, const CalendarRow& other) { return one.key == other.key; };
    rows.erase(std::unique(rows.begin(), rows.end(), isSame), rows.end());
    return rows;
}

std::optional<Calendar> calendarOf(const std::optional<CalendarRow>& row) {
    return row ? std::optional(row->calendar) : std::nullopt;
}

Calendar addFilled(Database& database, Date now, const NewCalendar& calendar,
                   const std::vector<CalendarObject>& objects) {
    CalendarTable calendars(database);
    const auto source = calendars.existingSource(calendar.sourceID);
    const auto row = calendars.add(calendar.entityType, source, calendar.title, calendar.allowsContentModifications);
    ItemAccess(database, now).add(row, objects);
    return row.calendar;
}

} // namespace

struct SqliteEventStore::State {
    State(std::string path, const Clock& present, DatabaseOptions options)
        : clock(present),
          file(std::move(path), eventStoreSchema, present, options, [this](Database& database) { extend(database); }) {}

    // As time goes by, and not while somebody waits for an answer. Where it fails, searches look into the texts.
    void extend(Database& database) {
        try {
            Transaction transaction(database, Transaction::Kind::write);
            ItemTable(database, clock.now()).extendCoverage();
            transaction.commit();
        } catch (const DatabaseError& error) {
            if (error.trouble() == DatabaseTrouble::damaged) throw;
        }
    }

    const Clock& clock;
    StoreFile file;
};

SqliteEventStore::SqliteEventStore(std::string path, const Clock& clock, DatabaseOptions options)
    : m_state(std::make_unique<State>(std::move(path), clock, options)) {}

SqliteEventStore::~SqliteEventStore() = default;

Task<std::vector<CalendarSource>> SqliteEventStore::sources() {
    co_return m_state->file.read([](Database& database) { return CalendarTable(database).sources(); });
}

Task<std::vector<Calendar>> SqliteEventStore::calendars(EntityType entityType) {
    co_return m_state->file.read([=](Database& database) {
        std::vector<Calendar> calendars;
        for (auto& row : CalendarTable(database).all(entityType))
            calendars.push_back(std::move(row.calendar));
        return calendars;
    });
}

Task<std::optional<Calendar>> SqliteEventStore::calendar(std::string identifier) {
    co_return m_state->file.read(
        [&](Database& database) { return calendarOf(CalendarTable(database).find(identifier)); });
}

Task<std::optional<Calendar>> SqliteEventStore::defaultCalendar(EntityType entityType) {
    co_return m_state->file.read(
        [=](Database& database) { return calendarOf(CalendarTable(database).defaultFor(entityType)); });
}

Task<Calendar> SqliteEventStore::addCalendar(EntityType entityType, std::string sourceID, std::string title) {
    co_return m_state->file.write([&](Database& database) {
        CalendarTable calendars(database);
        const auto source = calendars.existingSource(sourceID);
        if (!takesCalendars(source)) throw PlatformError("The account “" + source.title + "” takes no calendars.");
        return calendars.add(entityType, source, title, true).calendar;
    });
}

Task<Calendar> SqliteEventStore::renameCalendar(std::string identifier, std::string title) {
    co_return m_state->file.write([&](Database& database) {
        CalendarTable calendars(database);
        auto row = calendars.writable(identifier);
        calendars.rename(row, title);
        row.calendar.title = title;
        return row.calendar;
    });
}

Task<> SqliteEventStore::removeCalendar(std::string identifier) {
    m_state->file.write([&](Database& database) {
        CalendarTable calendars(database);
        calendars.remove(calendars.writable(identifier));
    });
    co_return;
}

Task<std::vector<CalendarEvent>> SqliteEventStore::events(Date start, Date end, std::vector<std::string> calendarIDs,
                                                          size_t limit) {
    co_return m_state->file.read([&](Database& database) {
        return EventSearch(database, m_state->clock.now(), start, end, limit)
            .run(existingCalendars(database, calendarIDs, EntityType::event));
    });
}

Task<std::vector<Reminder>> SqliteEventStore::reminders(std::vector<std::string> listIDs) {
    co_return m_state->file.read([&](Database& database) {
        std::vector<Reminder> reminders;
        for (const auto& list : existingCalendars(database, listIDs, EntityType::reminder))
            ReminderTable(database).readAll(list.key, reminders);
        return reminders;
    });
}

Task<std::optional<CalendarItem>> SqliteEventStore::item(std::string identifier) {
    co_return m_state->file.read(
        [&](Database& database) { return ItemAccess(database, m_state->clock.now()).read(identifier); });
}

Task<CalendarEvent> SqliteEventStore::saveEvent(CalendarEvent event) {
    co_return m_state->file.write([&](Database& database) {
        ItemAccess items(database, m_state->clock.now());
        return event.identifier.empty() ? items.create(event) : items.change(event);
    });
}

Task<> SqliteEventStore::removeEvent(std::string identifier) {
    m_state->file.write(
        [&](Database& database) { ItemAccess(database, m_state->clock.now()).removeEvent(identifier); });
    co_return;
}

Task<Reminder> SqliteEventStore::saveReminder(Reminder reminder) {
    co_return m_state->file.write([&](Database& database) {
        ItemAccess items(database, m_state->clock.now());
        return reminder.identifier.empty() ? items.create(reminder) : items.change(reminder);
    });
}

Task<> SqliteEventStore::removeReminder(std::string identifier) {
    m_state->file.write(
        [&](Database& database) { ItemAccess(database, m_state->clock.now()).removeReminder(identifier); });
    co_return;
}

std::string SqliteEventStore::addSource(std::string_view title, SourceType type) {
    return m_state->file.write([&](Database& database) { return CalendarTable(database).addSource(title, type).id; });
}

Calendar SqliteEventStore::importCalendar(const NewCalendar& calendar, const std::vector<CalendarObject>& objects) {
    return m_state->file.write(
        [&](Database& database) { return addFilled(database, m_state->clock.now(), calendar, objects); });
}

std::vector<Calendar> SqliteEventStore::importCalendars(const std::vector<FilledCalendar>& calendars) {
    return m_state->file.write([&](Database& database) {
        std::vector<Calendar> added;
        for (const auto& each : calendars)
            added.push_back(addFilled(database, m_state->clock.now(), each.calendar, each.objects));
        return added;
    });
}

void SqliteEventStore::importItems(const std::string& calendarID, const std::vector<CalendarObject>& objects) {
    m_state->file.write([&](Database& database) {
        ItemAccess(database, m_state->clock.now()).add(CalendarTable(database).existing(calendarID), objects);
    });
}

void SqliteEventStore::setDefaultCalendar(const std::string& identifier) {
    m_state->file.write([&](Database& database) {
        CalendarTable calendars(database);
        calendars.setDefault(calendars.writable(identifier));
    });
}

} // namespace bridge
