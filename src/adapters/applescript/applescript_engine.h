#pragma once

#include "adapters/applescript/script.h"
#include "base/event_loop.h"
#include "base/worker.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace bridge {

// Scripts in AppleScript, run by an interpreter of our own that can do nothing but compute and talk to the applications
// that it was given: no shell, no file, no other script.
//
// A script is read on one thread and then runs on the thread of its application, so that those of one application
// follow one another and those of different ones don't wait. One that talks to several, or to none, runs on a further
// thread and holds all of its applications for itself. Waiting for that costs a script none of its time.
class AppleScriptEngine : public ScriptEngine {
public:
    AppleScriptEngine(EventLoop& loop, std::vector<std::unique_ptr<applescript::Application>> applications);
    // Gives up what is running and waits until that has ended. The tasks that wait for it never hear of it.
    ~AppleScriptEngine() override;

    Task<TypedAppleScriptValue> run(std::string source) override;
    bool isRunning(const std::string& application) override;

private:
    struct Script;
    struct GiveUp;
    struct Hands {
        std::mutex mutex; // held by the script that talks to the application
        std::unique_ptr<Worker> worker;
    };

    Worker& workerFor(const applescript::Program& program);
    TypedAppleScriptValue execute(Script& script);

    EventLoop& m_loop;
    applescript::ApplicationList m_applications;
    std::vector<std::weak_ptr<Script>> m_running;
    std::map<std::string, Hands> m_hands; // by the application's name in lower case; complete from the beginning
    std::unique_ptr<Worker> m_others, m_reader;
};

} // namespace bridge
