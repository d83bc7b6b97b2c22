#include "adapters/sqlite/event_table.h"

#include <charconv>
#include <fmt/format.h>

namespace bridge {

void EventTable::add(int64_t item, size_t component, const CalendarEvent& event) {
    m_database.run("INSERT INTO event(item, component, title, location, notes, url, is_all_day, has_rules, alarms) "
                   "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)",
                   item, component, event.title, event.location, event.notes, event.url, event.isAllDay,
                   event.hasRecurrenceRules, alarmText(event.alarms));
}

void EventTable::removeAll(int64_t item) {
    m_database.run("DELETE FROM event WHERE item = ?", item);
}

CalendarEvent EventTable::read(int64_t item, size_t component) const {
    auto row = m_database.query("SELECT item.id, item.uid, calendar.id, event.title, location, notes, url, is_all_day, "
                                "has_rules, alarms FROM event JOIN item ON item.key = event.item "
                                "JOIN calendar ON calendar.key = item.calendar WHERE event.item = ? AND component = ?",
                                item, component);
    if (!row.step())
        throw DatabaseError(DatabaseTrouble::damaged, "The index of the calendars on this computer is damaged.");
    CalendarEvent event;
    event.identifier = row.column<std::string>(0);
    event.externalIdentifier = row.column<std::string>(1);
    event.calendarID = row.column<std::string>(2);
    event.title = row.column<std::optional<std::string>>(3);
    event.location = row.column<std::optional<std::string>>(4);
    event.notes = row.column<std::optional<std::string>>(5);
    event.url = row.column<std::optional<std::string>>(6);
    event.isAllDay = row.column<bool>(7);
    event.hasRecurrenceRules = row.column<bool>(8);
    event.alarms = readAlarms(row.text(9));
    return event;
}

std::string alarmText(const std::vector<Alarm>& alarms) {
    std::string text;
    for (const auto& alarm : alarms) {
        if (!text.empty()) text += ' ';
        if (const auto* moment = std::get_if<Date>(&alarm.trigger))
            text += fmt::format("@{}", moment->secondsSince1970);
        else
            text += fmt::format("{}", std::get<double>(alarm.trigger));
    }
    return text;
}

std::vector<Alarm> readAlarms(std::string_view text) {
    std::vector<Alarm> alarms;
    const char* next = text.data();
    const char* end = next + text.size();
    while (next != end) {
        if (*next == ' ') ++next;
        Alarm alarm;
        if (next != end && *next == '@') {
            Date moment;
            next = std::from_chars(next + 1, end, moment.secondsSince1970).ptr;
            alarm.trigger = moment;
        } else {
            double seconds = 0;
            const auto read = std::from_chars(next, end, seconds);
            if (read.ec != std::errc()) return alarms;
            next = read.ptr;
            alarm.trigger = seconds;
        }
        alarms.push_back(alarm);
    }
    return alarms;
}

std::string occurrenceIdentifier(std::string_view item, std::string_view recurrenceID) {
    if (recurrenceID.empty()) return std::string(item);
    return fmt::format("{}/{}", item, recurrenceID);
}

} // namespace bridge
