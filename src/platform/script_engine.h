#pragma once

#include "base/platform_error.h"
#include "base/task.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bridge {

// One value of a script's result, read in every way that it can be read.
struct TypedAppleScriptValue {
    std::optional<std::string> stringValue;   // absent when the value has no text: a list, a record, missing value
    double doubleValue = 0;                   // 0 when it has no number
    int64_t intValue = 0;                     // within 32 bits; 0 when it has no number
    bool isNull = false;                      // the null descriptor, which missing value is not
    std::vector<TypedAppleScriptValue> items; // the elements of a list; empty for anything else
    bool operator==(const TypedAppleScriptValue&) const = default;
};

// What a script ended with. The numbers are those of AppleScript and of the Apple Event Manager.
class ScriptError : public PlatformError {
public:
    static constexpr int eventNotPermitted = -1743;
    static constexpr int noSuchObject = -1728;
    static constexpr int privilegeError = -10004;
    static constexpr int syntaxError = -2741;
    static constexpr int timedOut = -1712;
    static constexpr int undefinedVariable = -2753;

    ScriptError(int number, const std::string& message)
        : PlatformError(message), m_number(number), m_message(message) {}
    // With what the system told of it; the description is of everything that it told.
    ScriptError(std::optional<int> number, std::optional<std::string> message, const std::string& description)
        : PlatformError(description), m_number(number), m_message(std::move(message)) {}

    std::optional<int> number() const { return m_number; }
    const std::optional<std::string>& message() const { return m_message; }

private:
    std::optional<int> m_number;
    std::optional<std::string> m_message;
};

// The source is nothing from which a script can be made.
class NoScriptError : public PlatformError {
public:
    using PlatformError::PlatformError;
};

// Runs AppleScript source that talks to applications.
//
// Called on the main thread; what blocks happens elsewhere. A script has the time that its own "with timeout" block
// gives to it and ends with ScriptError::timedOut after that, whatever the application does; the next script works.
// Scripts that run at the same time do not wait for one another if they talk to different applications.
class ScriptEngine {
public:
    virtual ~ScriptEngine() = default;

    // The script's result. Throws NoScriptError, or ScriptError for all that happens while it runs, faulty syntax
    // included. A task that is dropped ends its script as soon as that can be done; what the script has changed by
    // then stays changed.
    virtual Task<TypedAppleScriptValue> run(std::string source) = 0;

    // Whether the application is running now, as far as the user sees; never starts it.
    virtual bool isRunning(const std::string& application) = 0;
};

} // namespace bridge
