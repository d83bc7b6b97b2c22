#include "adapters/eds/calendar_worker.h"

namespace bridge {

void CalendarWorker::learn(const ListedCalendar& listed, Latch latch) {
    latch.add();
    m_learning.push_back(std::move(latch));
    if (m_learning.size() > 1) return;
    m_asking = askWhetherWritable(listed);
    m_asking.start();
}

Task<> CalendarWorker::askWhetherWritable(ListedCalendar listed) {
    const auto ask = [](CalendarClient& client, Call& call) { return !client.isReadOnly(call.cancellable()); };
    try {
        auto asking = read(std::move(listed), ask);
        m_isWritable = co_await std::move(asking);
    } catch (const PlatformError&) {
        // What was known last stays.
    }
    for (auto& latch : std::exchange(m_learning, {}))
        latch.countDown();
}

} // namespace bridge
