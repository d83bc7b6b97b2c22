#pragma once

#include "base/platform_error.h"
#include "platform/http_client.h"

#include <coroutine>
#include <deque>
#include <variant>
#include <vector>

namespace bridge {

// Answers what the test wrote down, in that order, and remembers what it was asked. With nothing left it fails.
class ScriptedHTTPClient : public HTTPClient {
public:
    void willAnswer(int status, std::string body) { m_script.push_back(HTTPResponse{status, std::move(body)}); }
    void willFail(std::string description) { m_script.push_back(PlatformError(description)); }

    // From now on exchanges wait; releaseOne() lets the oldest one go on.
    void hold() { m_holding = true; }
    void releaseOne() {
        Gate* gate = m_waiting.front();
        m_waiting.pop_front();
        std::exchange(gate->waiter, {}).resume();
    }
    size_t waiting() const { return m_waiting.size(); }

    const std::vector<HTTPRequest>& requests() const { return m_requests; }

    Task<HTTPResponse> send(HTTPRequest request) override {
        m_requests.push_back(std::move(request));
        Gate gate(*this);
        co_await gate;
        if (m_script.empty()) throw PlatformError("The script has no answer left.");
        auto next = std::move(m_script.front());
        m_script.pop_front();
        if (const auto* failure = std::get_if<PlatformError>(&next)) throw *failure;
        co_return std::get<HTTPResponse>(std::move(next));
    }

private:
    struct Gate {
        ScriptedHTTPClient& client;
        std::coroutine_handle<> waiter;

        explicit Gate(ScriptedHTTPClient& owner) : client(owner) {}
        Gate(const Gate&) = delete;
        Gate& operator=(const Gate&) = delete;
        ~Gate() {
            if (waiter) std::erase(client.m_waiting, this);
        }
        bool await_ready() const { return !client.m_holding; }
        void await_suspend(std::coroutine_handle<> handle) {
            waiter = handle;
            client.m_waiting.push_back(this);
        }
        void await_resume() const {}
    };

    std::deque<std::variant<HTTPResponse, PlatformError>> m_script;
    std::vector<HTTPRequest> m_requests;
    std::deque<Gate*> m_waiting;
    bool m_holding = false;
};

} // namespace bridge
