#include "bridges/scripting/typed_apple_script_runner.h"

#include "base/apple_bridge_error.h"

#include <fmt/format.h>

namespace bridge {

namespace {

std::string wrap(const std::string& body, std::chrono::seconds timeout) {
    return fmt::format("with timeout of {} seconds\n    {}\nend timeout", timeout.count(), body);
}

AppleBridgeError timedOut(const std::string& application, std::chrono::seconds timeout, MayHaveChanged mayHaveChanged) {
    const auto what = fmt::format("{} did not respond within {} seconds. ", application, timeout.count());
    if (mayHaveChanged == MayHaveChanged::yes)
        return AppleBridgeError::outcomeUnknown(
            what + "The requested change may still finish; close any dialog and verify the target before retrying.");
    return AppleBridgeError::operationFailed(what +
                                             fmt::format("Close any dialog shown by {}, then retry.", application));
}

// Its message goes on after that: "... has not been granted."
AppleBridgeError notPermitted(const std::string& application) {
    return AppleBridgeError::permissionDenied(
        fmt::format("Automation for {0}. Open System Settings > Privacy & Security > Automation, enable {0} under "
                    "Brindlefox Apple Bridge, and retry",
                    application));
}

AppleBridgeError translate(const ScriptError& error, const std::string& application, std::chrono::seconds timeout,
                           MayHaveChanged mayHaveChanged) {
    if (error.number() == ScriptError::timedOut) return timedOut(application, timeout, mayHaveChanged);
    if (error.number() == ScriptError::eventNotPermitted || error.number() == ScriptError::privilegeError)
        return notPermitted(application);
    return AppleBridgeError::operationFailed(error.message() ? *error.message() : error.what());
}

} // namespace

Task<TypedAppleScriptValue> TypedAppleScriptRunner::run(std::string body, std::string application,
                                                        std::chrono::seconds timeout, MayHaveChanged mayHaveChanged,
                                                        std::function<void()> beforehand) {
    const auto turn = co_await m_turns.lock();
    if (beforehand) beforehand();
    try {
        auto running = m_engine.run(wrap(body, timeout));
        auto value = co_await std::move(running);
        co_return value;
    } catch (const NoScriptError&) {
        throw AppleBridgeError::operationFailed("Could not compile the typed " + application + " command.");
    } catch (const ScriptError& error) {
        throw translate(error, application, timeout, mayHaveChanged);
    }
}

} // namespace bridge
