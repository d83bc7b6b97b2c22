#include "adapters/glib/glib_loop_source.h"

#include "base/offload.h"
#include "base/timer.h"

#include <functional>
#include <glib.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <uv.h>
#include <vector>

namespace bridge {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

// Nothing but the shell's loop runs here: g_main_context_iteration, waiting or not.
struct GLibLoopSourceTest : testing::Test {
    EventLoop loop;
    std::optional<GLibLoopSource> source{loop};
    Log log;

    template <typename Condition> void runUntil(Condition condition) {
        while (!condition())
            g_main_context_iteration(nullptr, TRUE);
    }
    // Iterations that found something to do before one found nothing. A source that spins never comes to an end.
    int drain() {
        int busy = 0;
        while (busy < 1000 && g_main_context_iteration(nullptr, FALSE))
            ++busy;
        return busy;
    }
};

TEST_F(GLibLoopSourceTest, RunsPostedWorkInOrder) {
    loop.post([this] { log.push_back("a"); });
    loop.post([this] {
        log.push_back("b");
        loop.post([this] { log.push_back("c"); });
    });
    EXPECT_TRUE(log.empty());
    runUntil([this] { return log.size() == 3; });
    EXPECT_EQ(log, (Log{"a", "b", "c"}));
}

TEST_F(GLibLoopSourceTest, IsWokenByAnotherThread) {
    drain();
    std::thread other([this] { loop.post([this] { log.push_back("posted"); }); });
    runUntil([this] { return !log.empty(); });
    other.join();
}

TEST_F(GLibLoopSourceTest, ServesTimers) {
    drain();
    Timer late(loop);
    Timer early(loop);
    late.start(30ms, [this] { log.push_back("late"); });
    early.start(0ms, [this] { log.push_back("early"); });
    runUntil([this] { return log.size() == 2; });
    EXPECT_EQ(log, (Log{"early", "late"}));
}

// The shell is kept busy by a source of its own, as by an animation.
TEST_F(GLibLoopSourceTest, ServesTimersInABusyShell) {
    int frames = 0;
    const guint animation = g_timeout_add(
        1,
        [](gpointer count) -> gboolean {
            ++*static_cast<int*>(count);
            return G_SOURCE_CONTINUE;
        },
        &frames);
    Timer timer(loop);
    timer.start(20ms, [this] { log.push_back("timer"); });
    runUntil([this, &frames] { return !log.empty() && frames > 0; });
    g_source_remove(animation);
}

TEST_F(GLibLoopSourceTest, BringsAWorkersAnswerHome) {
    Worker worker;
    const auto ask = [](EventLoop& home, Worker& hands) -> Task<int> {
        auto call = offload(home, hands, [] { return 7; });
        const int answer = co_await call;
        co_return answer;
    };
    auto task = ask(loop, worker);
    task.start();
    runUntil([&task] { return task.done(); });
    EXPECT_EQ(task.take(), 7);
}

// One end is libuv's, the other the test's.
struct Conversation : GLibLoopSourceTest {
    int ends[2] = {-1, -1};
    uv_pipe_t pipe{};
    std::string received;
    std::string gathered;
    char buffer[64];
    bool ended = false;

