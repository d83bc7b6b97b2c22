#include "adapters/posix/system_clock.h"
#include "adapters/sqlite/sqlite_event_store.h"
#include "base/event_loop.h"
#include "benchmarks/calendar_load.h"
#include "benchmarks/measure.h"
#include "bridges/calendar/apple_data_bridge.h"
#include "tests/fakes/memory_user_defaults.h"
#include "tests/fakes/scripted_authorization.h"
#include "tests/support/temporary_folder.h"

#include <cstdlib>
#include <fmt/format.h>
#include <sqlite3.h>

namespace {

using namespace bridge;
using namespace bridge::bench;

void require(bool condition) {
    if (!condition) std::exit(1);
}

// The embedded store in a folder of its own, behind the bridge, with everything allowed.
struct Calendars {
    explicit Calendars(EventLoop& home) : loop(home) {}

    void allowAll() {
        loop.runUntilDone(bridge.setAllCalendars(true));
        loop.runUntilDone(bridge.setAllReminderLists(true));
    }
    std::string add(EntityType type, const std::vector<CalendarObject>& objects) {
        const auto source = loop.runUntilDone(store.sources()).front().id;
        return store.importCalendar({type, source, "Measured"}, objects).id;
    }
    size_t search(const SearchEventsPayload& request) { return loop.runUntilDone(bridge.searchEvents(request)).size(); }

    EventLoop& loop;
    TemporaryFolder folder;
    SystemClock clock;
    MemoryUserDefaults defaults;
    ScriptedAuthorization authorization;
    SqliteEventStore store{folder.file("calendars.db"), clock};
    AppleDataBridge bridge{store, authorization, defaults};
};

double microseconds(int times, const std::function<void()>& action) {
    return secondsFor([&] {
               for (int time = 0; time < times; ++time)
                   action();
           }) /
           times * 1e6;
}

void compareSizes(EventLoop& loop) {
    Calendars few(loop);
    Calendars many(loop);
    const auto fewID = few.add(EntityType::event, eventLoad(1'000));
    const auto manyID = many.add(EntityType::event, eventLoad(100'000));
    few.allowAll();
    many.allowAll();

    const auto month = measuredMonth();
    const SearchEventsPayload search{month.start, month.end, {}, std::nullopt};
    const auto found = few.search(search);
    require(found == many.search(search) && found > 100);
    report(fmt::format("calendar.events.search of a month, {} found", found),
           compare(
               31, [&] { return microseconds(10, [&] { few.search(search); }); },
               [&] { return microseconds(10, [&] { many.search(search); }); }),
           "µs", "100,000 events against 1,000; limit 2.00");

    const auto create = [&](Calendars& calendars, const std::string& id) {
        CreateCalendarEventRequest request;
        request.calendarID = id;
        request.title = "Sowing";
        request.startDate = month.end;
        request.endDate = Date{month.end.secondsSince1970 + 3600};
        return microseconds(10, [&] { loop.runUntilDone(calendars.bridge.createEvent(request)); });
    };
    report("calendar.events.create",
           compare(
               31, [&] { return create(few, fewID); }, [&] { return create(many, manyID); }),
           "µs", "100,000 events against 1,000; goal 1.00");
}

// Reads every column that a reminder is described from.
size_t readBare(sqlite3* connection) {
    sqlite3_stmt* statement = nullptr;
    require(
        sqlite3_prepare_v2(connection,
                           "SELECT item.id, item.uid, reminder.* FROM reminder JOIN item ON item.key = reminder.item "
                           "ORDER BY reminder.item",
                           -1, &statement, nullptr) == SQLITE_OK);
    size_t bytes = 0;
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW)
        for (int column = 0; column < columns; ++column)
            if (sqlite3_column_text(statement, column))
                bytes += static_cast<size_t>(sqlite3_column_bytes(statement, column));
    sqlite3_finalize(statement);
    return bytes;
}

void compareWithBareSQLite(EventLoop& loop) {
    for (const size_t count : {size_t{1'000}, size_t{10'000}}) {
        Calendars calendars(loop);
        calendars.add(EntityType::reminder, reminderLoad(count));
        calendars.allowAll();
        sqlite3* connection = nullptr;
        require(sqlite3_open_v2(calendars.folder.file("calendars.db").c_str(), &connection, SQLITE_OPEN_READONLY,
                                nullptr) == SQLITE_OK);
        SearchRemindersRequest search;
        search.limit = 500;
        const auto searchAll = [&] {
            require(loop.runUntilDone(calendars.bridge.searchReminders(search)).size() == 500);
        };
        search.query = "water";
        report(fmt::format("reminders.search in {}, a word", count),
               compare(
                   15, [&] { return microseconds(1, [&] { require(readBare(connection) > 0); }); },
                   [&] { return microseconds(1, searchAll); }),
               "µs", "against the bare read of the same rows");
        search.query = std::nullopt;
        report(fmt::format("reminders.search in {}, all", count),
               compare(
                   15, [&] { return microseconds(1, [&] { require(readBare(connection) > 0); }); },
                   [&] { return microseconds(1, searchAll); }),
               "µs", "against the bare read of the same rows");
        sqlite3_close(connection);
    }
}

} // namespace

// The embedded store behind the bridge: whether a search grows with what it does not find, and what the rules of the
// bridge cost on top of SQLite.
int main() {
    EventLoop loop;
    compareSizes(loop);
    compareWithBareSQLite(loop);
}
