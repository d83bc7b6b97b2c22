#pragma once

#include "platform/event_store.h"

#include <algorithm>
#include <map>

namespace bridge {

// Calendars that last as long as the object, without recurring events. Everything lies open to the test.
class MemoryEventStore : public EventStore {
public:
    std::vector<CalendarSource> allSources;
    std::vector<Calendar> allCalendars;
    std::map<EntityType, std::string> defaults; // identifiers
    std::vector<CalendarEvent> allEvents;
    std::vector<Reminder> allReminders;
    Date now{1786706921};

    // For tests that fill it.
    CalendarSource addSource(const std::string& id, const std::string& title, SourceType type = SourceType::local) {
        return allSources.emplace_back(CalendarSource{id, title, type});
    }
    void add(EntityType entityType, const std::string& id, const std::string& title, const CalendarSource& source,
             bool allowsContentModifications = true) {
        allCalendars.push_back({id, entityType, title, source, allowsContentModifications});
    }

    std::string description() const override { return "memory"; }

    Task<std::vector<CalendarSource>> sources() override { co_return allSources; }
    Task<std::vector<Calendar>> calendars(EntityType entityType) override {
        auto found = allCalendars;
        std::erase_if(found, [&](const Calendar& calendar) { return calendar.entityType != entityType; });
        co_return found;
    }
    Task<std::optional<Calendar>> calendar(std::string identifier) override { co_return find(identifier); }
    Task<std::optional<Calendar>> defaultCalendar(EntityType entityType) override {
        const auto known = defaults.find(entityType);
        if (known == defaults.end()) co_return std::nullopt;
        co_return find(known->second);
    }

    Task<Calendar> addCalendar(EntityType entityType, std::string sourceID, std::string title) override {
        const auto source = std::ranges::find(allSources, sourceID, &CalendarSource::id);
        if (source == allSources.end() || source->type >= SourceType::subscribed)
            throw PlatformError("The account takes no calendars.");
        allCalendars.push_back({newIdentifier("calendar"), entityType, title, *source});
        co_return allCalendars.back();
    }
    Task<Calendar> renameCalendar(std::string identifier, std::string title) override {
        auto& calendar = changeable(identifier);
        calendar.title = title;
        co_return calendar;
    }
    Task<> removeCalendar(std::string identifier) override {
        changeable(identifier);
        std::erase_if(allEvents, [&](const CalendarEvent& event) { return event.calendarID == identifier; });
        std::erase_if(allReminders, [&](const Reminder& reminder) { return reminder.listID == identifier; });
        std::erase_if(allCalendars, [&](const Calendar& calendar) { return calendar.id == identifier; });
        co_return;
    }

    Task<std::vector<CalendarEvent>> events(Date start, Date end, std::vector<std::string> calendarIDs,
                                            size_t limit) override {
        std::vector<CalendarEvent> found;
        for (const auto& event : allEvents)
            if (isOneOf(event.calendarID, calendarIDs) && event.startDate < end &&
                (event.endDate > start || event.startDate >= start))
                found.push_back(event);
        std::ranges::stable_sort(found, {}, &CalendarEvent::startDate);
        if (found.size() > limit) found.resize(limit);
        co_return found;
    }
    Task<std::vector<Reminder>> reminders(std::vector<std::string> listIDs) override {
        std::vector<Reminder> found;
        for (const auto& reminder : allReminders)
            if (isOneOf(reminder.listID, listIDs)) found.push_back(reminder);
        co_return found;
    }
    Task<std::optional<CalendarItem>> item(std::string identifier) override {
        for (const auto& event : allEvents)
            if (event.identifier == identifier) co_return event;
        for (const auto& reminder : allReminders)
            if (reminder.identifier == identifier) co_return reminder;
        co_return std::nullopt;
    }

    Task<CalendarEvent> saveEvent(CalendarEvent event) override {
        changeable(event.calendarID, EntityType::event);
        co_return save(allEvents, std::move(event), "event");
    }
    Task<> removeEvent(std::string identifier) override {
        remove(allEvents, identifier);
        co_return;
    }
    Task<Reminder> saveReminder(Reminder reminder) override {
        changeable(reminder.listID, EntityType::reminder);
        reminder.priority = std::clamp<int64_t>(reminder.priority, 0, 9);
        if (!reminder.isCompleted) reminder.completionDate = std::nullopt;
        if (reminder.isCompleted && !reminder.completionDate) reminder.completionDate = now;
        co_return save(allReminders, std::move(reminder), "reminder");
    }
    Task<> removeReminder(std::string identifier) override {
        remove(allReminders, identifier);
        co_return;
    }

private:
    static bool isOneOf(const std::string& id, const std::vector<std::string>& ids) {
        return std::ranges::find(ids, id) != ids.end();
    }
    std::string newIdentifier(const std::string& kind) { return "new-" + kind + "-" + std::to_string(++m_made); }

    std::optional<Calendar> find(const std::string& identifier) const {
        const auto found = std::ranges::find(allCalendars, identifier, &Calendar::id);
        if (found == allCalendars.end()) return std::nullopt;
        return *found;
    }
    Calendar& changeable(const std::string& identifier, std::optional<EntityType> entityType = std::nullopt) {
        const auto found = std::ranges::find(allCalendars, identifier, &Calendar::id);
        if (found == allCalendars.end() || (entityType && found->entityType != *entityType))
            throw PlatformError("The calendar is gone.");
        if (!found->allowsContentModifications) throw PlatformError("The calendar takes no changes.");
        return *found;
    }

    template <typename Item> Item save(std::vector<Item>& items, Item item, const char* kind) {
        if (item.identifier.empty()) {
            item.identifier = newIdentifier(kind);
            item.externalIdentifier = item.identifier + "@memory";
            return items.emplace_back(std::move(item));
        }
        const auto known = std::ranges::find(items, item.identifier, &Item::identifier);
        if (known == items.end()) throw PlatformError("The item is gone.");
        *known = std::move(item);
        return *known;
    }
    template <typename Item> void remove(std::vector<Item>& items, const std::string& identifier) {
        const auto known = std::ranges::find(items, identifier, &Item::identifier);
        if (known == items.end()) throw PlatformError("The item is gone.");
        items.erase(known);
    }

    int m_made = 0;
};

} // namespace bridge
