#include "base/timer.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bridge {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

struct TimerTest : testing::Test {
    EventLoop loop;
    Log log;

    auto note(std::string name) {
        return [this, name] { log.push_back(name); };
    }
    // Everything due before this timer's own moment has come by then.
    void runPast(std::chrono::milliseconds delay) {
        Timer end(loop);
        end.start(delay, [this] { loop.stop(); });
        loop.run();
    }
};

TEST_F(TimerTest, FireInTheOrderOfTheirMoments) {
    Timer late(loop);
    Timer early(loop);
    Timer middle(loop);
    late.start(200ms, note("late"));
    middle.start(100ms, note("middle"));
    early.start(0ms, note("early"));
    runPast(201ms);
    EXPECT_EQ(log, (Log{"early", "middle", "late"}));
}

TEST_F(TimerTest, FireOnce) {
    Timer timer(loop);
    timer.start(0ms, note("once"));
    runPast(3ms);
    runPast(3ms);
    EXPECT_EQ(log, (Log{"once"}));
}

TEST_F(TimerTest, StartingAgainSilencesTheFirstAlarm) {
    Timer timer(loop);
    timer.start(1ms, note("first"));
    timer.start(2ms, note("second"));
    runPast(6ms);
    EXPECT_EQ(log, (Log{"second"}));
}

TEST_F(TimerTest, StoppedOneIsSilentAndLetsGoOfItsAction) {
    const auto held = std::make_shared<int>(1);
    Timer timer(loop);
    timer.start(0ms, [this, held] { log.push_back("never"); });
    timer.stop();
    EXPECT_EQ(held.use_count(), 1);
    runPast(3ms);
    EXPECT_TRUE(log.empty());
    timer.stop();
    timer.start(0ms, note("again"));
    runPast(3ms);
    EXPECT_EQ(log, (Log{"again"}));
}

TEST_F(TimerTest, DestroyedOneIsSilent) {
    {
        Timer timer(loop);
        timer.start(0ms, note("never"));
    }
    runPast(3ms);
    EXPECT_TRUE(log.empty());
}

TEST_F(TimerTest, MayBeDestroyedInItsOwnAction) {
    auto timer = std::make_unique<Timer>(loop);
    timer->start(0ms, [this, &timer, name = std::string("long enough to live on the heap")] {
        timer.reset();
        log.push_back(name);
    });
    runPast(3ms);
    EXPECT_EQ(log, (Log{"long enough to live on the heap"}));
}

TEST_F(TimerTest, MayBeStartedAgainInItsOwnAction) {
    Timer timer(loop);
    std::function<void()> tick = [&] {
        log.push_back("tick");
        if (log.size() == 3) return loop.stop();
        timer.start(0ms, tick);
    };
    timer.start(0ms, tick);
    loop.run();
    EXPECT_EQ(log, (Log{"tick", "tick", "tick"}));
}

TEST_F(TimerTest, ActionMayStopAnotherThatIsDueAtTheSameMoment) {
    Timer first(loop);
    Timer second(loop);
    first.start(1ms, [&] {
        log.push_back("first");
        second.stop();
    });
    second.start(1ms, note("second"));
    runPast(5ms);
    // The second may have come due a tick later by its own clock, never after it was stopped.
    EXPECT_EQ(log, (Log{"first"}));
}

TEST_F(TimerTest, NegativeDelayMeansAtOnce) {
    Timer timer(loop);
    timer.start(-5ms, note("due"));
    runPast(3ms);
    EXPECT_EQ(log, (Log{"due"}));
}

Task<> noteAfter(EventLoop& loop, Log& log, std::string name, std::chrono::milliseconds delay) {
    co_await sleepFor(loop, delay);
    log.push_back(name);
}

TEST_F(TimerTest, SleepersWakeInTheirOrder) {
    auto late = noteAfter(loop, log, "late", 100ms);
    auto early = noteAfter(loop, log, "early", 0ms);
    late.start();
    early.start();
    runPast(101ms);
    EXPECT_TRUE(late.done() && early.done());
    EXPECT_EQ(log, (Log{"early", "late"}));
}

TEST_F(TimerTest, DroppedSleeperNeverWakes) {
    {
        auto sleeper = noteAfter(loop, log, "never", 0ms);
        sleeper.start();
    }
    runPast(3ms);
    EXPECT_TRUE(log.empty());
}

} // namespace
} // namespace bridge
