#pragma once

#include "base/timer.h"

#include <memory>
#include <optional>
#include <vector>

namespace bridge {

// Lets one task wait for several others: each add() is answered by one countDown(). Copies are the same latch. On the
// loop's thread; the loop outlives it.
class Latch {
public:
    explicit Latch(EventLoop& loop) : m_state(std::make_shared<State>(loop)) {}

    void add() { ++m_state->left; }
    // The waiting task goes on at a later turn, so whoever counts may be destroyed by it.
    void countDown() {
        if (--m_state->left > 0) return;
        m_state->loop.post([state = m_state] { state->resume(); });
    }

    // `co_await latch.all()`: until nobody is left, or `patience` is at its end.
    auto all(std::optional<std::chrono::milliseconds> patience = std::nullopt) {
        struct Awaiter {
            std::shared_ptr<State> state;
            std::optional<std::chrono::milliseconds> patience;
            Timer timer;
            ~Awaiter() { state->waiter = {}; }
            bool await_ready() const noexcept { return state->left == 0; }
            void await_suspend(std::coroutine_handle<> waiter) {
                state->waiter = waiter;
                if (patience) timer.start(*patience, [shared = state] { shared->resume(); });
            }
            void await_resume() const noexcept {}
        };
        return Awaiter{m_state, patience, Timer(m_state->loop)};
    }

private:
    struct State {
        explicit State(EventLoop& home) : loop(home) {}
        void resume() {
            if (const auto resumed = std::exchange(waiter, {})) resumed.resume();
        }
        EventLoop& loop;
        size_t left = 0;
        std::coroutine_handle<> waiter;
    };
    std::shared_ptr<State> m_state;
};

template <typename T> struct TogetherResult {
    std::optional<T> value;
    std::exception_ptr failure;
};

template <typename T> Task<> runTogether(Task<T> work, TogetherResult<T>& result, Latch latch) {
    try {
        auto value = co_await std::move(work);
        result.value.emplace(std::move(value));
    } catch (...) {
        result.failure = std::current_exception();
    }
    latch.countDown();
}

// All results in the order of the tasks, which run at the same time. Throws what the first failed one in that order
// threw, when all are done.
template <typename T> Task<std::vector<T>> together(EventLoop& loop, std::vector<Task<T>> tasks) {
    std::vector<TogetherResult<T>> results(tasks.size());
    Latch latch(loop);
    std::vector<Task<>> running;
    for (size_t index = 0; index < tasks.size(); ++index) {
        latch.add();
        running.push_back(runTogether(std::move(tasks[index]), results[index], latch));
    }
    for (auto& task : running)
        task.start();
    auto waiting = latch.all();
    co_await waiting;
    std::vector<T> values;
    for (auto& result : results) {
        if (result.failure) std::rethrow_exception(result.failure);
        values.push_back(std::move(*result.value));
    }
    co_return values;
}

} // namespace bridge
