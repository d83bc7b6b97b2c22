#include "base/task_set.h"

#include "base/async_mutex.h"
#include "tests/base/gate.h"

#include <gtest/gtest.h>
#include <list>
#include <optional>
#include <stdexcept>

namespace bridge {
namespace {

class TaskSetTest : public testing::Test {
protected:
    Task<> wait(Gate& gate) {
        co_await gate.opened();
        ++ended;
    }
    Task<> takeTurn(Gate& gate) {
        const auto turn = co_await mutex.lock();
        ++begun;
        co_await gate.opened();
        ++ended;
    }
    static Task<> fail(Gate& gate) {
        co_await gate.opened();
        throw std::runtime_error("on purpose");
    }

    AsyncMutex mutex;
    std::list<Gate> gates{3};
    Gate& first = gates.front();
    Gate& last = gates.back();
    int begun = 0;
    int ended = 0;
    std::optional<TaskSet> tasks{std::in_place};
};

TEST_F(TaskSetTest, KeepsTasksUntilTheyAreDone) {
    EXPECT_TRUE(tasks->isEmpty());
    tasks->start(wait(first));
    tasks->start(wait(last));
    EXPECT_FALSE(tasks->isEmpty());
    last.open();
    EXPECT_FALSE(tasks->isEmpty());
    first.open();
    EXPECT_TRUE(tasks->isEmpty());
    EXPECT_EQ(ended, 2);
}

TEST_F(TaskSetTest, DropsTheRest) {
    tasks->start(wait(first));
    tasks->start(wait(last));
    tasks.reset();
    EXPECT_EQ(first.withdrawn() + last.withdrawn(), 2);
    EXPECT_EQ(ended, 0);
}

TEST_F(TaskSetTest, GivesNobodyATurnWhileItGoes) {
    for (auto& gate : gates)
        tasks->start(takeTurn(gate));
    EXPECT_EQ(begun, 1);
    tasks.reset();
    EXPECT_EQ(begun, 1);
}

TEST_F(TaskSetTest, ATaskThatFailsLeavesTheOthers) {
    tasks->start(fail(first));
    tasks->start(wait(last));
    first.open();
    tasks->start(wait(first));
    last.open();
    first.open();
    EXPECT_EQ(ended, 2);
    EXPECT_TRUE(tasks->isEmpty());
}

} // namespace
} // namespace bridge
