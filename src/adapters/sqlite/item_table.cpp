#include "adapters/sqlite/item_table.h"

#include "adapters/sqlite/event_table.h"
#include "adapters/sqlite/reminder_table.h"
#include "base/uuid.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>

namespace bridge {

namespace {

constexpr int64_t day = 86400;

PlatformError alreadyThere(const Calendar& calendar) {
    return PlatformError(fmt::format("The {} has this item already.", nameOf(calendar)));
}

template <typename Write> void withoutConflict(const Calendar& calendar, Write write) {
    try {
        write();
    } catch (const DatabaseError& error) {
        if (error.trouble() != DatabaseTrouble::conflict) throw;
        throw alreadyThere(calendar);
    }
}

} // namespace

std::optional<ItemRow> ItemTable::find(std::string_view identifier) const {
    auto row = m_database.query("SELECT key, id, calendar FROM item WHERE id = ?", identifier);
    if (!row.step()) return std::nullopt;
    auto calendar = CalendarTable(m_database).find(row.column<int64_t>(2));
    if (!calendar) return std::nullopt;
    return ItemRow{row.column<int64_t>(0), row.column<std::string>(1), std::move(*calendar)};
}

CalendarObject ItemTable::object(int64_t item) const {
    const auto text = m_database.value<std::string>("SELECT text FROM item WHERE key = ?", item);
    return CalendarObject::parse(text.value_or(""));
}

ItemRow ItemTable::add(const CalendarRow& calendar, const CalendarObject& object) {
    ItemRow row{0, makeUUID(), calendar};
    withoutConflict(calendar.calendar, [&] {
        m_database.run("INSERT INTO item(id, calendar, uid, text) VALUES(?, ?, ?, ?)", row.id, calendar.key,
                       object.uid(), object.text());
    });
    row.key = m_database.lastInsertedKey();
    const auto coverage = writeIndex(calendar.key, row.key, object);
    if (coverage.from || coverage.until) writeCoverage(row.key, coverage);
    return row;
}

void ItemTable::write(const ItemRow& row, const CalendarObject& object) {
    withoutConflict(row.calendar.calendar, [&] {
        m_database.run("UPDATE item SET calendar = ?, uid = ?, text = ? WHERE key = ?", row.calendar.key, object.uid(),
                       object.text(), row.key);
    });
    removeIndex(row.key);
    writeCoverage(row.key, writeIndex(row.calendar.key, row.key, object));
}

void ItemTable::remove(const ItemRow& row) {
    m_database.run("DELETE FROM item WHERE key = ?", row.key);
}

std::vector<OpenSeries> ItemTable::openSeries(int64_t calendar, Date start, Date end) const {
    std::vector<OpenSeries> series;
    // A day more on either side, since coverage counts floating times as their clock does.
    auto row = m_database.query("SELECT key, id, covered_from, covered_until FROM item "
                                "WHERE calendar = ?1 AND covered_until < ?2 UNION "
                                "SELECT key, id, covered_from, covered_until FROM item "
                                "WHERE calendar = ?1 AND covered_from > ?3",
                                calendar, end.secondsSince1970 + day, start.secondsSince1970 - day);
    while (row.step())
        series.push_back({row.column<int64_t>(0),
                          row.column<std::string>(1),
                          {row.column<std::optional<int64_t>>(2), row.column<std::optional<int64_t>>(3)}});
    return series;
}

void ItemTable::extendCoverage() {
    std::vector<std::pair<int64_t, int64_t>> due;
    auto row = m_database.query("SELECT key, calendar FROM item WHERE extend_at <= ?", m_now.secondsSince1970);
    while (row.step())
        due.emplace_back(row.column<int64_t>(0), row.column<int64_t>(1));
    for (const auto& [item, calendar] : due) {
        std::optional<CalendarObject> series;
        try {
            series = object(item);
        } catch (const DatabaseError&) {
            throw;
        } catch (const PlatformError&) {
            // What can't be understood says so when it is asked for; it keeps nobody from the other items.
            continue;
        }
        removeIndex(item);
        writeCoverage(item, writeIndex(calendar, item, *series));
    }
}

Coverage ItemTable::writeIndex(int64_t calendar, int64_t item, const CalendarObject& object) {
    if (object.entityType() == EntityType::reminder) {
        ReminderTable(m_database).add(calendar, item, object.describeReminder());
        return {};
    }
    OccurrenceTable occurrences(m_database);
    EventTable events(m_database);
    std::set<size_t> described;
    const auto covered = coveredOccurrences(object, m_now);
    for (const auto& occurrence : covered.occurrences) {
        occurrences.add(calendar, item, occurrence);
        if (described.insert(occurrence.component).second)
            events.add(item, occurrence.component, object.describe(occurrence));
    }
    return covered.coverage;
}

void ItemTable::writeCoverage(int64_t item, const Coverage& coverage) {
    // When a third of the time that lies ahead has passed; at most daily for a series so dense that little does.
    std::optional<int64_t> extendAt;
    if (coverage.until)
        extendAt = m_now.secondsSince1970 + std::max((*coverage.until - m_now.secondsSince1970) / 3, day);
    m_database.run("UPDATE item SET covered_from = ?, covered_until = ?, extend_at = ? WHERE key = ?", coverage.from,
                   coverage.until, extendAt, item);
}

void ItemTable::removeIndex(int64_t item) {
    OccurrenceTable(m_database).removeAll(item);
    EventTable(m_database).removeAll(item);
    ReminderTable(m_database).remove(item);
}

} // namespace bridge
