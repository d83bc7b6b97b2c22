#pragma once

#include "adapters/eds/calendar_client.h"
#include "adapters/eds/source_worker.h"
#include "adapters/eds/together.h"

namespace bridge {

// The worker of one calendar or list, which also knows whether that is writable.
class CalendarWorker : public SourceWorker<CalendarClient> {
public:
    using SourceWorker::SourceWorker;

    // Read-only until it is known better.
    bool isKnownWritable() const { return m_isWritable; }
    // Asks, in the background, and counts down when that has ended in whatever way.
    void learn(const Calendar& calendar, Latch latch);

private:
    Task<> askWhetherWritable(Calendar calendar);

    bool m_isWritable = false;
    std::vector<Latch> m_learning; // who waits for the answer; empty when nobody asks
    Task<> m_asking;
};

} // namespace bridge