    Conversation() {
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends), 0);
        uv_pipe_init(loop.handle(), &pipe, 0);
        EXPECT_EQ(uv_pipe_open(&pipe, ends[0]), 0);
        pipe.data = this;
        auto* stream = reinterpret_cast<uv_stream_t*>(&pipe);
        uv_read_start(
            stream,
            [](uv_handle_t* handle, size_t, uv_buf_t* space) {
                auto* self = static_cast<Conversation*>(handle->data);
                *space = uv_buf_init(self->buffer, sizeof self->buffer);
            },
            [](uv_stream_t* handle, ssize_t count, const uv_buf_t* space) {
                auto* self = static_cast<Conversation*>(handle->data);
                if (count > 0)
                    self->received.append(space->base, static_cast<size_t>(count));
                else
                    self->ended = true;
            });
    }
    ~Conversation() override {
        uv_close(reinterpret_cast<uv_handle_t*>(&pipe), nullptr);
        drain();
        if (ends[1] >= 0) close(ends[1]);
    }
    void say(std::string_view text) {
        ASSERT_EQ(write(ends[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
};

TEST_F(Conversation, IsServedAlthoughItBeganBetweenTurns) {
    say("hello");
    runUntil([this] { return received == "hello"; });
    say(" again");
    runUntil([this] { return received == "hello again"; });
    close(std::exchange(ends[1], -1));
    runUntil([this] { return ended; });
}

TEST_F(Conversation, WhatTheShellGathersLeavesBeforeItWaits) {
    drain();
    loop.beforeWaiting([this] {
        if (gathered.empty()) return;
        const auto text = uv_buf_init(gathered.data(), static_cast<unsigned>(gathered.size()));
        uv_try_write(reinterpret_cast<uv_stream_t*>(&pipe), &text, 1);
        gathered.clear();
    });
    // A callback of the shell, outside any turn of the loop.
    g_idle_add(
        [](gpointer text) -> gboolean {
            static_cast<std::string*>(text)->append("from the dashboard");
            return G_SOURCE_REMOVE;
        },
        &gathered);
    drain();
    char answer[64];
    const auto count = read(ends[1], answer, sizeof answer);
    ASSERT_GT(count, 0);
    EXPECT_EQ(std::string(answer, static_cast<size_t>(count)), "from the dashboard");
}

TEST_F(GLibLoopSourceTest, ActionsBeforeWaitingRunAfterATurnsWork) {
    drain();
    loop.beforeWaiting([this] {
        if (!log.empty() && log.back() != "flush") log.push_back("flush");
    });
    loop.post([this] {
        log.push_back("a");
        loop.post([this] { log.push_back("b"); });
    });
    runUntil([this] { return log.size() >= 2; });
    EXPECT_EQ(log, (Log{"a", "b", "flush"}));
}

TEST_F(GLibLoopSourceTest, DoesNotSpinWhenIdle) {
    Timer farAway(loop);
    farAway.start(1h, [] {});
    EXPECT_LT(drain(), 10);
    EXPECT_EQ(drain(), 0);
    loop.post([this] { log.push_back("once"); });
    EXPECT_GT(drain(), 0);
    EXPECT_EQ(drain(), 0);
    EXPECT_FALSE(g_main_context_pending(nullptr));
}

TEST_F(Conversation, DoesNotSpinOverASilentSocket) {
    EXPECT_LT(drain(), 10);
    EXPECT_EQ(drain(), 0);
    say("x");
    EXPECT_GT(drain(), 0);
    EXPECT_EQ(received, "x");
    EXPECT_EQ(drain(), 0);
}

TEST_F(GLibLoopSourceTest, LetsTheShellsOwnSourcesRunUnderAFlood) {
    std::function<void()> forever = [&] { loop.post(forever); };
    loop.post(forever);
    bool ran = false;
    g_timeout_add(
        0,
        [](gpointer flag) -> gboolean {
            *static_cast<bool*>(flag) = true;
            return G_SOURCE_REMOVE;
        },
        &ran);
    runUntil([&ran] { return ran; });
    forever = [] {};
}

TEST_F(GLibLoopSourceTest, LeavesTheContextWhenDestroyed) {
    loop.post([this] { log.push_back("later"); });
    source.reset();
    EXPECT_EQ(drain(), 0);
    EXPECT_TRUE(log.empty());
    // And the loop can still be run by itself.
    loop.turn();
    EXPECT_EQ(log, (Log{"later"}));
}

TEST_F(GLibLoopSourceTest, MayBeDestroyedInsideATurn) {
    loop.post([this] {
        source.reset();
        log.push_back("gone");
    });
    drain();
    EXPECT_EQ(log, (Log{"gone"}));
    EXPECT_EQ(drain(), 0);
}

} // namespace
} // namespace bridge
