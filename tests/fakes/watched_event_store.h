#pragma once

#include "platform/event_store.h"

namespace bridge {

// An event store whose calls a test steps into, before and after they reach the real one.
class WatchedEventStore : public EventStore {
public:
    // `about` is the identifier that the call is given: of the item, the calendar or the account; a search has none. A
    // save is about the calendar that the item goes to.
    struct Call {
        std::string name;
        std::string about;
        bool operator==(const Call&) const = default;
    };

    explicit WatchedEventStore(EventStore& real) : m_real(real) {}

    std::string description() const override { return m_real.description(); }

    Task<std::vector<CalendarSource>> sources() override { return watch({"sources", ""}, m_real.sources()); }
    Task<std::vector<Calendar>> calendars(EntityType entityType) override {
        return watch({"calendars", ""}, m_real.calendars(entityType));
    }
    Task<std::optional<Calendar>> calendar(std::string identifier) override {
        return watch({"calendar", identifier}, m_real.calendar(identifier));
    }
    Task<std::optional<Calendar>> defaultCalendar(EntityType entityType) override {
        return watch({"defaultCalendar", ""}, m_real.defaultCalendar(entityType));
    }
    Task<Calendar> addCalendar(EntityType entityType, std::string sourceID, std::string title) override {
        return watch({"addCalendar", sourceID}, m_real.addCalendar(entityType, sourceID, std::move(title)));
    }
    Task<Calendar> renameCalendar(std::string identifier, std::string title) override {
        return watch({"renameCalendar", identifier}, m_real.renameCalendar(identifier, std::move(title)));
    }
    Task<> removeCalendar(std::string identifier) override {
        return watch({"removeCalendar", identifier}, m_real.removeCalendar(identifier));
    }
    Task<std::vector<CalendarEvent>> events(Date start, Date end, std::vector<std::string> calendarIDs,
                                            size_t limit) override {
        return watch({"events", ""}, m_real.events(start, end, std::move(calendarIDs), limit));
    }
    Task<std::vector<Reminder>> reminders(std::vector<std::string> listIDs) override {
        return watch({"reminders", ""}, m_real.reminders(std::move(listIDs)));
    }
    Task<std::optional<CalendarItem>> item(std::string identifier) override {
        return watch({"item", identifier}, m_real.item(identifier));
    }
    Task<CalendarEvent> saveEvent(CalendarEvent event) override {
        Call call{"saveEvent", event.calendarID};
        return watch(std::move(call), m_real.saveEvent(std::move(event)));
    }
    Task<> removeEvent(std::string identifier) override {
        return watch({"removeEvent", identifier}, m_real.removeEvent(identifier));
    }
    Task<Reminder> saveReminder(Reminder reminder) override {
        Call call{"saveReminder", reminder.listID};
        return watch(std::move(call), m_real.saveReminder(std::move(reminder)));
    }
    Task<> removeReminder(std::string identifier) override {
        return watch({"removeReminder", identifier}, m_real.removeReminder(identifier));
    }

protected:
    virtual Task<> before(Call) { co_return; }
    virtual Task<> after(Call) { co_return; }

private:
    template <typename T> Task<T> watch(Call call, Task<T> real) {
        co_await before(call);
        if constexpr (std::is_void_v<T>) {
            co_await std::move(real);
            co_await after(call);
        } else {
            auto result = co_await std::move(real);
            co_await after(call);
            co_return result;
        }
    }

    EventStore& m_real;
};

} // namespace bridge
