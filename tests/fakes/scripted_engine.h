#pragma once

#include "platform/script_engine.h"
#include "tests/base/gate.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <list>
#include <variant>

namespace bridge {

// Runs no script: answers what the test wrote down, in that order, and remembers the sources. With nothing left to
// answer, a script ends without a result.
class ScriptedEngine : public ScriptEngine {
public:
    using Answer = std::variant<TypedAppleScriptValue, ScriptError, NoScriptError>;

    void willAnswer(TypedAppleScriptValue value) { m_answers.emplace_back(std::move(value)); }
    void willFail(ScriptError error) { m_answers.emplace_back(std::move(error)); }
    void willNotCompile() { m_answers.emplace_back(NoScriptError("no script")); }
    bool isApplicationRunning = false;
    // What the application does when it gets the script.
    std::function<void(const std::string& source)> application;

    // From now on scripts wait; releaseOne() lets the oldest one go on.
    void hold() { m_holding = true; }
    size_t waiting() const {
        return static_cast<size_t>(std::ranges::count_if(m_gates, [](const Gate& gate) { return gate.isAwaited(); }));
    }
    void releaseOne() {
        std::ranges::find_if(m_gates, [](const Gate& gate) { return gate.isAwaited(); })->open();
    }

    const std::vector<std::string>& sources() const { return m_sources; }
    // How many scripts have run at the same time.
    size_t mostAtOnce() const { return m_mostAtOnce; }

    Task<TypedAppleScriptValue> run(std::string source) override {
        const Running running(*this);
        m_sources.push_back(source);
        if (m_holding) {
            auto& gate = m_gates.emplace_back();
            co_await gate.opened();
        }
        if (application) application(source);
        if (m_answers.empty()) co_return TypedAppleScriptValue();
        auto answer = std::move(m_answers.front());
        m_answers.pop_front();
        if (const auto* error = std::get_if<ScriptError>(&answer)) throw *error;
        if (const auto* error = std::get_if<NoScriptError>(&answer)) throw *error;
        co_return std::get<TypedAppleScriptValue>(std::move(answer));
    }

    bool isRunning(const std::string&) override { return isApplicationRunning; }

private:
    struct Running {
        explicit Running(ScriptedEngine& ran) : engine(ran) {
            engine.m_mostAtOnce = std::max(engine.m_mostAtOnce, ++engine.m_running);
        }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        ~Running() { --engine.m_running; }
        ScriptedEngine& engine;
    };

    std::deque<Answer> m_answers;
    std::vector<std::string> m_sources;
    std::list<Gate> m_gates;
    bool m_holding = false;
    size_t m_running = 0;
    size_t m_mostAtOnce = 0;
};

// A result that is a text, and one that is a list.
inline TypedAppleScriptValue scriptText(std::string text) {
    TypedAppleScriptValue value;
    value.stringValue = std::move(text);
    return value;
}
inline TypedAppleScriptValue scriptList(std::vector<TypedAppleScriptValue> items) {
    TypedAppleScriptValue value;
    value.items = std::move(items);
    return value;
}

} // namespace bridge
