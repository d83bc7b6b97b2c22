#include "base/event_loop.h"

#include "base/timer.h"
#include "tests/support/becomes_true.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <uv.h>
#include <vector>

namespace bridge {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

TEST(EventLoop, RunsWhatWasPostedInOrder) {
    EventLoop loop;
    std::vector<int> order;
    for (int index = 0; index < 100; ++index)
        loop.post([&order, index] { order.push_back(index); });
    EXPECT_TRUE(order.empty());
    loop.post([&loop] { loop.stop(); });
    loop.run();
    ASSERT_EQ(order.size(), 100u);
    for (int index = 0; index < 100; ++index)
        EXPECT_EQ(order[static_cast<size_t>(index)], index);
}

TEST(EventLoop, KeepsEachThreadsOrder) {
    constexpr int threadCount = 4;
    constexpr int perThread = 500;
    EventLoop loop;
    const auto home = std::this_thread::get_id();
    std::vector<std::vector<int>> seen(threadCount);
    int left = threadCount * perThread;
    bool strayed = false;
    std::vector<std::thread> threads;
    for (int number = 0; number < threadCount; ++number)
        threads.emplace_back([&, number] {
            for (int index = 0; index < perThread; ++index)
                loop.post([&, number, index] {
                    strayed = strayed || std::this_thread::get_id() != home;
                    seen[static_cast<size_t>(number)].push_back(index);
                    if (--left == 0) loop.stop();
                });
        });
    loop.run();
    for (auto& thread : threads)
        thread.join();
    EXPECT_FALSE(strayed);
    for (const auto& order : seen) {
        ASSERT_EQ(order.size(), static_cast<size_t>(perThread));
        EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
    }
}

TEST(EventLoop, WhatAnActionPostsComesAtALaterTurn) {
    EventLoop loop;
    Log log;
    loop.post([&] {
        loop.post([&] {
            log.push_back("later");
            loop.stop();
        });
        log.push_back("first");
    });
    loop.post([&] { log.push_back("second"); });
    loop.run();
    EXPECT_EQ(log, (Log{"first", "second", "later"}));
}

TEST(EventLoop, StopsWhenAnotherThreadSaysSo) {
    EventLoop loop;
    std::thread other([&loop] { loop.stop(); });
    loop.run();
    other.join();
}

TEST(EventLoop, StopBeforeRunEndsThatRunOnly) {
    EventLoop loop;
    int ran = 0;
    loop.post([&ran] { ++ran; });
    loop.stop();
    loop.run();
    EXPECT_EQ(ran, 1);
    loop.post([&] {
        ++ran;
        loop.stop();
    });
    loop.run();
    EXPECT_EQ(ran, 2);
}

Task<int> afterTwoSleeps(EventLoop& loop) {
    co_await sleepFor(loop, 1ms);
    co_await sleepFor(loop, 0ms);
    co_return 5;
}

TEST(EventLoop, RunsUntilATaskIsDone) {
    EventLoop loop;
    EXPECT_EQ(loop.runUntilDone(afterTwoSleeps(loop)), 5);
}

TEST(EventLoop, ThrowsWhatTheTaskThrew) {
    EventLoop loop;
    const auto fail = [](EventLoop& home) -> Task<int> {
        co_await sleepFor(home, 0ms);
        throw std::runtime_error("failed");
    };
    EXPECT_THROW(loop.runUntilDone(fail(loop)), std::runtime_error);
}

TEST(EventLoop, ActionsBeforeWaitingRunAfterATurnsWork) {
    EventLoop loop;
    Log log;
    loop.beforeWaiting([&] {
        if (!log.empty() && log.back() != "flush") log.push_back("flush");
    });
    loop.post([&] { log.push_back("a"); });
    loop.post([&] {
        log.push_back("b");
        loop.post([&] { loop.post([&] { loop.stop(); }); });
    });
    loop.run();
    EXPECT_EQ(log, (Log{"a", "b", "flush"}));
}

TEST(EventLoop, WorkLeftAtTheEndIsDroppedWithWhatItOwns) {
    const auto held = std::make_shared<int>(1);
    {
        EventLoop loop;
        // It owns a handle of the very loop that goes.
        const auto timer = std::make_shared<Timer>(loop);
        loop.post([held, timer] { FAIL(); });
        loop.beforeWaiting([held, timer] {});
        EXPECT_EQ(held.use_count(), 3);
    }
    EXPECT_EQ(held.use_count(), 1);
}

// The shell's side. A turn never waits, so each of these would hang nowhere and must find its work by itself.

TEST(EventLoopTurn, SaysWhetherAnythingWasReady) {
    EventLoop loop;
    while (loop.turn()) {
    }
    EXPECT_EQ(loop.backendTimeout(), -1);
    bool ran = false;
    loop.post([&ran] { ran = true; });
    EXPECT_TRUE(loop.turn());
    EXPECT_TRUE(ran);
    EXPECT_FALSE(loop.turn());
    EXPECT_FALSE(loop.turn());
}

TEST(EventLoopTurn, DrainsWhatFollowsFromItsWork) {
    EventLoop loop;
    int depth = 0;
    std::function<void()> again = [&] {
        if (++depth < 20) loop.post(again);
    };
    loop.post(again);
    EXPECT_TRUE(loop.turn());
    EXPECT_EQ(depth, 20);
    EXPECT_FALSE(loop.turn());
}

TEST(EventLoopTurn, ComesBackToTheShellUnderAFlood) {
    EventLoop loop;
    int ran = 0;
    std::function<void()> forever = [&] {
        ++ran;
        loop.post(forever);
    };
    loop.post(forever);
    EXPECT_TRUE(loop.turn());
    EXPECT_GT(ran, 1);
    const int before = ran;
    EXPECT_TRUE(loop.turn());
    EXPECT_GT(ran, before);
}

TEST(EventLoopTurn, KnowsADueTimer) {
    EventLoop loop;
    while (loop.turn()) {
    }
    bool fired = false;
    Timer timer(loop);
    timer.start(0ms, [&fired] { fired = true; });
    EXPECT_EQ(loop.backendTimeout(), 0);
    EXPECT_TRUE(loop.turn());
    EXPECT_TRUE(fired);
    EXPECT_EQ(loop.backendTimeout(), -1);
}

// A shell is woken by much that is not ours. If each look at the clock began anew, the timer would never come.
TEST(EventLoopTurn, TimeToTheNextTimerRunsOutWithoutATurn) {
    EventLoop loop;
    Timer timer(loop);
    timer.start(5ms, [] {});
    EXPECT_TRUE(becomesTrue([&loop] { return loop.backendTimeout() == 0; }));
    EXPECT_TRUE(loop.turn());
}

TEST(EventLoopTurn, RunsTheActionsBeforeWaitingOnceAfterAllItsWork) {
    EventLoop loop;
    Log log;
    loop.beforeWaiting([&] { log.push_back("flush"); });
    loop.post([&] {
        log.push_back("a");
        loop.post([&] { log.push_back("b"); });
    });
    loop.turn();
    EXPECT_EQ(log, (Log{"a", "b", "flush"}));
    loop.aboutToWait();
    EXPECT_EQ(log.size(), 4u);
}

struct SocketPair {
    int ends[2] = {-1, -1};
    SocketPair() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends), 0); }
    ~SocketPair() {
        close(ends[0]);
        close(ends[1]);
    }
};

