#pragma once

#include "base/async_mutex.h"
#include "platform/script_engine.h"

#include <chrono>
#include <functional>

namespace bridge {

// Whether a script that did not end in time may have changed something all the same.
enum class MayHaveChanged { no, yes };

// Runs the scripts of one bridge, one after the other in the order in which they came, and says what went wrong so that
// the user knows what to do. Runners wait for nobody but themselves. Main thread only; the engine outlives the runner,
// the runner its tasks.
class TypedAppleScriptRunner {
public:
    explicit TypedAppleScriptRunner(ScriptEngine& engine) : m_engine(engine) {}

    // Wraps the body in a block that ends after `timeout`, and runs it. `application` is how the user knows the program
    // that the script talks to. `beforehand` is called when the script's turn has come, for a last look at what may
    // have changed while it waited; what it throws ends the task, and nothing is run.
    //
    // Throws AppleBridgeError: operationFailed with the script's own message, or for a script that can't be compiled or
    // did not end in time and changes nothing; outcomeUnknown for one that changes something; permissionDenied when the
    // user has not allowed the bridge to control the program. Nothing is tried again.
    Task<TypedAppleScriptValue> run(std::string body, std::string application, std::chrono::seconds timeout,
                                    MayHaveChanged mayHaveChanged, std::function<void()> beforehand = nullptr);

private:
    ScriptEngine& m_engine;
    AsyncMutex m_turns;
};

} // namespace bridge
