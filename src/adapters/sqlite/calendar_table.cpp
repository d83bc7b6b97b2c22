#include "adapters/sqlite/calendar_table.h"

#include "base/uuid.h"

#include <fmt/format.h>

namespace bridge {

namespace {

constexpr auto calendarsWhere =
    "SELECT calendar.key, calendar.id, calendar.entity_type, calendar.title, takes_changes, "
    "source.id, source.title, source.type "
    "FROM calendar JOIN source ON source.key = calendar.source WHERE ";

CalendarSource sourceFrom(const Statement& row, int first) {
    return {row.column<std::string>(first), row.column<std::string>(first + 1),
            static_cast<SourceType>(row.column<int>(first + 2))};
}

CalendarRow calendarFrom(const Statement& row) {
    CalendarRow result;
    result.key = row.column<int64_t>(0);
    auto& calendar = result.calendar;
    calendar.id = row.column<std::string>(1);
    calendar.entityType = static_cast<EntityType>(row.column<int>(2));
    calendar.title = row.column<std::string>(3);
    calendar.source = sourceFrom(row, 5);
    calendar.allowsContentModifications = row.column<bool>(4) && takesCalendars(calendar.source);
    return result;
}

std::optional<CalendarRow> onlyCalendar(Statement statement) {
    return statement.step() ? std::optional(calendarFrom(statement)) : std::nullopt;
}

std::string kindOf(EntityType entityType) {
    return entityType == EntityType::event ? "calendar" : "reminder list";
}

} // namespace

std::vector<CalendarSource> CalendarTable::sources() const {
    std::vector<CalendarSource> sources;
    auto row = m_database.query("SELECT id, title, type FROM source ORDER BY key");
    while (row.step())
        sources.push_back(sourceFrom(row, 0));
    return sources;
}

CalendarSource CalendarTable::existingSource(std::string_view identifier) const {
    auto row = m_database.query("SELECT id, title, type FROM source WHERE id = ?", identifier);
    if (!row.step()) throw PlatformError(fmt::format("There is no account “{}” on this computer.", identifier));
    return sourceFrom(row, 0);
}

CalendarSource CalendarTable::addSource(std::string_view title, SourceType type) {
    CalendarSource source{makeUUID(), std::string(title), type};
    m_database.run("INSERT INTO source(id, title, type) VALUES(?, ?, ?)", source.id, source.title,
                   static_cast<int>(type));
    return source;
}

std::vector<CalendarRow> CalendarTable::all(EntityType entityType) const {
    static const auto sql = std::string(calendarsWhere) + "entity_type = ? ORDER BY calendar.key";
    std::vector<CalendarRow> calendars;
    auto row = m_database.query(sql, static_cast<int>(entityType));
    while (row.step())
        calendars.push_back(calendarFrom(row));
    return calendars;
}

std::optional<CalendarRow> CalendarTable::find(std::string_view identifier) const {
    static const auto sql = std::string(calendarsWhere) + "calendar.id = ?";
    return onlyCalendar(m_database.query(sql, identifier));
}

std::optional<CalendarRow> CalendarTable::find(int64_t key) const {
    static const auto sql = std::string(calendarsWhere) + "calendar.key = ?";
    return onlyCalendar(m_database.query(sql, key));
}

CalendarRow CalendarTable::add(EntityType entityType, const CalendarSource& source, std::string_view title,
                               bool takesChanges) {
    const auto identifier = makeUUID();
    m_database.run("INSERT INTO calendar(id, source, entity_type, title, takes_changes) "
                   "VALUES(?, (SELECT key FROM source WHERE id = ?), ?, ?, ?)",
                   identifier, source.id, static_cast<int>(entityType), title, takesChanges);
    return {m_database.lastInsertedKey(),
            {identifier, entityType, std::string(title), source, takesChanges && takesCalendars(source)}};
}

void CalendarTable::rename(const CalendarRow& row, std::string_view title) {
    m_database.run("UPDATE calendar SET title = ? WHERE key = ?", title, row.key);
}

void CalendarTable::remove(const CalendarRow& row) {
    m_database.run("DELETE FROM calendar WHERE key = ?", row.key);
}

std::optional<CalendarRow> CalendarTable::defaultFor(EntityType entityType) const {
    const auto chosen = m_database.value<int64_t>("SELECT calendar FROM default_calendar WHERE entity_type = ?",
                                                  static_cast<int>(entityType));
    if (chosen) return find(*chosen);
    for (auto& row : all(entityType))
        if (row.calendar.allowsContentModifications) return std::move(row);
    return std::nullopt;
}

void CalendarTable::setDefault(const CalendarRow& row) {
    m_database.run("INSERT OR REPLACE INTO default_calendar(entity_type, calendar) VALUES(?, ?)",
                   static_cast<int>(row.calendar.entityType), row.key);
}

CalendarRow CalendarTable::existing(std::string_view identifier, std::optional<EntityType> entityType) const {
    auto row = find(identifier);
    if (!row || (entityType && row->calendar.entityType != *entityType))
        throw PlatformError(fmt::format("There is no {} “{}” on this computer.",
                                        kindOf(entityType.value_or(EntityType::event)), identifier));
    return std::move(*row);
}

CalendarRow CalendarTable::writable(std::string_view identifier, std::optional<EntityType> entityType) const {
    auto row = existing(identifier, entityType);
    requireWritable(row.calendar);
    return row;
}

bool takesCalendars(const CalendarSource& source) {
    return source.type < SourceType::subscribed;
}

void requireWritable(const Calendar& calendar) {
    if (!calendar.allowsContentModifications)
        throw PlatformError(fmt::format("The {} is read-only.", nameOf(calendar)));
}

std::string nameOf(const Calendar& calendar) {
    return fmt::format("{} “{}”", kindOf(calendar.entityType), calendar.title);
}

} // namespace bridge
