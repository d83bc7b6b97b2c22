#include "adapters/posix/loop_alarm_clock.h"

#include <gtest/gtest.h>
#include <string>

namespace bridge {
namespace {

using namespace std::chrono_literals;

class LoopAlarmClockTest : public testing::Test {
protected:
    std::unique_ptr<PendingAlarm> set(std::chrono::milliseconds delay, char letter) {
        return clock.set(delay, [this, letter] { rung += letter; });
    }
    void waitFor(size_t count) {
        while (rung.size() < count)
            loop.waitOnce();
    }

    EventLoop loop;
    LoopAlarmClock clock{loop};
    std::string rung;
};

TEST_F(LoopAlarmClockTest, RingsLaterAndOnce) {
    const auto first = set(0ms, 'a');
    EXPECT_EQ(rung, "");
    const auto last = set(2ms, 'b');
    waitFor(2);
    EXPECT_EQ(rung, "ab");
}

TEST_F(LoopAlarmClockTest, RingsNotBeforeItsTime) {
    const auto before = std::chrono::steady_clock::now();
    const auto alarm = set(5ms, 'a');
    waitFor(1);
    // libuv counts whole milliseconds, and may have been within one when it began.
    EXPECT_GE(std::chrono::steady_clock::now() - before, 4ms);
}

TEST_F(LoopAlarmClockTest, IsSilentWhenNobodyWantsItAnyMore) {
    { const auto unwanted = set(0ms, 'a'); }
    const auto wanted = set(1ms, 'b');
    waitFor(1);
    EXPECT_EQ(rung, "b");
}

TEST_F(LoopAlarmClockTest, CanBeDestroyedByItsOwnAction) {
    std::unique_ptr<PendingAlarm> alarm;
    alarm = clock.set(0ms, [&] {
        alarm.reset();
        rung += 'a';
    });
    waitFor(1);
    EXPECT_FALSE(alarm);
}

} // namespace
} // namespace bridge
