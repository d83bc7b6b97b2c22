#include "base/task.h"

#include "gate.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace bridge {
namespace {

Task<int> ready(int value) {
    co_return value;
}

Task<> readyVoid() {
    co_return;
}

Task<int> afterGate(Gate& gate, int value) {
    co_await gate.opened();
    co_return value;
}

// One that fails, at once or after a wait.
Task<int> failing() {
    throw std::runtime_error("at once");
    co_return 0;
}
Task<int> failingAfter(Gate& gate) {
    co_await gate.opened();
    throw std::runtime_error("later");
}

Task<int> doubled(Task<int> child) {
    const int value = co_await std::move(child);
    co_return 2 * value;
}

Task<std::string> described(Task<int> child) {
    std::string text;
    try {
        const int value = co_await std::move(child);
        text = std::to_string(value);
    } catch (const std::runtime_error& error) {
        text = error.what();
    }
    co_return text;
}

Task<long> sumOfReady(long count) {
    long sum = 0;
    for (long index = 0; index < count; ++index) {
        const int one = co_await ready(1);
        co_await readyVoid();
        sum += one;
    }
    co_return sum;
}

Task<long> sumOfWaits(Gate& gate, long count) {
    long sum = 0;
    for (long index = 0; index < count; ++index) {
        const int one = co_await afterGate(gate, 1);
        sum += one;
    }
    co_return sum;
}

TEST(Task, DoesNothingBeforeItIsStarted) {
    bool began = false;
    const auto note = [](bool& flag) -> Task<> {
        flag = true;
        co_return;
    };
    auto task = note(began);
    EXPECT_FALSE(began);
    EXPECT_FALSE(task.done());
    task.start();
    EXPECT_TRUE(began);
    EXPECT_TRUE(task.done());
}

TEST(Task, ThatIsDroppedUnstartedGivesBackItsParameters) {
    const auto held = std::make_shared<int>(1);
    const auto hold = [](std::shared_ptr<int>) -> Task<> { co_return; };
    {
        auto task = hold(held);
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
}

// Three million frames, or even the three million resumptions, would overflow any stack.
TEST(Task, LoopOverReadyTasksDoesNotGrowTheStack) {
    auto task = sumOfReady(1'500'000);
    task.start();
    ASSERT_TRUE(task.done());
    EXPECT_EQ(task.take(), 1'500'000);
}

TEST(Task, LoopOverWaitingTasksDoesNotGrowTheStack) {
    Gate gate;
    auto task = sumOfWaits(gate, 300'000);
    task.start();
    while (!task.done())
        gate.open();
    EXPECT_EQ(task.take(), 300'000);
}

TEST(Task, ResultComesAfterTheWait) {
    Gate gate;
    auto task = doubled(afterGate(gate, 21));
    task.start();
    EXPECT_FALSE(task.done());
    gate.open();
    ASSERT_TRUE(task.done());
    EXPECT_EQ(task.take(), 42);
}

TEST(Task, ResultMayBeMoveOnly) {
    const auto make = []() -> Task<std::unique_ptr<int>> { co_return std::make_unique<int>(5); };
    auto task = make();
    task.start();
    EXPECT_EQ(*task.take(), 5);
}

TEST(Task, ExceptionReachesWhoeverTakesTheResult) {
    auto task = doubled(failing());
    task.start();
    ASSERT_TRUE(task.done());
    EXPECT_THROW(task.take(), std::runtime_error);
}

TEST(Task, ExceptionAfterAWaitTravelsUpTheChain) {
    Gate gate;
    auto task = doubled(doubled(failingAfter(gate)));
    task.start();
    EXPECT_FALSE(task.done());
    gate.open();
    ASSERT_TRUE(task.done());
    EXPECT_THROW(task.take(), std::runtime_error);
}

TEST(Task, ExceptionMayBeCaughtOnTheWay) {
    Gate gate;
    auto atOnce = described(failing());
    auto later = described(failingAfter(gate));
    atOnce.start();
    later.start();
    gate.open();
    EXPECT_EQ(atOnce.take(), "at once");
    EXPECT_EQ(later.take(), "later");
}

struct Logged {
    std::vector<std::string>& log;
    std::string name;
    ~Logged() { log.push_back(name); }
};

Task<int> innermost(Gate& gate, std::vector<std::string>& log) {
    const Logged logged{log, "innermost"};
    co_await gate.opened();
    co_return 1;
}
Task<int> middle(Gate& gate, std::vector<std::string>& log) {
    const Logged logged{log, "middle"};
    const int value = co_await innermost(gate, log);
    co_return value;
}
Task<int> outermost(Gate& gate, std::vector<std::string>& log) {
    const Logged logged{log, "outermost"};
    const int value = co_await middle(gate, log);
    log.push_back("never");
    co_return value;
}

TEST(Task, DroppingTheRootDestroysTheChainAndWithdrawsFromTheWait) {
    Gate gate;
    std::vector<std::string> log;
    {
        auto root = outermost(gate, log);
        root.start();
        EXPECT_TRUE(gate.isAwaited());
        EXPECT_TRUE(log.empty());
    }
    EXPECT_EQ(log, (std::vector<std::string>{"innermost", "middle", "outermost"}));
    EXPECT_FALSE(gate.isAwaited());
    EXPECT_EQ(gate.withdrawn(), 1);
    gate.open(); // nobody there any more
}

TEST(Task, AssigningOverATaskDropsTheOldOne) {
    Gate first;
    Gate second;
    auto task = afterGate(first, 1);
    task.start();
    task = afterGate(second, 2);
    EXPECT_EQ(first.withdrawn(), 1);
    task.start();
    second.open();
    EXPECT_EQ(task.take(), 2);
}

// A chain that ends may take its own root along: a connection's task that closes the connection does.
TEST(Task, WaiterMayDestroyTheFinishedChild) {
    Gate gate;
    const auto dropChild = [](Gate& opened) -> Task<int> {
        std::optional<Task<int>> child = afterGate(opened, 3);
        const int value = co_await std::move(*child);
        child.reset();
        co_return value;
    };
    auto task = dropChild(gate);
    task.start();
    gate.open();
    EXPECT_EQ(task.take(), 3);
}

} // namespace
} // namespace bridge
