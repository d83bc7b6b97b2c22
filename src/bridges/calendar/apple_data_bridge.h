#pragma once

#include "bridges/calendar/authorized_items.h"
#include "bridges/calendar/reminder_requests.h"
#include "bridges/calendar/reminder_results.h"

namespace bridge {

// Calendars and events, reminder lists and reminders: those that the user allowed, under the permission that the
// platform gives. Every operation reads both afresh, makes its checks in one order and changes nothing unless all have
// passed. Changes of one item are made one after the other, so that none is lost; nothing else waits for them.
//
// Besides what is said below each throws AppleBridgeError permissionDenied without full access, resourceAccessDenied
// for what is not on the allow-list, calendarNotFound, listNotFound, eventNotFound and reminderNotFound for an unknown
// identifier, malformedRequest for a title that is empty or too long; and PlatformError as the store reports it.
// Main thread only. The bridge outlives its tasks.
class AppleDataBridge {
public:
    // All of these outlive the bridge.
    AppleDataBridge(EventStore& store, Authorization& authorization, UserDefaults& defaults);

    const AppleResourceAccessPolicy& accessPolicy() const { return m_accessPolicy; }

    // Ask the user where that is open, and end well only when full access is granted.
    Task<> requestCalendarAccess() { return m_calendars.requestAccess(); }
    Task<> requestRemindersAccess() { return m_reminderLists.requestAccess(); }

    // For the user: everything that there is, and what of it the agent may touch. Setting all forgets identifiers that
    // the store no longer knows.
    Task<std::vector<AppleListDescriptor>> listCalendars() { return m_calendars.list(); }
    Task<std::vector<AppleListDescriptor>> listReminderLists() { return m_reminderLists.list(); }
    Task<> setCalendar(std::string identifier, bool authorized);
    Task<> setReminderList(std::string identifier, bool authorized);
    Task<> setAllCalendars(bool authorized) { return m_calendars.setAllAuthorized(authorized); }
    Task<> setAllReminderLists(bool authorized) { return m_reminderLists.setAllAuthorized(authorized); }
    // Never throw: what can't be listed counts as nothing.
    Task<BridgeResourceAccessSnapshot> calendarResources() { return m_calendars.resources(); }
    Task<BridgeResourceAccessSnapshot> reminderListResources() { return m_reminderLists.resources(); }

    // By the account's title, then their own.
    Task<std::vector<AppleListDescriptor>> authorizedCalendars() { return m_calendars.authorized(); }
    Task<std::vector<AppleListDescriptor>> authorizedReminderLists() { return m_reminderLists.authorized(); }
    // Accounts that can take a new calendar or list, by title.
    Task<std::vector<AppleSourceDescriptor>> listCalendarSources() { return m_calendars.sources(); }
    Task<std::vector<AppleSourceDescriptor>> listReminderSources() { return m_reminderLists.sources(); }
    // The new one is allowed at once. Throw AppleBridgeError resourceNotFound for an account that can't take it,
    // operationFailed when none is named and there is none.
    Task<AppleListDescriptor> createCalendar(CreateAppleListRequest request);
    Task<AppleListDescriptor> createReminderList(CreateAppleListRequest request);
    Task<AppleListDescriptor> updateCalendar(UpdateAppleListRequest request);
    Task<AppleListDescriptor> updateReminderList(UpdateAppleListRequest request);
    // With everything in it.
    Task<> deleteCalendar(std::string identifier);
    Task<> deleteReminderList(std::string identifier);

    // Occurrences in the range, earliest start first. Throws AppleBridgeError invalidDateRange unless the end is later
    // than the start.
    Task<std::vector<CalendarEventDescriptor>> searchEvents(SearchEventsPayload request);
    // Both throw invalidDateRange unless the event ends later than it starts. Without a calendar named the new event
    // goes into the default calendar, or the only one that takes it; malformedRequest when that settles nothing.
    Task<CalendarEventDescriptor> createEvent(CreateCalendarEventRequest request);
    Task<CalendarEventDescriptor> updateEvent(UpdateCalendarEventRequest request);
    Task<> deleteEvent(std::string identifier);

    // Those with a due date first, by date; then the others, by title.
    Task<std::vector<ReminderDescriptor>> searchReminders(SearchRemindersRequest request);
    // Its list is chosen as the calendar of a new event is.
    Task<ReminderDescriptor> createReminder(CreateReminderRequest request);
    Task<ReminderDescriptor> updateReminder(UpdateReminderRequest request);
    Task<> deleteReminder(std::string identifier);

private:
    EventStore& m_store;
    AppleResourceAccessPolicy m_accessPolicy;
    Containers m_calendars;
    Containers m_reminderLists;
    AuthorizedItems<CalendarEvent> m_events;
    AuthorizedItems<Reminder> m_reminders;
};

} // namespace bridge
