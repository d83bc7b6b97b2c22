#include "base/timer.h"

#include <algorithm>
#include <uv.h>

namespace bridge {

Timer::Timer(EventLoop& loop) : m_handle(new uv_timer_t) {
    uv_timer_init(loop.handle(), m_handle);
    m_handle->data = this;
}

Timer::~Timer() {
    uv_close(reinterpret_cast<uv_handle_t*>(m_handle),
             [](uv_handle_t* handle) { delete reinterpret_cast<uv_timer_t*>(handle); });
}

void Timer::start(std::chrono::milliseconds delay, std::function<void()> action) {
    m_action = std::move(action);
    // The loop's idea of now is as old as its last turn. Counting from there, the alarm would come early.
    uv_update_time(m_handle->loop);
    uv_timer_start(
        m_handle,
        [](uv_timer_t* handle) {
            // Moved out first: the action may destroy this timer.
            const auto due = std::move(static_cast<Timer*>(handle->data)->m_action);
            due();
        },
        static_cast<uint64_t>(std::max<int64_t>(delay.count(), 0)), 0);
}

void Timer::stop() {
    uv_timer_stop(m_handle);
    m_action = nullptr;
}

} // namespace bridge
