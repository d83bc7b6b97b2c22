#pragma once

#include "adapters/ical/ical_pointer.h"
#include "platform/event_store.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// A moment of an event. A floating one, and a day, is a wall-clock time that each user has in their own zone: `seconds`
// then counts as if that clock showed UTC.
struct EventTime {
    int64_t seconds = 0;
    bool isFloating = false;

    Date date() const; // in the user's zone where it is floating
    bool operator==(const EventTime&) const = default;
};

// One time that an event happens.
struct Occurrence {
    // Which one of its series: the value of RECURRENCE-ID (RFC 5545, 3.8.4.4) in the form that the series' DTSTART has,
    // 20260814, 20260814T090000 or 20260814T090000Z. Empty for an event that does not repeat.
    std::string recurrenceID;
    EventTime start;
    EventTime end;        // never before `start`
    size_t component = 0; // which of the object's components describes it: 0 is the master, then the exceptions
};

struct FoundOccurrences {
    std::vector<Occurrence> occurrences;
    // Whether the bound on the work came before the end of the time, so that there may be more.
    bool isCutShort = false;
};

// When all occurrences of an event happen; no end for a rule without end.
struct EventSpan {
    EventTime start;
    std::optional<EventTime> end;
};

// The components of one UID: an event with the exceptions to its series, or a task; a calendar object resource as
// RFC 4791, 4.1 calls it, with the definitions of the time zones that only it knows. Everything that is known about
// recurrence, zones and properties of iCalendar (RFC 5545) is behind this class. Properties that nothing here knows
// stay as they are; of the components inside an item only alarms do, since libical drops the others.
//
// An exception stands for its own occurrence alone, also one with RANGE=THISANDFUTURE. Rules are followed up to
// 2582, libical's last year, and those of a series that starts after 2182 for at least 400 years. Texts
// are stored without control characters, and an empty one not at all.
//
// It has no thread of its own: each object is used by one thread at a time. Throws PlatformError for text that is no
// such object and for values that iCalendar can't hold; the object is unchanged then.
class CalendarObject {
public:
    // `text` is a VCALENDAR with one or more VEVENT, or VTODO, of one UID. Its VTIMEZONEs count for zones that the
    // system does not know under their names.
    static CalendarObject parse(std::string_view text);
    // With a new UID. The identifiers in the item do not matter.
    static CalendarObject create(const CalendarEvent& event, Date now);
    static CalendarObject create(const Reminder& reminder, Date now);

    CalendarObject(CalendarObject&&) noexcept;
    CalendarObject& operator=(CalendarObject&&) noexcept;
    ~CalendarObject();

    std::string text() const; // a VCALENDAR that parse() takes
    // The VEVENT or VTODO alone, as Occurrence::component counts them.
    std::string componentText(size_t component) const;
    size_t componentCount() const;

    EntityType entityType() const;
    const std::string& uid() const;
    bool isRecurring() const; // has a rule, or further dates, or exceptions

    // Events.

    // Those that share some time with from ..< to (an occurrence without a duration counts as its start), in order of
    // start, at most `limit`. Cancelled ones are left out. The work is bounded also for a rule without end: WorkLimit
    // (recurrence_rule.h) says how far it goes.
    std::vector<Occurrence> occurrences(Date from, Date to, size_t limit) const;
    FoundOccurrences findOccurrences(Date from, Date to, size_t limit) const;
    // Nothing when no occurrence has this recurrence id; "" is the first one, or the event that does not repeat.
    std::optional<Occurrence> occurrence(std::string_view recurrenceID) const;
    // Nothing when there is no occurrence at all.
    std::optional<EventSpan> span() const;
    // Everything but identifier and calendarID, which are the store's.
    CalendarEvent describe(const Occurrence& occurrence) const;

    // Writes the fields in which `event` differs from describe(occurrence). In a series that makes or changes the
    // exception for this occurrence and leaves all others. Answers which component now describes it.
    size_t change(const Occurrence& occurrence, const CalendarEvent& event, Date now);
    // Takes one occurrence out of the series. False when none is left, which is so at once for a single event: then the
    // object is to be deleted whole.
    bool remove(const Occurrence& occurrence, Date now);
    // The occurrence as an event of its own that does not repeat, with a new UID.
    CalendarObject detached(const Occurrence& occurrence) const;

    // Tasks.

    Reminder describeReminder() const;
    // As EventStore::saveReminder() says, repetition included.
    void change(const Reminder& reminder, Date now);

private:
    struct State;
    explicit CalendarObject(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};

} // namespace bridge
