#pragma once

#include "adapters/eds/source_registry.h"
#include "platform/event_store.h"

namespace bridge {

// What is switched on and shown, by name.
struct SourceList {
    std::vector<CalendarSource> accounts;
    std::vector<Calendar> calendars; // read-only as long as their own backends have not been asked
    std::string defaultCalendar;     // identifiers; empty, or of what is not shown
    std::string defaultTaskList;

    // Nothing when there is none with this identifier.
    const Calendar* find(const std::string& identifier) const;
};

SourceList listed(const std::vector<RegisteredSource>& sources);

// For the beginning of a sentence.
std::string subjectOf(const Calendar& calendar);

} // namespace bridge
