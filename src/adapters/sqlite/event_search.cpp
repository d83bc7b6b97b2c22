#include "adapters/sqlite/event_search.h"

#include "adapters/sqlite/event_table.h"

#include <algorithm>
#include <tuple>

namespace bridge {

namespace {

constexpr int64_t day = 86400;

} // namespace

EventSearch::EventSearch(Database& database, Date now, Date start, Date end, size_t limit)
    : m_database(database),
      m_items(database, now),
      m_start(std::clamp(start, earliestDate, latestDate)),
      m_end(std::clamp(end, earliestDate, Date{latestDate.secondsSince1970 + 1})),
      m_limit(limit) {}

std::vector<CalendarEvent> EventSearch::run(const std::vector<CalendarRow>& calendars) {
    if (m_limit == 0 || m_end <= m_start) return {};
    for (const auto& calendar : calendars)
        addIndexed(calendar);
    sortAndCut();

    // When the table alone gives enough, only what may lie before the last of these is of interest.
    const auto last = m_candidates.size() == m_limit ? std::optional(m_candidates.back().start) : std::nullopt;
    for (const auto& calendar : calendars)
        addExpanded(calendar, last);
    if (!m_expanded.empty()) sortAndCut();

    std::vector<CalendarEvent> events;
    events.reserve(m_candidates.size());
    for (const auto& candidate : m_candidates)
        events.push_back(describe(candidate));
    return events;
}

void EventSearch::addIndexed(const CalendarRow& calendar) {
    for (auto& found : OccurrenceTable(m_database).find(calendar.key, m_start, m_end, m_limit))
        m_candidates.push_back(
            {found.start, found.end, found.item, std::move(found.recurrenceID), found.component, std::nullopt});
}

void EventSearch::addExpanded(const CalendarRow& calendar, std::optional<Date> last) {
    const auto end = last ? std::min(m_end, Date{last->secondsSince1970 + 1}) : m_end;
    for (const auto& open : m_items.openSeries(calendar.key, m_start, end))
        addExpanded(calendar, open);
}

void EventSearch::addExpanded(const CalendarRow& calendar, const OpenSeries& open) {
    auto object = m_items.object(open.item);
    const auto& coverage = open.coverage;
    auto from = m_start;
    // What comes after the table needs no look at the years that are in it.
    if (coverage.until && (!coverage.from || *coverage.from <= m_start.secondsSince1970 - day))
        from = std::max(from, Date{*coverage.until - day});
    const auto series = m_series.size();
    bool isOfInterest = false;
    for (auto& occurrence : object.occurrences(from, m_end, m_limit)) {
        const auto start = occurrence.start.date();
        const auto end = occurrence.end.date();
        if (coverage.contains(occurrence) || !isWithin(start, end, m_start, m_end)) continue;
        m_candidates.push_back(
            {start, end, open.item, occurrence.recurrenceID, occurrence.component, m_expanded.size()});
        m_expanded.push_back({series, std::move(occurrence)});
        isOfInterest = true;
    }
    if (isOfInterest) m_series.push_back({open.id, calendar.calendar.id, std::move(object)});
}

void EventSearch::sortAndCut() {
    const auto order = [](const Candidate& candidate) {
        return std::tie(candidate.start, candidate.item, candidate.recurrenceID);
    };
    const auto isBefore = [&](const Candidate& one, const Candidate& other) { return order(one) < order(other); };
    if (m_candidates.size() > m_limit) {
        std::ranges::nth_element(m_candidates, m_candidates.begin() + static_cast<std::ptrdiff_t>(m_limit), isBefore);
        m_candidates.erase(m_candidates.begin() + static_cast<std::ptrdiff_t>(m_limit), m_candidates.end());
    }
    std::ranges::sort(m_candidates, isBefore);
}

CalendarEvent EventSearch::describe(const Candidate& candidate) const {
    CalendarEvent event;
    if (candidate.expanded) {
        const auto& expanded = m_expanded[*candidate.expanded];
        const auto& series = m_series[expanded.series];
        event = series.object.describe(expanded.occurrence);
        event.calendarID = series.calendarID;
        event.identifier = series.id;
    } else {
        event = EventTable(m_database).read(candidate.item, candidate.component);
        event.startDate = candidate.start;
        event.endDate = candidate.end;
    }
    event.identifier = occurrenceIdentifier(event.identifier, candidate.recurrenceID);
    return event;
}

} // namespace bridge
