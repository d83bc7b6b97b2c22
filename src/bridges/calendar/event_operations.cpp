#include "bridges/calendar/apple_data_bridge.h"
#include "bridges/calendar/descriptions.h"
#include "bridges/calendar/item_title.h"
#include "bridges/calendar/search_limit.h"

namespace bridge {

namespace {

constexpr std::string_view eventLabel = "Calendar event";

void requireDuration(Date start, Date end) {
    if (end <= start) throw AppleBridgeError::invalidDateRange();
}

std::optional<std::string> textOf(std::optional<URL> url) {
    if (!url) return std::nullopt;
    return std::move(url->text);
}

template <typename T> void setIfGiven(T& field, std::optional<T> given) {
    if (given) field = std::move(*given);
}
void setIfGiven(std::optional<std::string>& field, std::optional<std::string> given) {
    if (given) field = std::move(given);
}

// Everything but the calendar.
void apply(UpdateCalendarEventRequest changes, CalendarEvent& event) {
    if (changes.title) event.title = validTitle(*changes.title, eventLabel);
    setIfGiven(event.startDate, changes.startDate);
    setIfGiven(event.endDate, changes.endDate);
    setIfGiven(event.isAllDay, changes.isAllDay);
    setIfGiven(event.location, std::move(changes.location));
    setIfGiven(event.notes, std::move(changes.notes));
    setIfGiven(event.url, textOf(std::move(changes.url)));

    if (changes.clearLocation.value_or(false)) event.location.reset();
    if (changes.clearNotes.value_or(false)) event.notes.reset();
    if (changes.clearURL.value_or(false)) event.url.reset();
    if (changes.clearAlarm.value_or(false) || changes.alarmOffsetSeconds) event.alarms.clear();
    if (changes.alarmOffsetSeconds) event.alarms.push_back({*changes.alarmOffsetSeconds});
}

} // namespace

Task<std::vector<CalendarEventDescriptor>> AppleDataBridge::searchEvents(SearchEventsPayload request) {
    m_calendars.requireFullAccess();
    requireDuration(request.startDate, request.endDate);
    const auto calendars = co_await m_calendars.forSearch(std::move(request.calendarIDs));
    std::vector<std::string> identifiers;
    std::map<std::string, std::string> titles;
    for (const auto& calendar : calendars) {
        identifiers.push_back(calendar.id);
        titles.emplace(calendar.id, calendar.title);
    }

    const size_t limit = searchLimit(request.limit, maximumSearchLimit);
    auto found = co_await m_store.events(request.startDate, request.endDate, std::move(identifiers), limit);
    std::ranges::stable_sort(found, {}, &CalendarEvent::startDate);
    if (found.size() > limit) found.resize(limit);
    std::vector<CalendarEventDescriptor> described;
    described.reserve(found.size());
    for (auto& event : found) {
        auto title = titles[event.calendarID];
        described.push_back(describe(std::move(event), std::move(title)));
    }
    co_return described;
}

Task<CalendarEventDescriptor> AppleDataBridge::createEvent(CreateCalendarEventRequest request) {
    m_calendars.requireFullAccess();
    requireDuration(request.startDate, request.endDate);
    CalendarEvent event;
    event.title = validTitle(request.title, eventLabel);
    auto calendar = co_await m_calendars.forNewItem(std::move(request.calendarID));
    event.calendarID = calendar.id;
    event.startDate = request.startDate;
    event.endDate = request.endDate;
    event.isAllDay = request.isAllDay;
    event.location = std::move(request.location);
    event.notes = std::move(request.notes);
    event.url = textOf(std::move(request.url));
    if (request.alarmOffsetSeconds) event.alarms.push_back({*request.alarmOffsetSeconds});
    auto saved = co_await m_store.saveEvent(std::move(event));
    co_return describe(std::move(saved), std::move(calendar.title));
}

Task<CalendarEventDescriptor> AppleDataBridge::updateEvent(UpdateCalendarEventRequest request) {
    m_calendars.requireFullAccess();
    auto held = co_await m_events.forChange(request.identifier);
    auto& event = held.item;
    std::string calendarTitle;
    if (request.calendarID) {
        auto target = co_await m_calendars.target(*request.calendarID);
        event.calendarID = target.id;
        calendarTitle = std::move(target.title);
    }
    const bool stays = !request.calendarID;
    apply(std::move(request), event);
    requireDuration(event.startDate, event.endDate);
    // Asked for before the change: once it is made, nothing must fail.
    if (stays) calendarTitle = co_await m_calendars.title(event.calendarID);
    auto saved = co_await m_store.saveEvent(std::move(event));
    co_return describe(std::move(saved), std::move(calendarTitle));
}

Task<> AppleDataBridge::deleteEvent(std::string identifier) {
    m_calendars.requireFullAccess();
    auto held = co_await m_events.forChange(std::move(identifier));
    co_await m_store.removeEvent(std::move(held.item.identifier));
}

} // namespace bridge
