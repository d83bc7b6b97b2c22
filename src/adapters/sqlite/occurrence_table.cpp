#include "adapters/sqlite/occurrence_table.h"

#include "base/time_zone.h"

#include <algorithm>
#include <array>

namespace bridge {

namespace {

constexpr int64_t day = 86400;
constexpr size_t mostOccurrences = 5000;

// How far a floating time can be from the moment it is somewhere: clocks are up to 16 hours away from UTC.
constexpr int64_t farthestClock = day;

enum Clock { moments = 0, floatingStart = 1, floatingEnd = 2 };

int clockOf(const Occurrence& occurrence) {
    return (occurrence.start.isFloating ? floatingStart : 0) | (occurrence.end.isFloating ? floatingEnd : 0);
}

std::optional<int64_t> reachOf(const Occurrence& occurrence) {
    const int64_t length = occurrence.end.seconds - occurrence.start.seconds;
    if (length <= day) return std::nullopt;
    int64_t reach = 2 * day;
    while (reach < length)
        reach *= 2;
    return reach;
}

// Where the table has to end when there are more occurrences than these, in order of start.
int64_t endOf(const std::vector<Occurrence>& first) {
    const bool areMoments = std::ranges::all_of(first, [](const Occurrence& one) { return clockOf(one) == moments; });
    const auto& last = first.back().start;
    return areMoments ? last.seconds : last.date().secondsSince1970 - 2 * farthestClock;
}

// All of the past and three years to come; for what happens very often less of both, as the first that can be had.
struct Window {
    int64_t back;
    int64_t ahead;
};
constexpr std::array windows{Window{1'000'000 * day, 3 * 365 * day}, Window{365 * day, 3 * 365 * day},
                             Window{7 * day, 365 * day}};

struct Search {
    Database& database;
    int64_t calendar;
    Date start;
    Date end;
    size_t limit;
    std::vector<IndexedOccurrence>& found;
    // Asking for the user's zone each time would take longer than all the rest.
    const std::shared_ptr<const TimeZone> user = TimeZone::user();

    Date momentOf(int64_t seconds, bool isFloating) const { return {isFloating ? user->momentOf(seconds) : seconds}; }
    // Adds the row's occurrence if it is one.
    bool take(const Statement& row, int clock) const {
        IndexedOccurrence occurrence;
        occurrence.start = momentOf(row.column<int64_t>(0), (clock & floatingStart) != 0);
        occurrence.end = momentOf(row.column<int64_t>(1), (clock & floatingEnd) != 0);
        if (!isWithin(occurrence.start, occurrence.end, start, end)) return false;
        occurrence.item = row.column<int64_t>(2);
        occurrence.recurrenceID = row.column<std::string>(3);
        occurrence.component = row.column<size_t>(4);
        found.push_back(std::move(occurrence));
        return true;
    }

    void run(int clock) const {
        const int64_t slack = clock == moments ? 0 : farthestClock;
        size_t count = 0;
        // Those longer than a day that began before what is walked below, one probe for each length. The index is
        // named, since nothing tells SQLite how few there are.
        auto early =
            database.query("WITH RECURSIVE reaches(reach) AS (SELECT 172800 UNION ALL SELECT 2 * reach FROM reaches "
                           "WHERE reach < 1e12) "
                           "SELECT start, \"end\", item, recurrence_id, component "
                           "FROM reaches CROSS JOIN occurrence INDEXED BY occurrence_long "
                           "WHERE calendar = ?1 AND clock = ?2 AND occurrence.reach = reaches.reach "
                           "AND start > ?3 - reaches.reach AND start < ?3 - 86400",
                           calendar, clock, start.secondsSince1970 - slack);
        while (early.step())
            count += take(early, clock) ? 1 : 0;

        std::optional<int64_t> last;
        auto row = database.query("SELECT start, \"end\", item, recurrence_id, component FROM occurrence "
                                  "WHERE calendar = ? AND clock = ? AND start >= ? AND start < ? "
                                  "ORDER BY start, item, recurrence_id",
                                  calendar, clock, start.secondsSince1970 - slack - day, end.secondsSince1970 + slack);
        while (row.step()) {
            if (!last && count >= limit) last = row.column<int64_t>(0) + 2 * slack;
            if (last && row.column<int64_t>(0) > *last) break;
            count += take(row, clock) ? 1 : 0;
        }
    }
};

} // namespace

CoveredOccurrences coveredOccurrences(const CalendarObject& object, Date now) {
    if (!object.isRecurring()) {
        const Date before{earliestDate.secondsSince1970 - 2 * day};
        const Date after{latestDate.secondsSince1970 + 2 * day};
        return {{}, object.occurrences(before, after, 1)};
    }
    const auto span = object.span();
    if (!span) return {};

    const int64_t anchor = std::max(now, span->start.date()).secondsSince1970;
    CoveredOccurrences covered;
    // Nothing at all, until there is a window that can be looked through to its end.
    covered.coverage.until = earliestDate.secondsSince1970 - 2 * farthestClock;
    for (const auto& window : windows) {
        const Date from = std::max(Date{anchor - window.back}, earliestDate);
        const Date horizon = std::min(Date{anchor + window.ahead}, latestDate);
        auto found = object.findOccurrences(from, horizon, mostOccurrences);
        if (found.isCutShort) continue;
        covered.coverage = {};
        if (from > earliestDate) covered.coverage.from = from.secondsSince1970 + farthestClock;
        const bool isFull = found.occurrences.size() >= mostOccurrences;
        if (isFull)
            covered.coverage.until = endOf(found.occurrences);
        else if (!span->end || span->end->date().secondsSince1970 >= horizon.secondsSince1970 - farthestClock)
            covered.coverage.until = horizon.secondsSince1970 - farthestClock;
        covered.occurrences = std::move(found.occurrences);
        if (!isFull) break;
    }
    std::erase_if(covered.occurrences, [&](const Occurrence& one) { return !covered.coverage.contains(one); });
    return covered;
}

void OccurrenceTable::add(int64_t calendar, int64_t item, const Occurrence& occurrence) {
    m_database.run("INSERT INTO occurrence(calendar, clock, start, item, recurrence_id, \"end\", component, reach) "
                   "VALUES(?, ?, ?, ?, ?, ?, ?, ?)",
                   calendar, clockOf(occurrence), occurrence.start.seconds, item, occurrence.recurrenceID,
                   occurrence.end.seconds, occurrence.component, reachOf(occurrence));
}

void OccurrenceTable::removeAll(int64_t item) {
    m_database.run("DELETE FROM occurrence WHERE item = ?", item);
}

std::vector<IndexedOccurrence> OccurrenceTable::find(int64_t calendar, Date start, Date end, size_t limit) const {
    std::vector<IndexedOccurrence> found;
    const Search search{m_database, calendar, start, end, limit, found};
    for (const int clock : {moments + 0, floatingStart + 0, floatingEnd + 0, floatingStart | floatingEnd})
        search.run(clock);
    return found;
}

bool isWithin(Date eventStart, Date eventEnd, Date start, Date end) {
    return eventStart < end && (eventEnd > start || eventStart >= start);
}

} // namespace bridge
