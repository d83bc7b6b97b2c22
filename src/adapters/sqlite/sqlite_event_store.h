#pragma once

#include "adapters/ical/calendar_object.h"
#include "adapters/sqlite/store_file.h"
#include "platform/clock.h"
#include "platform/event_store.h"

#include <memory>

namespace bridge {

struct NewCalendar {
    EntityType entityType = EntityType::event;
    std::string sourceID;
    std::string title;
    bool allowsContentModifications = true; // for calendars of accounts that take calendars
};

struct FilledCalendar {
    NewCalendar calendar;
    std::vector<CalendarObject> objects; // all of its entity type, each of a UID of its own
};

// Calendars in one file of this computer, for a machine without a calendar service. Each call completes inline; another
// process may read and write the same file meanwhile.
//
// Nothing is opened before the first call. When the file can't be opened, is held by another program or the disk is
// full, the call throws and the next one tries again. A damaged file is kept under another name beside its place, and
// every call says so until the program starts anew; then the store begins empty. A file that is gone fails every call
// until it is back; one that was exchanged is opened afresh. The file of a newer version is refused and not touched.
class SqliteEventStore : public EventStore {
public:
    // `path` is absolute; missing folders are made, for the user alone.
    SqliteEventStore(std::string path, const Clock& clock, DatabaseOptions options = {});
    ~SqliteEventStore() override;

    std::string description() const override { return "this computer"; }
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

    // For whoever fills the store from outside. What an account's provider says is not the user's change, so these
    // write read-only calendars and their accounts too. Each is one transaction, whole or not at all.

    // Answers with the identifier.
    std::string addSource(std::string_view title, SourceType type);
    // With these objects in it, all of its entity type and each of a UID of its own.
    Calendar importCalendar(const NewCalendar& calendar, const std::vector<CalendarObject>& objects);
    // Several, all or none.
    std::vector<Calendar> importCalendars(const std::vector<FilledCalendar>& calendars);
    void importItems(const std::string& calendarID, const std::vector<CalendarObject>& objects);
    // Throws when the calendar takes no items.
    void setDefaultCalendar(const std::string& identifier);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace bridge
