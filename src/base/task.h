#pragma once

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace bridge {

template <typename T> class Task;

namespace detail {

// Resumes whoever awaits the finished task. The waiter may destroy the finished frame, so nothing of it is touched
// afterwards.
struct FinalAwaiter {
    bool await_ready() const noexcept { return false; }
    template <typename Promise> void await_suspend(std::coroutine_handle<Promise> finished) const noexcept {
        if (auto waiter = std::exchange(finished.promise().waiter, {})) waiter.resume();
    }
    void await_resume() const noexcept {}
};

struct TaskPromiseBase {
    std::coroutine_handle<> waiter;
    std::exception_ptr failure;

    std::suspend_always initial_suspend() const noexcept { return {}; }
    FinalAwaiter final_suspend() const noexcept { return {}; }
    void unhandled_exception() noexcept { failure = std::current_exception(); }
};

template <typename T> struct TaskPromise : TaskPromiseBase {
    std::optional<T> value;

    Task<T> get_return_object();
    void return_value(T result) { value.emplace(std::move(result)); }
    T take() {
        if (failure) std::rethrow_exception(std::exchange(failure, nullptr));
        return std::move(*value);
    }
};

template <> struct TaskPromise<void> : TaskPromiseBase {
    Task<void> get_return_object();
    void return_void() const noexcept {}
    void take() {
        if (failure) std::rethrow_exception(std::exchange(failure, nullptr));
    }
};

} // namespace detail

// A piece of work that may wait. Lazy: it begins when it is awaited, or when a root starts it. Whoever holds the Task
// owns the work; destroying it drops the whole chain below, and each awaiter withdraws whatever it had registered.
// All of it runs on the loop's thread.
//
// Write no lambda and no braces inside an awaiting statement: g++ 12 destroys such a temporary twice. Name it first.
template <typename T = void> class [[nodiscard]] Task {
public:
    using promise_type = detail::TaskPromise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    Task() = default;
    explicit Task(Handle handle) : m_handle(handle) {}
    Task(Task&& other) noexcept : m_handle(std::exchange(other.m_handle, {})) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            reset();
            m_handle = std::exchange(other.m_handle, {});
        }
        return *this;
    }
    ~Task() { reset(); }

    // For a root: runs to the first wait. Later steps come from whatever it waits for.
    void start() { m_handle.resume(); }
    bool done() const { return !m_handle || m_handle.done(); }
    // Once done: the result, or the exception that ended the task. May be taken once.
    T take() { return m_handle.promise().take(); }

    auto operator co_await() && noexcept {
        struct Awaiter {
            Handle child;
            bool await_ready() const noexcept { return false; }
            // Started inline, not by symmetric transfer: g++ 12 without optimisation grows the stack by one frame for
            // each awaited task that is ready at once, and a long loop would overflow it.
            bool await_suspend(std::coroutine_handle<> waiter) const {
                child.resume();
                if (child.done()) return false;
                child.promise().waiter = waiter;
                return true;
            }
            T await_resume() const { return child.promise().take(); }
        };
        return Awaiter{m_handle};
    }

private:
    void reset() {
        if (auto handle = std::exchange(m_handle, {})) handle.destroy();
    }

    Handle m_handle;
};

template <typename T> Task<T> detail::TaskPromise<T>::get_return_object() {
    return Task<T>(std::coroutine_handle<TaskPromise<T>>::from_promise(*this));
}

inline Task<void> detail::TaskPromise<void>::get_return_object() {
    return Task<void>(std::coroutine_handle<TaskPromise<void>>::from_promise(*this));
}

} // namespace bridge
