#include "adapters/eds/calendar_worker.h"

namespace bridge {

void CalendarWorker::learn(const Calendar& calendar, Latch latch) {
    latch.add();
    m_learning.push_back(std::move(latch));
    if (m_learning.size() > 1) return;
    m_asking = askWhetherWritable(calendar);
    m_asking.start();
}

Task<> CalendarWorker::askWhetherWritable(Calendar calendar) {
    const auto ask = [](CalendarClient& client, Call& call) { return !client.isReadOnly(call.cancellable()); };
    try {
        auto asking = read(std::move(calendar), ask);
        m_isWritable = co_await std::move(asking);
    } catch (const PlatformError&) {
        // What was known last stays.
    }
    for (auto& latch : std::exchange(m_learning, {}))
        latch.countDown();
}

} // namespace bridge
