#include "adapters/applescript/applescript_engine.h"

#include "base/offload.h"

#include <chrono>

namespace bridge {

using namespace applescript;

namespace {

// A script's own time begins when it does; until then it may wait for as long as somebody wants its result.
constexpr std::chrono::hours whileWaiting{24};

} // namespace

struct AppleScriptEngine::Script {
    explicit Script(std::string text) : source(std::move(text)) {}

    std::string source;
    Program program;
    ScriptCall call{whileWaiting};
};

// Whoever drops the task gives up the script.
struct AppleScriptEngine::GiveUp {
    explicit GiveUp(std::shared_ptr<Script> dropped) : script(std::move(dropped)) {}
    GiveUp(const GiveUp&) = delete;
    GiveUp& operator=(const GiveUp&) = delete;
    ~GiveUp() { script->call.cancel(); }

    std::shared_ptr<Script> script;
};

AppleScriptEngine::AppleScriptEngine(EventLoop& loop, std::vector<std::unique_ptr<Application>> applications)
    : m_loop(loop),
      m_applications(std::move(applications)),
      m_others(std::make_unique<Worker>()),
      m_reader(std::make_unique<Worker>()) {
    for (const auto& name : m_applications.names())
        m_hands.try_emplace(name);
}

AppleScriptEngine::~AppleScriptEngine() {
    for (const auto& running : m_running)
        if (const auto script = running.lock()) script->call.cancel();
    // Readers first: they find no one to give a script to, and then whoever holds an application.
    m_reader.reset();
    m_others.reset();
    for (auto& [name, hands] : m_hands)
        hands.worker.reset();
}

Worker& AppleScriptEngine::workerFor(const Program& program) {
    if (program.applications.size() != 1) return *m_others;
    auto& worker = m_hands.at(*program.applications.begin()).worker;
    if (!worker) worker = std::make_unique<Worker>();
    return *worker;
}

TypedAppleScriptValue AppleScriptEngine::execute(Script& script) {
    // All scripts take them in the order of their names, so no two wait for one another.
    std::vector<std::unique_lock<std::mutex>> held;
    for (const auto& name : script.program.applications)
        held.emplace_back(m_hands.at(name).mutex);
    script.call.check();
    return runScript(script.program, m_applications, script.call);
}

Task<TypedAppleScriptValue> AppleScriptEngine::run(std::string source) {
    const auto script = std::make_shared<Script>(std::move(source));
    const GiveUp whenDropped(script);
    std::erase_if(m_running, [](const auto& running) { return running.expired(); });
    m_running.push_back(script);

    auto reading = offload(m_loop, *m_reader, [this, script] {
        script->program = readScript(script->source, m_applications);
        return true;
    });
    co_await reading;
    // The engine may be gone by now, and has then cancelled the call.
    script->call.check();
    auto running = offload(m_loop, workerFor(script->program), [this, script] { return execute(*script); });
    auto result = co_await running;
    co_return result;
}

bool AppleScriptEngine::isRunning(const std::string& application) {
    auto* known = m_applications.find(application);
    return known && known->isRunning();
}

} // namespace bridge
