#pragma once

#include "adapters/eds/eds_patience.h"
#include "base/event_loop.h"
#include "platform/event_store.h"

#include <memory>

namespace bridge {

class EdsCalendars;
struct SourceList;

// Evolution Data Server, which keeps the calendars and task lists of GNOME and its accounts (over D-Bus, by libecal).
// Accounts are the parents of the sources that are switched on; identifiers are those of the sources.
//
// Each calendar has a thread of its own; one that does not answer costs the calls that ask it their time and no others.
// Every call asks the service as it is at that moment: one that was restarted is found again, one that is gone is an
// error.
class EdsEventStore : public EventStore {
public:
    // Nothing when there is no session bus or the service is not installed. One that is installed and does not start is
    // no reason for another store: its calls fail. `loop` must outlive the store, and the store its tasks.
    static Task<std::unique_ptr<EdsEventStore>> open(EventLoop& loop, EdsPatience patience = {});
    ~EdsEventStore() override;

    std::string description() const override { return "Evolution Data Server"; }
    Task<std::vector<CalendarSource>> sources() override;
    Task<std::vector<Calendar>> calendars(EntityType entityType) override;
    Task<std::optional<Calendar>> calendar(std::string identifier) override;
    Task<std::optional<Calendar>> defaultCalendar(EntityType entityType) override;
    Task<Calendar> addCalendar(EntityType entityType, std::string sourceID, std::string title) override;
    Task<Calendar> renameCalendar(std::string identifier, std::string title) override;
    Task<> removeCalendar(std::string identifier) override;
    Task<std::vector<CalendarEvent>> events(Date start, Date end, std::vector<std::string> calendarIDs,
                                            size_t limit) override;
    Task<std::vector<Reminder>> reminders(std::vector<std::string> listIDs) override;
    Task<std::optional<CalendarItem>> item(std::string identifier) override;
    Task<CalendarEvent> saveEvent(CalendarEvent event) override;
    Task<> removeEvent(std::string identifier) override;
    Task<Reminder> saveReminder(Reminder reminder) override;
    Task<> removeReminder(std::string identifier) override;

private:
    explicit EdsEventStore(std::unique_ptr<EdsCalendars> calendars);
    // The list is the awaiting task's.
    Task<std::optional<Calendar>> describe(const SourceList& list, std::string identifier);

    std::unique_ptr<EdsCalendars> m_calendars;
};

} // namespace bridge
