#pragma once

#include "platform/script_engine.h"

namespace bridge {

// For a computer without a program that stands in for the scripted applications.
class NoScriptEngine : public ScriptEngine {
public:
    static constexpr int applicationNotFound = -10814;

    Task<TypedAppleScriptValue> run(std::string) override {
        throw ScriptError(applicationNotFound,
                          "There is no application on this computer that makes, opens and exports such documents.");
        co_return {};
    }
    bool isRunning(const std::string&) override { return false; }
};

} // namespace bridge
