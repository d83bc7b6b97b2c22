#pragma once

#include "base/event_loop.h"
#include "base/worker.h"

#include <coroutine>
#include <exception>
#include <memory>
#include <optional>
#include <type_traits>

namespace bridge {

namespace detail {

// Shared by the waiting task and the job, because either may be gone first. `waiter` belongs to the loop's thread;
// `value` and `failure` to the worker until it posts home, then to the loop.
template <typename T> struct OffloadState {
    std::coroutine_handle<> waiter;
    std::optional<T> value;
    std::exception_ptr failure;
};

} // namespace detail

// Runs the job on the worker and comes home to the loop with its result or its exception:
//
//     auto call = offload(loop, worker, [copy = values] { return blockingCall(copy); });
//     const auto answer = co_await call;
//
// Two statements: g++ 12 destroys a lambda that is written inside the awaiting one twice. `job` owns what it uses and
// returns a value. If the waiting task is dropped meanwhile the job still finishes, and its answer goes nowhere. The
// loop outlives the worker.
template <typename Job> auto offload(EventLoop& loop, Worker& worker, Job job) {
    using Result = std::invoke_result_t<Job>;
    static_assert(!std::is_void_v<Result> && !std::is_reference_v<Result>);
    using State = detail::OffloadState<Result>;

    struct Awaiter {
        EventLoop& loop;
        Worker& worker;
        Job job;
        std::shared_ptr<State> state = std::make_shared<State>();

        Awaiter(EventLoop& home, Worker& hands, Job work) : loop(home), worker(hands), job(std::move(work)) {}
        Awaiter(const Awaiter&) = delete;
        Awaiter& operator=(const Awaiter&) = delete;
        ~Awaiter() { state->waiter = {}; }

        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> waiter) {
            state->waiter = waiter;
            worker.run([shared = state, &home = loop, work = std::move(job)]() mutable {
                try {
                    shared->value.emplace(work());
                } catch (...) {
                    shared->failure = std::current_exception();
                }
                home.post([shared = std::move(shared)] {
                    if (shared->waiter) shared->waiter.resume();
                });
            });
        }
        Result await_resume() {
            if (state->failure) std::rethrow_exception(state->failure);
            return std::move(*state->value);
        }
    };
    return Awaiter(loop, worker, std::move(job));
}

} // namespace bridge