// libuv only tells the kernel of a new descriptor inside a turn; a shell that just watched the backend would sleep on.
TEST(EventLoopTurn, ServesADescriptorThatWasAddedBetweenTurns) {
    SocketPair pair;
    EventLoop loop;
    while (loop.turn()) {
    }
    std::string received;
    uv_poll_t poll{};
    poll.data = &received;
    ASSERT_EQ(uv_poll_init(loop.handle(), &poll, pair.ends[0]), 0);
    uv_poll_start(&poll, UV_READABLE, [](uv_poll_t* handle, int, int) {
        int descriptor;
        uv_fileno(reinterpret_cast<uv_handle_t*>(handle), &descriptor);
        char buffer[16];
        const auto count = read(descriptor, buffer, sizeof buffer);
        if (count > 0) static_cast<std::string*>(handle->data)->append(buffer, static_cast<size_t>(count));
    });
    ASSERT_EQ(write(pair.ends[1], "hello", 5), 5);
    EXPECT_EQ(loop.backendTimeout(), 0);
    EXPECT_TRUE(loop.turn());
    EXPECT_EQ(received, "hello");
    EXPECT_FALSE(loop.turn());
    ASSERT_EQ(write(pair.ends[1], "!", 1), 1);
    EXPECT_TRUE(loop.turn());
    EXPECT_EQ(received, "hello!");
    uv_close(reinterpret_cast<uv_handle_t*>(&poll), nullptr);
    EXPECT_TRUE(loop.turn());
}

} // namespace
} // namespace bridge
