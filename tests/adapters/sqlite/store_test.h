#pragma once

#include "adapters/sqlite/sqlite_event_store.h"
#include "base/event_loop.h"
#include "tests/adapters/sqlite/still_clock.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/time_zone.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bridge {

// A store in a folder of its own, on a morning in August 2026 in Lisbon.
class SqliteStoreTest : public testing::Test {
protected:
    template <typename T> T wait(Task<T> task) { return loop.runUntilDone(std::move(task)); }

    // "" when it works.
    template <typename Call> static std::string failureOf(Call call) {
        try {
            call();
        } catch (const PlatformError& error) {
            return error.what();
        }
        return {};
    }

    void reopen() { store = std::make_unique<SqliteEventStore>(path, clock, options); }
    CalendarSource account() { return wait(store->sources()).at(0); }
    Calendar defaultCalendar(EntityType type = EntityType::event) { return wait(store->defaultCalendar(type)).value(); }
    std::vector<CalendarEvent> events(Date start, Date end, std::vector<std::string> calendars,
                                      size_t limit = 100'000) {
        return wait(store->events(start, end, std::move(calendars), limit));
    }
    std::vector<CalendarEvent> allEvents() { return events(earliestDate, latestDate, {defaultCalendar().id}); }

    static CalendarEvent sowing(const std::string& calendarID) {
        CalendarEvent event;
        event.calendarID = calendarID;
        event.title = "Sowing";
        event.startDate = Date{1'786'705'200}; // 2026-08-14T11:40:00Z
        event.endDate = Date{1'786'708'800};
        return event;
    }
    static Reminder seeds(const std::string& listID) {
        Reminder reminder;
        reminder.listID = listID;
        reminder.title = "Seeds";
        return reminder;
    }
    // A VEVENT with these lines, each of them ended by a plain line end.
    static CalendarObject object(const std::string& uid, const std::string& lines) {
        std::string text =
            "BEGIN:VCALENDAR\nVERSION:2.0\nBEGIN:VEVENT\nUID:" + uid + "\n" + lines + "END:VEVENT\nEND:VCALENDAR\n";
        std::string ended;
        for (const char character : text)
            ended += character == '\n' ? std::string("\r\n") : std::string(1, character);
        return CalendarObject::parse(ended);
    }

    UserTimeZone zone{"Europe/Lisbon"};
    EventLoop loop;
    TemporaryFolder folder;
    StillClock clock;
    const std::string path = folder.file("calendars.db");
    DatabaseOptions options{std::chrono::milliseconds(0)};
    std::unique_ptr<SqliteEventStore> store = std::make_unique<SqliteEventStore>(path, clock, options);
};

} // namespace bridge
