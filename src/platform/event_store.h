#pragma once

#include "base/date.h"
#include "base/date_components.h"
#include "base/platform_error.h"
#include "base/task.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace bridge {

// What a calendar holds. A reminder list is a calendar of reminders.
enum class EntityType { event, reminder };

// The kind of an account, by the platforms' numbers. From `subscribed` on nothing can be added to it.
enum class SourceType { local = 0, exchange = 1, calDAV = 2, cloud = 3, subscribed = 4, birthdays = 5 };

// An account that can hold calendars.
struct CalendarSource {
    std::string id;
    std::string title;
    SourceType type = SourceType::local;
    bool operator==(const CalendarSource&) const = default;
};

struct Calendar {
    std::string id; // the store's; opaque, lasting, the same after a restart
    EntityType entityType = EntityType::event;
    std::string title;
    CalendarSource source;
    bool allowsContentModifications = true; // whether items may be added or changed
    bool operator==(const Calendar&) const = default;
};

// Either so many seconds after the start of the item (before it when negative), or at a moment.
struct Alarm {
    std::variant<double, Date> trigger;
    bool operator==(const Alarm&) const = default;
};

// One event, or one occurrence of a series. Texts are UTF-8 and may be of any length; an empty optional is a property
// that the item hasn't got.
struct CalendarEvent {
    // Opaque, lasting. Each occurrence of a series has one of its own, which stays when that occurrence is moved in
    // time.
    std::string identifier;
    // The same in every copy of the calendar and for all occurrences of a series: the UID (RFC 5545, 3.8.4.7).
    std::optional<std::string> externalIdentifier = std::nullopt;
    std::string calendarID;
    std::optional<std::string> title = std::nullopt;
    // All-day events begin and end at midnight of the user's zone; the end is the midnight after the last day.
    Date startDate;
    Date endDate;
    bool isAllDay = false;
    std::optional<std::string> location = std::nullopt;
    std::optional<std::string> notes = std::nullopt;
    std::optional<std::string> url = std::nullopt;
    std::vector<Alarm> alarms; // in the store's order
    bool hasRecurrenceRules = false;
    bool operator==(const CalendarEvent&) const = default;
};

struct Reminder {
    std::string identifier;
    std::optional<std::string> externalIdentifier = std::nullopt;
    std::string listID;
    std::optional<std::string> title = std::nullopt;
    std::optional<std::string> notes = std::nullopt;
    std::optional<DateComponents> dueDate = std::nullopt;
    bool isCompleted = false;
    std::optional<Date> completionDate = std::nullopt; // the store's to set
    int64_t priority = 0;               // 0 none, 1 highest ... 9 lowest
    bool operator==(const Reminder&) const = default;
};

using CalendarItem = std::variant<CalendarEvent, Reminder>;

// The platform's store of calendars, events, reminder lists and reminders. It keeps no rights: who may see what is
// decided above it.
//
// Called on the main thread; each call is a task, since an account may be another machine. A store that fails, or whose
// account does not answer in its time, throws PlatformError in its own words; an empty answer means that there is
// nothing. Every call reads afresh, and what a finished call has written is found by the next one, in this process and
// after a crash. A call that throws has changed nothing. A task that is dropped has changed all or nothing.
class EventStore {
public:
    virtual ~EventStore() = default;

    // For the log and the dashboard: "Evolution Data Server", "this computer".
    virtual std::string description() const = 0;

    // Every account, also those that can't be written, in the store's order.
    virtual Task<std::vector<CalendarSource>> sources() = 0;

    // Every calendar for that kind of item, in the store's order. An account that is slow to answer does not hold up
    // the listing: what is not known in time about its calendars is answered as it was known last, or as read-only.
    virtual Task<std::vector<Calendar>> calendars(EntityType entityType) = 0;

    // Of either kind; nothing when there is none with this identifier.
    virtual Task<std::optional<Calendar>> calendar(std::string identifier) = 0;

    // Where the user wants new items to go; nothing when nothing can take them.
    virtual Task<std::optional<Calendar>> defaultCalendar(EntityType entityType) = 0;

    // Adds a calendar to the account with this identifier and answers with it as saved. Throws when there is no such
    // account or it takes no calendars.
    virtual Task<Calendar> addCalendar(EntityType entityType, std::string sourceID, std::string title) = 0;

    // Answers with the calendar as saved. Throws when it is gone or can't be changed.
    virtual Task<Calendar> renameCalendar(std::string identifier, std::string title) = 0;

    // With everything in it. Throws when it is gone or can't be changed.
    virtual Task<> removeCalendar(std::string identifier) = 0;

    // The events of these calendars that share some time with start ..< end, as occurrences: a series comes once for
    // each time it happens, with exceptions left out and moved occurrences where they were moved to. An event without a
    // duration counts as the moment of its start. Ordered by start date, equal ones in an order that stays. Not more
    // than the first `limit`. Throws when one of the calendars can't be read or does not exist.
    virtual Task<std::vector<CalendarEvent>> events(Date start, Date end, std::vector<std::string> calendarIDs,
                                                    size_t limit) = 0;

    // Every reminder of these lists, completed or not; a repeating one once, with its present due date. In an order
    // that stays. Throws when one of the lists can't be read or does not exist.
    virtual Task<std::vector<Reminder>> reminders(std::vector<std::string> listIDs) = 0;

    // The event or reminder; nothing when there is none, whatever bytes the identifier has. What names a whole series
    // finds its first occurrence.
    virtual Task<std::optional<CalendarItem>> item(std::string identifier) = 0;

    // Adds the event when its identifier is empty, with a new external identifier. Otherwise writes those fields that
    // differ from what is stored, and leaves everything else of the item, also what has no field here, as it is. Of a
    // series it writes that occurrence alone. A calendarID other than the stored one moves the event, an occurrence
    // out of its series. A changed start and end keep the zone that they were given in; a new event is in the user's.
    //
    // Answers with the event as saved, which may have another identifier after a move. Throws when the event or its
    // calendar is gone, when a calendar takes no changes, when the store can't hold a value (an alarm centuries away).
    virtual Task<CalendarEvent> saveEvent(CalendarEvent event) = 0;

    // Of a series, that occurrence alone. Throws when it is gone or its calendar takes no changes.
    virtual Task<> removeEvent(std::string identifier) = 0;

    // As saveEvent(). Completing sets the completion date to now and taking it back removes it; completing a repeating
    // reminder moves it on to its next due date instead, as long as there is one. A negative priority is stored as 0,
    // one above 9 as 9.
    virtual Task<Reminder> saveReminder(Reminder reminder) = 0;

    virtual Task<> removeReminder(std::string identifier) = 0;
};

} // namespace bridge
