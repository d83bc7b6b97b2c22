#pragma once

#include <coroutine>
#include <deque>
#include <utility>

namespace bridge {

// Keeps a read, a check and a write of one task together although the task waits in between. First come, first served;
// on the loop's thread only. `const auto guard = co_await mutex.lock();` holds it until the guard goes. It outlives
// every task that uses it.
class AsyncMutex {
public:
    class [[nodiscard]] Guard {
    public:
        explicit Guard(AsyncMutex& mutex) : m_mutex(&mutex) {}
        Guard(Guard&& other) noexcept : m_mutex(std::exchange(other.m_mutex, nullptr)) {}
        Guard& operator=(Guard&&) = delete;
        ~Guard() {
            if (m_mutex) m_mutex->release();
        }

    private:
        AsyncMutex* m_mutex;
    };

    class Awaiter {
    public:
        explicit Awaiter(AsyncMutex& mutex) : m_mutex(mutex) {}
        Awaiter(const Awaiter&) = delete;
        Awaiter& operator=(const Awaiter&) = delete;
        // A task that is dropped while it queues leaves the queue.
        ~Awaiter() {
            if (m_waiter) std::erase(m_mutex.m_queue, this);
        }

        bool await_ready() const noexcept {
            if (m_mutex.m_locked || !m_mutex.m_queue.empty()) return false;
            m_mutex.m_locked = true;
            return true;
        }
        void await_suspend(std::coroutine_handle<> waiter) {
            m_waiter = waiter;
            m_mutex.m_queue.push_back(this);
        }
        Guard await_resume() noexcept { return Guard(m_mutex); }

    private:
        friend class AsyncMutex;
        AsyncMutex& m_mutex;
        std::coroutine_handle<> m_waiter;
    };

    Awaiter lock() { return Awaiter(*this); }

private:
    void release() {
        m_locked = false;
        // One that releases while it is being resumed from here leaves the next to this loop: a queue of thousands
        // would otherwise stand on the stack all at once. Whoever asks meanwhile finds the queue not empty and joins
        // its end.
        if (std::exchange(m_passing, true)) return;
        while (!m_locked && !m_queue.empty()) {
            m_locked = true;
            Awaiter* next = m_queue.front();
            m_queue.pop_front();
            std::exchange(next->m_waiter, {}).resume();
        }
        m_passing = false;
    }

    bool m_locked = false;
    bool m_passing = false;
    std::deque<Awaiter*> m_queue;
};

} // namespace bridge
