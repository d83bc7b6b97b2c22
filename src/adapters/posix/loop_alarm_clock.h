#pragma once

#include "base/timer.h"
#include "platform/alarm_clock.h"

namespace bridge {

// Alarms of the event loop, whose timers go by the monotonic clock. The loop outlives it.
class LoopAlarmClock : public AlarmClock {
public:
    explicit LoopAlarmClock(EventLoop& loop) : m_loop(loop) {}

    std::unique_ptr<PendingAlarm> set(std::chrono::milliseconds delay, std::function<void()> action) override;

private:
    EventLoop& m_loop;
};

} // namespace bridge
