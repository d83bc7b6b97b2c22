#pragma once

#include "adapters/ical/calendar_file.h"
#include "adapters/posix/system_clock.h"
#include "adapters/sqlite/database.h"
#include "adapters/sqlite/sqlite_event_store.h"
#include "tests/contracts/event_store_under_test.h"
#include "tests/support/temporary_folder.h"

namespace bridge {

class SqliteEventStoreUnderTest : public EventStoreUnderTest {
public:
    SqliteEventStoreUnderTest() { reopen(); }

    EventLoop& loop() override { return m_loop; }
    EventStore& store() override { return *m_store; }
    void put(const std::string& calendarID, std::string_view iCalendar) override {
        SqliteEventStore otherProgram(path(), m_clock);
        otherProgram.importItems(calendarID, readCalendarFile(iCalendar).objects);
    }
    std::string stored(const std::string& calendarID, std::string_view uid) override {
        Database otherProgram(path(), "calendars", {});
        return otherProgram
            .value<std::string>("SELECT text FROM item JOIN calendar ON calendar.key = item.calendar "
                                "WHERE calendar.id = ? AND uid = ?",
                                calendarID, uid)
            .value_or("");
    }
    std::string addReadOnlyCalendar(EntityType entityType, std::string_view title) override {
        const auto sources = wait(m_store->sources());
        return m_store->importCalendar({entityType, sources.at(0).id, std::string(title), false}, {}).id;
    }
    void reopen() override {
        m_store.reset();
        m_store = std::make_unique<SqliteEventStore>(path(), m_clock);
    }
    void lose() override {
        std::filesystem::rename(m_folder / "store", m_folder / "lost");
        // So that nothing new can begin in its place.
        putFile(m_folder / "store", "");
    }
    void restore() override {
        std::filesystem::remove(m_folder / "store");
        std::filesystem::rename(m_folder / "lost", m_folder / "store");
    }

private:
    std::string path() const { return m_folder / "store/calendars.db"; }

    EventLoop m_loop;
    TemporaryFolder m_folder;
    SystemClock m_clock;
    std::unique_ptr<SqliteEventStore> m_store;
};

} // namespace bridge
