#pragma once

#include <cassert>
#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace bridge {

// One answer that one task waits for and another part of the program owes. Shared by both, since either may be gone
// first; the task may also be answered before it begins to wait. On one thread.
template <typename T> class Continuation {
public:
    // Exactly one of these, once. The task goes on inside the call, and may then destroy whoever made it.
    void resume(T value) {
        assert(!isAnswered());
        m_value.emplace(std::move(value));
        goOn();
    }
    void fail(std::exception_ptr error) {
        assert(!isAnswered());
        m_error = std::move(error);
        goOn();
    }

    // `co_await continuation->answer()`, once; whoever waits holds the continuation.
    auto answer() {
        struct Awaiter {
            Continuation& continuation;
            explicit Awaiter(Continuation& awaited) : continuation(awaited) {}
            Awaiter(const Awaiter&) = delete;
            Awaiter& operator=(const Awaiter&) = delete;
            ~Awaiter() { continuation.m_waiter = {}; }
            bool await_ready() const noexcept { return continuation.isAnswered(); }
            void await_suspend(std::coroutine_handle<> waiter) noexcept { continuation.m_waiter = waiter; }
            T await_resume() const {
                if (continuation.m_error) std::rethrow_exception(continuation.m_error);
                return std::move(*continuation.m_value);
            }
        };
        return Awaiter(*this);
    }

private:
    bool isAnswered() const { return m_value || m_error; }
    void goOn() {
        if (const auto waiter = std::exchange(m_waiter, {})) waiter.resume();
    }

    std::coroutine_handle<> m_waiter;
    std::optional<T> m_value;
    std::exception_ptr m_error;
};

} // namespace bridge
