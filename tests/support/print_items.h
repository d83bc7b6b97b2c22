#pragma once

#include "base/date.h"
#include "platform/event_store.h"

#include <ostream>

// How GoogleTest shows what a calendar holds.

namespace bridge {

inline void PrintTo(const Date& date, std::ostream* out) {
    *out << formatDate(date);
}

inline void PrintTo(const CalendarEvent& event, std::ostream* out) {
    *out << '"' << event.title.value_or("") << "\" from " << formatDate(event.startDate) << " to "
         << formatDate(event.endDate) << " (" << event.identifier << ", " << event.alarms.size() << " alarms)";
}

inline void PrintTo(const Reminder& reminder, std::ostream* out) {
    *out << '"' << reminder.title.value_or("") << "\" (" << reminder.identifier << ", priority " << reminder.priority
         << (reminder.isCompleted ? ", completed)" : ")");
}

} // namespace bridge
