#pragma once

#include "adapters/ical/calendar_object.h"
#include "tests/fuzz/fuzz.h"

namespace bridge {

// What must hold of every calendar object.
inline void exercise(const CalendarObject& object) {
    const auto text = object.text();
    const auto again = CalendarObject::parse(text);
    must(again.text() == text);
    must(again.uid() == object.uid());
    if (object.entityType() == EntityType::reminder) {
        const auto reminder = object.describeReminder();
        must(again.describeReminder() == reminder);
        must(!reminder.dueDate || dateFrom(*reminder.dueDate));
        must(reminder.priority >= 0 && reminder.priority <= 9);
        return;
    }
    const auto span = object.span();
    const auto all = object.occurrences(earliestDate, latestDate, 5);
    must(all.size() <= 5);
    must(all.empty() || span);
    for (const auto& occurrence : all) {
        must(occurrence.start.date() <= occurrence.end.date());
        must(span->start.date() <= occurrence.start.date());
        const auto found = object.occurrence(occurrence.recurrenceID);
        must(found && (found->start == occurrence.start || occurrence.recurrenceID.empty()));
        object.describe(occurrence);
    }
}

} // namespace bridge
