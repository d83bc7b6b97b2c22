#include "adapters/posix/system_clock.h"

#include <ctime>
#include <gtest/gtest.h>

namespace bridge {
namespace {

TEST(SystemClock, TellsTheSystemsTimeInWholeSeconds) {
    const auto before = time(nullptr);
    const auto now = SystemClock().now().secondsSince1970;
    // time() may lag a tick behind the finer clock.
    EXPECT_GE(now, before);
    EXPECT_LE(now, time(nullptr) + 1);
}

TEST(SystemClock, NeverGoesBack) {
    const SystemClock clock;
    auto last = clock.uptime();
    for (int round = 0; round < 1000; ++round) {
        const auto next = clock.uptime();
        EXPECT_GE(next, last);
        last = next;
    }
}

} // namespace
} // namespace bridge
