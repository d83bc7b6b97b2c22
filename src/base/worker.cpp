#include "base/worker.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace bridge {

struct Worker::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> jobs;
    bool ending = false;
    std::thread thread;

    void work() {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return ending || !jobs.empty(); });
            if (ending) return;
            auto job = std::move(jobs.front());
            jobs.pop_front();
            lock.unlock();
            job();
            job = nullptr;
            lock.lock();
        }
    }
};

Worker::Worker() : m_state(std::make_unique<State>()) {
    m_state->thread = std::thread([state = m_state.get()] { state->work(); });
}

Worker::~Worker() {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->ending = true;
    }
    m_state->changed.notify_one();
    m_state->thread.join();
}

void Worker::run(std::function<void()> job) {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->jobs.push_back(std::move(job));
    }
    m_state->changed.notify_one();
}

} // namespace bridge
