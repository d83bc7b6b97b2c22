#pragma once

#include <coroutine>
#include <utility>

namespace bridge {

// Something to wait for that a test opens by hand. One waiter; a waiter that is dropped is counted as withdrawn.
class Gate {
public:
    struct Awaiter {
        explicit Awaiter(Gate& awaited) : gate(awaited) {}
        Awaiter(const Awaiter&) = delete;
        Awaiter& operator=(const Awaiter&) = delete;
        ~Awaiter() {
            if (!waiting) return;
            gate.m_waiter = {};
            ++gate.m_withdrawn;
        }
        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiter) {
            waiting = true;
            gate.m_waiter = waiter;
        }
        void await_resume() noexcept { waiting = false; }

        Gate& gate;
        bool waiting = false;
    };

    Awaiter opened() { return Awaiter(*this); }
    void open() {
        if (const auto waiter = std::exchange(m_waiter, {})) waiter.resume();
    }
    bool isAwaited() const { return static_cast<bool>(m_waiter); }
    int withdrawn() const { return m_withdrawn; }

private:
    std::coroutine_handle<> m_waiter;
    int m_withdrawn = 0;
};

} // namespace bridge
