#pragma once

#include "base/event_loop.h"
#include "platform/event_store.h"

#include <string_view>

namespace bridge {

// An event store with its surroundings, as the contract's tests need it. Fresh for each test: a writable local account
// with nothing in its calendars.
class EventStoreUnderTest {
public:
    virtual ~EventStoreUnderTest() = default;

    virtual EventLoop& loop() = 0;
    virtual EventStore& store() = 0;

    // Puts the events or tasks of a VCALENDAR into a calendar by the store's own ways, as another program would have.
    virtual void put(const std::string& calendarID, std::string_view iCalendar) = 0;
    // The components with this UID in the calendar, as another program would find them; empty when there are none.
    virtual std::string stored(const std::string& calendarID, std::string_view uid) = 0;
    // Makes a calendar that takes no changes, and gives its identifier. What is put() into it is there to be read.
    virtual std::string addReadOnlyCalendar(EntityType entityType, std::string_view title) = 0;
    // Lets go of the store and opens it again, as a restart of the bridge does.
    virtual void reopen() = 0;
    // From now on whatever the store stands on is gone, until restore().
    virtual void lose() = 0;
    virtual void restore() = 0;

    // Why it can't run on this machine; empty when it can.
    virtual std::string hindrance() { return {}; }

    template <typename T> T wait(Task<T> task) { return loop().runUntilDone(std::move(task)); }
};

} // namespace bridge
