#include "base/event_loop.h"

#include "base/platform_error.h"

#include <mutex>
#include <poll.h>
#include <uv.h>
#include <vector>

namespace bridge {

struct EventLoop::State {
    uv_loop_t loop{};
    uv_async_t wake{};
    uv_prepare_t prepare{};
    std::vector<std::function<void()>> beforeWaiting;
    bool stopping = false;
    bool turning = false;

    std::mutex mutex; // guards what follows, the only state other threads touch
    std::vector<std::function<void()>> posted;
    bool stopRequested = false;

    void runPosted() {
        std::vector<std::function<void()>> actions;
        {
            std::lock_guard lock(mutex);
            actions.swap(posted);
            stopping = stopping || stopRequested;
            stopRequested = false;
        }
        for (auto& action : actions)
            action();
    }

    void runBeforeWaiting() {
        for (auto& action : beforeWaiting)
            action();
    }
};

EventLoop::EventLoop() : m_state(std::make_unique<State>()) {
    if (const int code = uv_loop_init(&m_state->loop))
        throw PlatformError(std::string("No event loop: ") + uv_strerror(code));
    m_state->wake.data = m_state.get();
    uv_async_init(&m_state->loop, &m_state->wake,
                  [](uv_async_t* wake) { static_cast<State*>(wake->data)->runPosted(); });
    m_state->prepare.data = m_state.get();
    uv_prepare_init(&m_state->loop, &m_state->prepare);
    uv_prepare_start(&m_state->prepare, [](uv_prepare_t* prepare) {
        // The passes of a turn don't wait; what they gather leaves together at its end.
        if (auto* state = static_cast<State*>(prepare->data); !state->turning) state->runBeforeWaiting();
    });
}

EventLoop::~EventLoop() {
    // What these actions own may own handles, which need the loop to close.
    m_state->beforeWaiting.clear();
    std::vector<std::function<void()>> dropped;
    {
        std::lock_guard lock(m_state->mutex);
        dropped.swap(m_state->posted);
    }
    dropped.clear();
    uv_walk(
        &m_state->loop,
        [](uv_handle_t* handle, void*) {
            if (!uv_is_closing(handle)) uv_close(handle, nullptr);
        },
        nullptr);
    uv_run(&m_state->loop, UV_RUN_DEFAULT);
    uv_loop_close(&m_state->loop);
}

void EventLoop::run() {
    m_state->runPosted();
    while (!m_state->stopping)
        uv_run(&m_state->loop, UV_RUN_ONCE);
    m_state->stopping = false;
}

void EventLoop::stop() {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->stopRequested = true;
    }
    uv_async_send(&m_state->wake);
}

void EventLoop::post(std::function<void()> action) {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->posted.push_back(std::move(action));
    }
    uv_async_send(&m_state->wake);
}

void EventLoop::beforeWaiting(std::function<void()> action) {
    m_state->beforeWaiting.push_back(std::move(action));
}

void EventLoop::waitOnce() {
    uv_run(&m_state->loop, UV_RUN_ONCE);
}

bool EventLoop::turn() {
    // One pass handles one batch of events. Going back to the shell's own poll between batches costs half as much again
    // per request, so drain until a pass finds nothing; the bound keeps the shell alive under a flood.
    constexpr int maximumPasses = 64;
    pollfd events{backendDescriptor(), POLLIN, 0};
    int passes = 0;
    m_state->turning = true;
    while (passes < maximumPasses && (backendTimeout() == 0 || poll(&events, 1, 0) > 0)) {
        uv_run(&m_state->loop, UV_RUN_NOWAIT);
        ++passes;
    }
    m_state->turning = false;
    aboutToWait();
    return passes > 0;
}

void EventLoop::aboutToWait() {
    m_state->runBeforeWaiting();
}

int EventLoop::backendDescriptor() const {
    return uv_backend_fd(&m_state->loop);
}

int EventLoop::backendTimeout() const {
    // Counted from now: by the time of the last turn each question would put the next timer off afresh.
    uv_update_time(&m_state->loop);
    return uv_backend_timeout(&m_state->loop);
}

uv_loop_t* EventLoop::handle() const {
    return &m_state->loop;
}

} // namespace bridge
