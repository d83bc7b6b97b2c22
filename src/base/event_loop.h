#pragma once

#include "base/task.h"

#include <functional>
#include <memory>

typedef struct uv_loop_s uv_loop_t;

namespace bridge {

// The one loop of the process, on libuv: sockets, timers, and work posted home from other threads. Made, run and
// destroyed on the main thread; only post() and stop() may be called from another. It runs by itself when there is no
// desktop shell; beside one, the shell's own loop watches backendDescriptor() and calls turn().
class EventLoop {
public:
    EventLoop();
    // Handles still open are closed without their owners hearing of it: destroy owners first.
    ~EventLoop();
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    // Runs until stop(). Work posted before is done first.
    void run();
    void stop();

    // Runs `action` on the loop's thread, in posting order, at a later turn. Any thread.
    void post(std::function<void()> action);

    // Calls `action` each time before the loop goes to wait, so that what a turn gathered leaves together.
    void beforeWaiting(std::function<void()> action);

    // Drives the loop until `task` is done. For start-up and tests, not from inside a callback.
    template <typename T> T runUntilDone(Task<T> task) {
        task.start();
        while (!task.done())
            waitOnce();
        return task.take();
    }
    // Waits for at least one event and handles what is ready.
    void waitOnce();

    // For a shell with a loop of its own. turn() handles everything that is ready, without waiting, until nothing is
    // left; it answers whether anything was ready. The beforeWaiting() actions run at its end. aboutToWait() runs them
    // too: for what the shell's own callbacks gathered outside a turn.
    bool turn();
    void aboutToWait();
    int backendDescriptor() const;
    // Milliseconds until the next timer, 0 when something is due, -1 when only an event can wake the loop.
    int backendTimeout() const;

    uv_loop_t* handle() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace bridge
