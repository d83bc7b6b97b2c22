#include "base/keyed_mutex.h"

#include "gate.h"

#include <gtest/gtest.h>
#include <optional>
#include <vector>

namespace bridge {
namespace {

using Log = std::vector<std::string>;

Task<> hold(KeyedMutex& locks, std::string key, Gate& gate, Log& log, std::string name) {
    const auto guard = co_await locks.lock(key);
    log.push_back(name + " in");
    co_await gate.opened();
    log.push_back(name + " out");
}

Task<> pass(KeyedMutex& locks, std::string key, Log& log, std::string name) {
    const auto guard = co_await locks.lock(key);
    log.push_back(name);
}

Task<> start(Task<> task) {
    task.start();
    return task;
}

struct KeyedMutexTest : testing::Test {
    KeyedMutex locks;
    Gate gate;
    Gate other;
    Log log;
};

TEST_F(KeyedMutexTest, HoldsUpTheSameNameAlone) {
    const auto holder = start(hold(locks, "a", gate, log, "first"));
    const auto same = start(pass(locks, "a", log, "same"));
    const auto different = start(pass(locks, "b", log, "different"));
    EXPECT_EQ(log, (Log{"first in", "different"}));
    gate.open();
    EXPECT_EQ(log, (Log{"first in", "different", "first out", "same"}));
}

TEST_F(KeyedMutexTest, ServesInTheOrderOfAsking) {
    const auto first = start(hold(locks, "a", gate, log, "first"));
    const auto second = start(hold(locks, "a", other, log, "second"));
    const auto third = start(pass(locks, "a", log, "third"));
    gate.open();
    EXPECT_EQ(log, (Log{"first in", "first out", "second in"}));
    other.open();
    EXPECT_EQ(log, (Log{"first in", "first out", "second in", "second out", "third"}));
}

TEST_F(KeyedMutexTest, IsReleasedByWhoeverIsDropped) {
    std::optional holder = start(hold(locks, "a", gate, log, "holder"));
    std::optional queued = start(pass(locks, "a", log, "queued"));
    const auto last = start(pass(locks, "a", log, "last"));
    queued.reset();
    EXPECT_EQ(log, (Log{"holder in"}));
    holder.reset();
    EXPECT_EQ(log, (Log{"holder in", "last"}));
}

TEST_F(KeyedMutexTest, ForgetsTheNamesThatNobodyUses) {
    const auto holder = start(hold(locks, "held", gate, log, "holder"));
    for (int index = 0; index < 100; ++index)
        const auto passer = start(pass(locks, std::to_string(index), log, "passer"));
    EXPECT_LE(locks.size(), 2u);
}

} // namespace
} // namespace bridge
