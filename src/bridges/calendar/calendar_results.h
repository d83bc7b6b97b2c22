#pragma once

#include "base/record.h"
#include "base/url.h"

namespace bridge {

// An account that can hold calendars or reminder lists.
struct AppleSourceDescriptor {
    std::string id;
    std::string title;
    std::string sourceType;

    bool operator==(const AppleSourceDescriptor&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("id", &AppleSourceDescriptor::id), required("title", &AppleSourceDescriptor::title),
                          required("sourceType", &AppleSourceDescriptor::sourceType)};
    }
};
static_assert(listsEveryMember<AppleSourceDescriptor>());

// A calendar or a reminder list.
struct AppleListDescriptor {
    std::string id;
    std::string title;
    std::string sourceTitle;
    std::string sourceType;
    bool allowsContentModifications = false;

    bool operator==(const AppleListDescriptor&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("id", &AppleListDescriptor::id), required("title", &AppleListDescriptor::title),
                          required("sourceTitle", &AppleListDescriptor::sourceTitle),
                          required("sourceType", &AppleListDescriptor::sourceType),
                          required("allowsContentModifications", &AppleListDescriptor::allowsContentModifications)};
    }
};
static_assert(listsEveryMember<AppleListDescriptor>());

struct CalendarEventDescriptor {
    std::string id;
    std::optional<std::string> externalIdentifier;
    std::string calendarID;
    std::string calendarTitle;
    std::string title; // "" when it has none
    Date startDate;
    Date endDate;
    bool isAllDay = false;
    std::optional<std::string> location;
    std::optional<std::string> notes;
    std::optional<URL> url;
    bool hasRecurrenceRules = false;

    bool operator==(const CalendarEventDescriptor&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("id", &CalendarEventDescriptor::id),
                          optional("externalIdentifier", &CalendarEventDescriptor::externalIdentifier),
                          required("calendarID", &CalendarEventDescriptor::calendarID),
                          required("calendarTitle", &CalendarEventDescriptor::calendarTitle),
                          required("title", &CalendarEventDescriptor::title),
                          required("startDate", &CalendarEventDescriptor::startDate),
                          required("endDate", &CalendarEventDescriptor::endDate),
                          required("isAllDay", &CalendarEventDescriptor::isAllDay),
                          optional("location", &CalendarEventDescriptor::location),
                          optional("notes", &CalendarEventDescriptor::notes),
                          optional("url", &CalendarEventDescriptor::url),
                          required("hasRecurrenceRules", &CalendarEventDescriptor::hasRecurrenceRules)};
    }
};
static_assert(listsEveryMember<CalendarEventDescriptor>());

// How much of one kind of container the agent may touch: those on the allow-list that exist, and those that exist.
struct BridgeResourceAccessSnapshot {
    int64_t allowed = 0;
    int64_t available = 0;

    bool operator==(const BridgeResourceAccessSnapshot&) const = default;
    static constexpr auto fields() {
        return std::tuple{required("allowed", &BridgeResourceAccessSnapshot::allowed),
                          required("available", &BridgeResourceAccessSnapshot::available)};
    }
};
static_assert(listsEveryMember<BridgeResourceAccessSnapshot>());

} // namespace bridge
