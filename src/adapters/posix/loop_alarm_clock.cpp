#include "adapters/posix/loop_alarm_clock.h"

namespace bridge {

namespace {

class LoopAlarm : public PendingAlarm {
public:
    LoopAlarm(EventLoop& loop, std::chrono::milliseconds delay, std::function<void()> action) : m_timer(loop) {
        m_timer.start(delay, std::move(action));
    }

private:
    Timer m_timer;
};

} // namespace

std::unique_ptr<PendingAlarm> LoopAlarmClock::set(std::chrono::milliseconds delay, std::function<void()> action) {
    return std::make_unique<LoopAlarm>(m_loop, delay, std::move(action));
}

} // namespace bridge
