#include "base/async_mutex.h"

#include "base/task.h"
#include "gate.h"

#include <gtest/gtest.h>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bridge {
namespace {

using Log = std::vector<std::string>;

Task<> hold(AsyncMutex& mutex, Gate& gate, Log& log, std::string name) {
    const auto guard = co_await mutex.lock();
    log.push_back(name + " in");
    co_await gate.opened();
    log.push_back(name + " out");
}

Task<> pass(AsyncMutex& mutex, Log& log, std::string name) {
    const auto guard = co_await mutex.lock();
    log.push_back(name);
}

struct AsyncMutexTest : testing::Test {
    Task<> start(Task<> task) {
        task.start();
        return task;
    }

    AsyncMutex mutex;
    Gate gate;
    Gate other;
    Log log;
};

TEST_F(AsyncMutexTest, IsFreeAtFirstAndAfterEachUse) {
    const auto first = start(pass(mutex, log, "first"));
    const auto second = start(pass(mutex, log, "second"));
    EXPECT_EQ(log, (Log{"first", "second"}));
}

TEST_F(AsyncMutexTest, ServesInTheOrderOfAsking) {
    const auto holder = start(hold(mutex, gate, log, "a"));
    const auto b = start(hold(mutex, other, log, "b"));
    const auto c = start(pass(mutex, log, "c"));
    const auto d = start(pass(mutex, log, "d"));
    EXPECT_EQ(log, (Log{"a in"}));
    gate.open();
    EXPECT_EQ(log, (Log{"a in", "a out", "b in"}));
    other.open();
    EXPECT_EQ(log, (Log{"a in", "a out", "b in", "b out", "c", "d"}));
}

TEST_F(AsyncMutexTest, OneThatIsDroppedInTheQueueIsPassedOver) {
    const auto holder = start(hold(mutex, gate, log, "a"));
    std::optional<Task<>> b = start(pass(mutex, log, "b"));
    const auto c = start(pass(mutex, log, "c"));
    b.reset();
    gate.open();
    EXPECT_EQ(log, (Log{"a in", "a out", "c"}));
}

TEST_F(AsyncMutexTest, IsReleasedByAHolderThatIsDropped) {
    std::optional<Task<>> holder = start(hold(mutex, gate, log, "a"));
    const auto b = start(hold(mutex, other, log, "b"));
    const auto c = start(pass(mutex, log, "c"));
    holder.reset();
    EXPECT_EQ(log, (Log{"a in", "b in"}));
    other.open();
    EXPECT_EQ(log, (Log{"a in", "b in", "b out", "c"}));
    const auto d = start(pass(mutex, log, "d"));
    EXPECT_EQ(log.back(), "d");
}

TEST_F(AsyncMutexTest, OneThatAsksAgainGoesToTheEndOfTheQueue) {
    const auto twice = [](AsyncMutex& asked, Log& notes) -> Task<> {
        for (int round = 0; round < 2; ++round) {
            const auto guard = co_await asked.lock();
            notes.push_back("twice");
        }
    };
    const auto holder = start(hold(mutex, gate, log, "a"));
    const auto b = start(twice(mutex, log));
    const auto c = start(pass(mutex, log, "c"));
    gate.open();
    EXPECT_EQ(log, (Log{"a in", "a out", "twice", "c", "twice"}));
}

TEST_F(AsyncMutexTest, WholeQueueMayBeDroppedBeforeItsHolder) {
    auto holder = std::make_unique<Task<>>(start(hold(mutex, gate, log, "a")));
    std::list<Task<>> queue;
    for (int index = 0; index < 10; ++index)
        queue.push_back(start(pass(mutex, log, "queued")));
    queue.clear();
    holder.reset();
    EXPECT_EQ(log, (Log{"a in"}));
    const auto late = start(pass(mutex, log, "late"));
    EXPECT_EQ(log.back(), "late");
}

TEST_F(AsyncMutexTest, LongQueueDoesNotGrowTheStack) {
    const auto holder = start(hold(mutex, gate, log, "a"));
    std::vector<Task<>> queue;
    for (int index = 0; index < 200'000; ++index)
        queue.push_back(start(pass(mutex, log, "x")));
    gate.open();
    EXPECT_EQ(log.size(), 200'002u);
    for (const auto& task : queue)
        ASSERT_TRUE(task.done());
}

} // namespace
} // namespace bridge
