#include "adapters/sqlite/item_access.h"

#include "adapters/sqlite/event_table.h"
#include "adapters/sqlite/reminder_table.h"

#include <fmt/format.h>

namespace bridge {

namespace {

struct ItemName {
    std::string_view item;
    std::string_view recurrenceID;
};

// Nothing for an identifier that ends with its slash, so that each occurrence has but one.
std::optional<ItemName> split(std::string_view identifier) {
    const auto slash = identifier.find('/');
    if (slash == std::string_view::npos) return ItemName{identifier, {}};
    if (slash + 1 == identifier.size()) return std::nullopt;
    return ItemName{identifier.substr(0, slash), identifier.substr(slash + 1)};
}

CalendarEvent describe(const ItemRow& row, const CalendarObject& object, const Occurrence& occurrence) {
    auto event = object.describe(occurrence);
    event.identifier = occurrenceIdentifier(row.id, occurrence.recurrenceID);
    event.calendarID = row.calendar.calendar.id;
    return event;
}

CalendarEvent describeFirst(const ItemRow& row, const CalendarObject& object) {
    const auto occurrence = object.occurrence("");
    if (!occurrence) throw PlatformError("The event never happens.");
    return describe(row, object, *occurrence);
}

} // namespace

std::optional<CalendarItem> ItemAccess::read(std::string_view identifier) const {
    const auto name = split(identifier);
    const auto row = name ? m_items.find(name->item) : std::nullopt;
    if (row && row->entityType() == EntityType::reminder) {
        if (!name->recurrenceID.empty()) return std::nullopt;
        return ReminderTable(m_database).read(row->key);
    }
    const auto found = findEvent(identifier);
    if (!found) return std::nullopt;
    return describe(found->row, found->object, found->occurrence);
}

CalendarEvent ItemAccess::create(const CalendarEvent& event) {
    const auto calendar = CalendarTable(m_database).writable(event.calendarID, EntityType::event);
    const auto object = CalendarObject::create(event, m_now);
    return describeFirst(m_items.add(calendar, object), object);
}

CalendarEvent ItemAccess::change(const CalendarEvent& event) {
    auto found = writableEvent(event.identifier);
    const auto target = CalendarTable(m_database).writable(event.calendarID, EntityType::event);
    const bool isMoved = target.key != found.row.calendar.key;
    if (isMoved && found.object.isRecurring()) return moveOutOfSeries(std::move(found), event, target);

    found.object.change(found.occurrence, event, m_now);
    found.row.calendar = target;
    m_items.write(found.row, found.object);
    const auto changed = found.object.occurrence(found.occurrence.recurrenceID);
    if (!changed) throw PlatformError("The event could not be changed.");
    return describe(found.row, found.object, *changed);
}

CalendarEvent ItemAccess::moveOutOfSeries(Found found, const CalendarEvent& event, const CalendarRow& target) {
    auto alone = found.object.detached(found.occurrence);
    const auto occurrence = alone.occurrence("");
    if (!occurrence) throw PlatformError("The event could not be moved.");
    alone.change(*occurrence, event, m_now);
    removeOccurrence(found);
    return describeFirst(m_items.add(target, alone), alone);
}

void ItemAccess::removeEvent(std::string_view identifier) {
    auto found = writableEvent(identifier);
    removeOccurrence(found);
}

void ItemAccess::removeOccurrence(Found& found) {
    if (found.object.remove(found.occurrence, m_now))
        m_items.write(found.row, found.object);
    else
        m_items.remove(found.row);
}

Reminder ItemAccess::create(const Reminder& reminder) {
    const auto list = CalendarTable(m_database).writable(reminder.listID, EntityType::reminder);
    const auto row = m_items.add(list, CalendarObject::create(reminder, m_now));
    return ReminderTable(m_database).read(row.key);
}

Reminder ItemAccess::change(const Reminder& reminder) {
    auto row = writableReminder(reminder.identifier);
    row.calendar = CalendarTable(m_database).writable(reminder.listID, EntityType::reminder);
    auto object = m_items.object(row.key);
    object.change(reminder, m_now);
    m_items.write(row, object);
    return ReminderTable(m_database).read(row.key);
}

void ItemAccess::removeReminder(std::string_view identifier) {
    m_items.remove(writableReminder(identifier));
}

void ItemAccess::add(const CalendarRow& calendar, const std::vector<CalendarObject>& objects) {
    for (const auto& object : objects) {
        if (object.entityType() != calendar.calendar.entityType)
            throw PlatformError(fmt::format("The {} takes no items of that kind.", nameOf(calendar.calendar)));
        m_items.add(calendar, object);
    }
}

std::optional<ItemAccess::Found> ItemAccess::findEvent(std::string_view identifier) const {
    const auto name = split(identifier);
    auto row = name ? m_items.find(name->item) : std::nullopt;
    if (!row || row->entityType() != EntityType::event) return std::nullopt;
    auto object = m_items.object(row->key);
    if (!object.isRecurring() && !name->recurrenceID.empty()) return std::nullopt;
    auto occurrence = object.occurrence(name->recurrenceID);
    if (!occurrence) return std::nullopt;
    return Found{std::move(*row), std::move(object), std::move(*occurrence)};
}

ItemAccess::Found ItemAccess::writableEvent(std::string_view identifier) const {
    auto found = findEvent(identifier);
    if (!found) throw PlatformError("The event is not there any more.");
    requireWritable(found->row.calendar.calendar);
    return std::move(*found);
}

ItemRow ItemAccess::writableReminder(std::string_view identifier) const {
    auto row = m_items.find(identifier);
    if (!row || row->entityType() != EntityType::reminder) throw PlatformError("The reminder is not there any more.");
    requireWritable(row->calendar.calendar);
    return std::move(*row);
}

} // namespace bridge
