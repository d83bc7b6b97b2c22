#include "adapters/eds/deadline.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>

namespace bridge {

using Clock = std::chrono::steady_clock;

struct DeadlineKeeper::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::multimap<Clock::time_point, std::shared_ptr<GCancellable>> pending;
    bool ending = false;
    std::thread thread;

    void work() {
        std::unique_lock lock(mutex);
        while (!ending) {
            if (pending.empty()) {
                changed.wait(lock);
            } else if (const auto next = pending.begin(); next->first > Clock::now()) {
                changed.wait_until(lock, Clock::time_point(next->first));
            } else {
                const auto late = std::move(next->second);
                pending.erase(next);
                // Whoever is called back may end another deadline.
                lock.unlock();
                g_cancellable_cancel(late.get());
                lock.lock();
            }
        }
    }
};

DeadlineKeeper::DeadlineKeeper() : m_state(std::make_unique<State>()) {
    m_state->thread = std::thread([state = m_state.get()] { state->work(); });
}

DeadlineKeeper::~DeadlineKeeper() {
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->ending = true;
    }
    m_state->changed.notify_one();
    m_state->thread.join();
}

Deadline::Deadline(DeadlineKeeper& keeper, std::chrono::milliseconds delay, std::shared_ptr<GCancellable> cancellable)
    : m_keeper(*keeper.m_state), m_time(Clock::now() + delay), m_cancellable(std::move(cancellable)) {
    {
        const std::lock_guard lock(m_keeper.mutex);
        m_keeper.pending.emplace(m_time, m_cancellable);
    }
    m_keeper.changed.notify_one();
}

Deadline::~Deadline() {
    const std::lock_guard lock(m_keeper.mutex);
    const auto [first, last] = m_keeper.pending.equal_range(m_time);
    for (auto entry = first; entry != last; ++entry)
        if (entry->second == m_cancellable) {
            m_keeper.pending.erase(entry);
            return;
        }
}

} // namespace bridge
