#pragma once

#include "adapters/eds/eds_event_store.h"
#include "tests/adapters/eds/eds_neighbour.h"
#include "tests/adapters/eds/private_eds.h"
#include "tests/contracts/event_store_under_test.h"

#include <gtest/gtest.h>

namespace bridge {

class EdsEventStoreUnderTest : public EventStoreUnderTest {
public:
    // As much time as a busy machine may need: what happens when it runs out has tests of its own.
    static constexpr EdsPatience ample{std::chrono::minutes(2), std::chrono::minutes(2), std::chrono::minutes(1)};

    explicit EdsEventStoreUnderTest(EdsPatience patience = ample) : m_patience(patience) {
        if (hindrance().empty()) reopen();
    }
    ~EdsEventStoreUnderTest() override {
        m_store.reset();
        if (hindrance().empty() && !isTidied() && !isTidied()) ADD_FAILURE() << "Calendars are left behind";
    }

    EventLoop& loop() override { return m_loop; }
    EdsEventStore& store() override { return *m_store; }

    void put(const std::string& calendarID, std::string_view iCalendar) override {
        EdsNeighbour::put(calendarID, iCalendar);
    }
    std::string stored(const std::string& calendarID, std::string_view uid) override {
        return EdsNeighbour::stored(calendarID, uid);
    }
    std::string addReadOnlyCalendar(EntityType entityType, std::string_view title) override {
        return EdsNeighbour::addReadOnlyCalendar(entityType, title);
    }
    void reopen() override {
        m_store.reset();
        m_store = m_loop.runUntilDone(EdsEventStore::open(m_loop, m_patience));
        if (!m_store) throw std::runtime_error("Evolution Data Server is not served");
    }
    void lose() override { PrivateEds::get().uninstall(); }
    void restore() override { PrivateEds::get().install(); }

    std::string hindrance() override { return PrivateEds::hindrance(); }

private:
    // A service that dies of what a test did to it is there again at the next call.
    static bool isTidied() {
        try {
            EdsNeighbour::removeAllCalendars();
            return true;
        } catch (const std::runtime_error&) {
            return false;
        }
    }

    EdsPatience m_patience;
    EventLoop m_loop;
    std::unique_ptr<EdsEventStore> m_store;
};

} // namespace bridge
