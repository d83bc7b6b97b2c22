#include "adapters/sqlite/reminder_table.h"

namespace bridge {

namespace {

constexpr std::string_view remindersWhere =
    "SELECT item.id, item.uid, calendar.id, reminder.title, notes, due_year, due_month, due_day, due_hour, due_minute, "
    "due_second, due_zone, is_completed, completed_at, priority "
    "FROM reminder JOIN item ON item.key = reminder.item JOIN calendar ON calendar.key = reminder.calendar WHERE ";

std::optional<DateComponents> dueFrom(const Statement& row) {
    if (row.isNull(5)) return std::nullopt;
    DateComponents due;
    due.year = row.column<int>(5);
    due.month = row.column<int>(6);
    due.day = row.column<int>(7);
    due.hour = row.column<std::optional<int>>(8);
    due.minute = row.column<std::optional<int>>(9);
    due.second = row.column<std::optional<int>>(10);
    due.timeZone = row.column<std::optional<std::string>>(11);
    return due;
}

Reminder reminderFrom(const Statement& row) {
    Reminder reminder;
    reminder.identifier = row.column<std::string>(0);
    reminder.externalIdentifier = row.column<std::string>(1);
    reminder.listID = row.column<std::string>(2);
    reminder.title = row.column<std::optional<std::string>>(3);
    reminder.notes = row.column<std::optional<std::string>>(4);
    reminder.dueDate = dueFrom(row);
    reminder.isCompleted = row.column<bool>(12);
    if (!row.isNull(13)) reminder.completionDate = Date{row.column<int64_t>(13)};
    reminder.priority = row.column<int64_t>(14);
    return reminder;
}

} // namespace

void ReminderTable::add(int64_t calendar, int64_t item, const Reminder& reminder) {
    const auto due = reminder.dueDate.value_or(DateComponents{});
    const auto ofDue = [&](int part) { return reminder.dueDate ? std::optional(part) : std::nullopt; };
    const auto completed =
        reminder.completionDate ? std::optional(reminder.completionDate->secondsSince1970) : std::nullopt;
    m_database.run(
        "INSERT INTO reminder(item, calendar, title, notes, due_year, due_month, due_day, due_hour, due_minute, "
        "due_second, due_zone, is_completed, completed_at, priority) "
        "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
        item, calendar, reminder.title, reminder.notes, ofDue(due.year), ofDue(due.month), ofDue(due.day), due.hour,
        due.minute, due.second, due.timeZone, reminder.isCompleted, completed, reminder.priority);
}

void ReminderTable::remove(int64_t item) {
    m_database.run("DELETE FROM reminder WHERE item = ?", item);
}

void ReminderTable::readAll(int64_t calendar, std::vector<Reminder>& reminders) const {
    static const auto sql = std::string(remindersWhere) + "reminder.calendar = ? ORDER BY reminder.item";
    auto row = m_database.query(sql, calendar);
    while (row.step())
        reminders.push_back(reminderFrom(row));
}

Reminder ReminderTable::read(int64_t item) const {
    static const auto sql = std::string(remindersWhere) + "reminder.item = ?";
    auto row = m_database.query(sql, item);
    if (!row.step())
        throw DatabaseError(DatabaseTrouble::damaged, "The index of the calendars on this computer is damaged.");
    return reminderFrom(row);
}

} // namespace bridge
