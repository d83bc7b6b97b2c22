#pragma once

#include "adapters/ical/calendar_object.h"
#include "adapters/sqlite/database.h"

#include <optional>

namespace bridge {

// Which occurrences of a series are in the table: those that end after `from` and start before `until`. Counted as
// their own clocks do, so that it stays true wherever the user is.
struct Coverage {
    std::optional<int64_t> from;  // nothing: from the first one on
    std::optional<int64_t> until; // nothing: to the last one

    bool contains(const Occurrence& occurrence) const {
        return (!from || occurrence.end.seconds > *from) && (!until || occurrence.start.seconds < *until);
    }
};

struct CoveredOccurrences {
    Coverage coverage;
    std::vector<Occurrence> occurrences;
};

// Three years ahead of now, or of the start of a series that is still to begin, and all of the past. Of a series with
// more than some thousand occurrences in that time, those around now.
CoveredOccurrences coveredOccurrences(const CalendarObject& object, Date now);

// An occurrence in the table, with the moments that it has where the user is.
struct IndexedOccurrence {
    Date start;
    Date end;
    int64_t item = 0;
    std::string recurrenceID;
    size_t component = 0;
};

// All times that events happen, found by time.
class OccurrenceTable {
public:
    explicit OccurrenceTable(Database& database) : m_database(database) {}

    void add(int64_t calendar, int64_t item, const Occurrence& occurrence);
    void removeAll(int64_t item);

    // Those of one calendar that share some time with start ..< end, in the order of start of each clock: in a zone's
    // winter nights that is not quite the order of moments. About the first `limit` of each kind of clock; more, never
    // fewer.
    std::vector<IndexedOccurrence> find(int64_t calendar, Date start, Date end, size_t limit) const;

private:
    Database& m_database;
};

// Whether an event with this start and end is one of start ..< end: one without duration counts as its start.
bool isWithin(Date eventStart, Date eventEnd, Date start, Date end);

} // namespace bridge
