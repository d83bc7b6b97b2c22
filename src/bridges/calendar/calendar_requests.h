#pragma once

#include "base/record.h"
#include "base/url.h"

namespace bridge {

struct SearchEventsPayload {
    Date startDate;
    Date endDate;
    std::vector<std::string> calendarIDs;
    std::optional<int64_t> limit;

    static constexpr auto fields() {
        return std::tuple{
            required("startDate", &SearchEventsPayload::startDate), required("endDate", &SearchEventsPayload::endDate),
            required("calendarIDs", &SearchEventsPayload::calendarIDs), optional("limit", &SearchEventsPayload::limit)};
    }
};
static_assert(listsEveryMember<SearchEventsPayload>());

// A new calendar or reminder list.
struct CreateAppleListRequest {
    std::string title;
    std::optional<std::string> sourceID;

    static constexpr auto fields() {
        return std::tuple{required("title", &CreateAppleListRequest::title),
                          optional("sourceID", &CreateAppleListRequest::sourceID)};
    }
};
static_assert(listsEveryMember<CreateAppleListRequest>());

struct UpdateAppleListRequest {
    std::string identifier;
    std::string title;

    static constexpr auto fields() {
        return std::tuple{required("identifier", &UpdateAppleListRequest::identifier),
                          required("title", &UpdateAppleListRequest::title)};
    }
};
static_assert(listsEveryMember<UpdateAppleListRequest>());

// The alarm is given in seconds from the start; before it when negative.
struct CreateCalendarEventRequest {
    std::optional<std::string> calendarID;
    std::string title;
    Date startDate;
    Date endDate;
    bool isAllDay = false;
    std::optional<std::string> location;
    std::optional<std::string> notes;
    std::optional<URL> url;
    std::optional<double> alarmOffsetSeconds;

    static constexpr auto fields() {
        return std::tuple{optional("calendarID", &CreateCalendarEventRequest::calendarID),
                          required("title", &CreateCalendarEventRequest::title),
                          required("startDate", &CreateCalendarEventRequest::startDate),
                          required("endDate", &CreateCalendarEventRequest::endDate),
                          required("isAllDay", &CreateCalendarEventRequest::isAllDay),
                          optional("location", &CreateCalendarEventRequest::location),
                          optional("notes", &CreateCalendarEventRequest::notes),
                          optional("url", &CreateCalendarEventRequest::url),
                          optional("alarmOffsetSeconds", &CreateCalendarEventRequest::alarmOffsetSeconds)};
    }
};
static_assert(listsEveryMember<CreateCalendarEventRequest>());

struct UpdateCalendarEventRequest {
    std::string identifier;
    std::optional<std::string> calendarID;
    std::optional<std::string> title;
    std::optional<Date> startDate;
    std::optional<Date> endDate;
    std::optional<bool> isAllDay;
    std::optional<std::string> location;
    std::optional<std::string> notes;
    std::optional<URL> url;
    std::optional<double> alarmOffsetSeconds;
    std::optional<bool> clearLocation;
    std::optional<bool> clearNotes;
    std::optional<bool> clearURL;
    std::optional<bool> clearAlarm;

    static constexpr auto fields() {
        return std::tuple{required("identifier", &UpdateCalendarEventRequest::identifier),
                          optional("calendarID", &UpdateCalendarEventRequest::calendarID),
                          optional("title", &UpdateCalendarEventRequest::title),
                          optional("startDate", &UpdateCalendarEventRequest::startDate),
                          optional("endDate", &UpdateCalendarEventRequest::endDate),
                          optional("isAllDay", &UpdateCalendarEventRequest::isAllDay),
                          optional("location", &UpdateCalendarEventRequest::location),
                          optional("notes", &UpdateCalendarEventRequest::notes),
                          optional("url", &UpdateCalendarEventRequest::url),
                          optional("alarmOffsetSeconds", &UpdateCalendarEventRequest::alarmOffsetSeconds),
                          optional("clearLocation", &UpdateCalendarEventRequest::clearLocation),
                          optional("clearNotes", &UpdateCalendarEventRequest::clearNotes),
                          optional("clearURL", &UpdateCalendarEventRequest::clearURL),
                          optional("clearAlarm", &UpdateCalendarEventRequest::clearAlarm)};
    }
};
static_assert(listsEveryMember<UpdateCalendarEventRequest>());

} // namespace bridge
