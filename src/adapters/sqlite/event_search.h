#pragma once

#include "adapters/sqlite/calendar_table.h"
#include "adapters/sqlite/item_table.h"

namespace bridge {

// One search for the events of some calendars, as EventStore::events() says.
class EventSearch {
public:
    EventSearch(Database& database, Date now, Date start, Date end, size_t limit);

    std::vector<CalendarEvent> run(const std::vector<CalendarRow>& calendars);

private:
    // A series whose occurrences had to be found in its text, and one of them.
    struct Expanded {
        size_t series = 0;
        Occurrence occurrence;
    };
    struct Series {
        std::string id;
        std::string calendarID;
        CalendarObject object;
    };
    struct Candidate {
        Date start;
        Date end;
        int64_t item = 0;
        std::string recurrenceID;
        size_t component = 0;
        std::optional<size_t> expanded;
    };

    void addIndexed(const CalendarRow& calendar);
    void addExpanded(const CalendarRow& calendar, std::optional<Date> last);
    void addExpanded(const CalendarRow& calendar, const OpenSeries& open);
    void sortAndCut();
    CalendarEvent describe(const Candidate& candidate) const;

    Database& m_database;
    ItemTable m_items;
    Date m_start;
    Date m_end;
    size_t m_limit;
    std::vector<Candidate> m_candidates;
    std::vector<Series> m_series;
    std::vector<Expanded> m_expanded;
};

} // namespace bridge
