#pragma once

#include "base/event_loop.h"

#include <chrono>
#include <functional>

typedef struct uv_timer_s uv_timer_t;

namespace bridge {

// One alarm on the loop. Destroying it, or starting it again, silences the one that was set.
class Timer {
public:
    explicit Timer(EventLoop& loop);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    // Calls `action` once, on the loop's thread, after at least `delay`.
    void start(std::chrono::milliseconds delay, std::function<void()> action);
    void stop();

private:
    uv_timer_t* m_handle; // freed by the loop once it has let go of it
    std::function<void()> m_action;
};

// `co_await sleepFor(loop, 2s)`; dropping the waiting task silences the alarm.
inline auto sleepFor(EventLoop& loop, std::chrono::milliseconds delay) {
    struct Awaiter {
        Timer timer;
        std::chrono::milliseconds delay;
        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiter) {
            timer.start(delay, [waiter] { waiter.resume(); });
        }
        void await_resume() const noexcept {}
    };
    return Awaiter{Timer(loop), delay};
}

} // namespace bridge
