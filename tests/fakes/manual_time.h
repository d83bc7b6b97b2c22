#pragma once

#include "base/task.h"
#include "platform/clock.h"

#include <algorithm>
#include <chrono>
#include <coroutine>
#include <vector>

namespace bridge {

// Time that passes only when the test says so, or, for those whom it does not interest, whenever somebody pauses.
class ManualTime : public Clock {
public:
    enum class Passes { byHand, byItself };
    explicit ManualTime(Passes passes) : m_passes(passes) {}

    Date now() const override { return {}; }
    std::chrono::milliseconds uptime() const override { return m_uptime; }

    Task<void> pause(std::chrono::milliseconds length) {
        if (m_passes == Passes::byItself) {
            m_uptime += length;
            co_return;
        }
        Sleeper sleeper(*this, m_uptime + length);
        co_await sleeper;
    }

    void advance(std::chrono::milliseconds length) {
        m_uptime += length;
        while (true) {
            const auto due = std::ranges::find_if(m_sleepers, [&](const Sleeper* one) { return one->end <= m_uptime; });
            if (due == m_sleepers.end()) return;
            auto waiter = (*due)->waiter;
            m_sleepers.erase(due);
            waiter.resume();
        }
    }
    size_t sleeping() const { return m_sleepers.size(); }

private:
    struct Sleeper {
        ManualTime& time;
        std::chrono::milliseconds end;
        std::coroutine_handle<> waiter;

        Sleeper(ManualTime& owner, std::chrono::milliseconds until) : time(owner), end(until) {}
        Sleeper(const Sleeper&) = delete;
        Sleeper& operator=(const Sleeper&) = delete;
        ~Sleeper() { std::erase(time.m_sleepers, this); }

        bool await_ready() const { return false; }
        void await_suspend(std::coroutine_handle<> handle) {
            waiter = handle;
            time.m_sleepers.push_back(this);
        }
        void await_resume() const {}
    };

    Passes m_passes;
    std::chrono::milliseconds m_uptime{0};
    std::vector<Sleeper*> m_sleepers;
};

} // namespace bridge
