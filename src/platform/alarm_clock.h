#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace bridge {

// Something that is to be done later. Whoever destroys it doesn't want it any more: it is silent from then on, but for
// one that was on its way already.
class PendingAlarm {
public:
    virtual ~PendingAlarm() = default;
};

// Does things later, on the main thread, by a clock that is never set. Main thread only.
class AlarmClock {
public:
    virtual ~AlarmClock() = default;

    // Runs `action` once, at least `delay` from now and as soon after that as the thread is free; never from inside
    // this call. The alarm may be destroyed by its own action. Alarms don't outlive their clock.
    [[nodiscard]] virtual std::unique_ptr<PendingAlarm> set(std::chrono::milliseconds delay,
                                                            std::function<void()> action) = 0;
};

} // namespace bridge
