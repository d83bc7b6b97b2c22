#include "adapters/applescript/script.h"

#include "adapters/applescript/errors.h"
#include "adapters/applescript/evaluator.h"
#include "adapters/applescript/parser.h"
#include "base/text.h"

#include <new>

namespace bridge::applescript {

namespace {

constexpr size_t longestSource = 64U << 20;

// Whatever becomes of the script, its applications hear that it's over.
class Session {
public:
    Session(const Program& program, const ApplicationList& applications)
        : m_program(program), m_applications(applications) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session() {
        for (const auto& name : m_program.applications)
            m_applications.find(name)->scriptEnded();
    }

private:
    const Program& m_program;
    const ApplicationList& m_applications;
};

} // namespace

ApplicationList::ApplicationList(std::vector<std::unique_ptr<Application>> applications) {
    for (auto& application : applications) {
        const auto& dictionary = application->dictionary();
        const auto name = lowercase(application->name());
        m_known.try_emplace(name, std::move(application), dictionary);
    }
}

std::vector<std::string> ApplicationList::names() const {
    std::vector<std::string> names;
    for (const auto& [name, application] : m_known)
        names.push_back(name);
    return names;
}

const ApplicationList::Known* ApplicationList::known(const std::string& name) const {
    const auto found = m_known.find(lowercase(name));
    return found == m_known.end() ? nullptr : &found->second;
}

Application* ApplicationList::find(const std::string& name) const {
    const auto* found = known(name);
    return found ? found->application.get() : nullptr;
}

const Terminology* ApplicationList::terms(const std::string& name) const {
    const auto* found = known(name);
    return found ? &found->terms : nullptr;
}

Program readScript(const std::string& source, const ApplicationList& applications) {
    if (source.size() > longestSource) throw NoScriptError("The script is too long.");
    if (!isUTF8(source)) throw NoScriptError("The script is not text.");
    const Vocabulary vocabulary = [&](const std::string& name) { return applications.terms(name); };
    try {
        return Parser(source, vocabulary).program();
    } catch (const std::bad_alloc&) {
        throw memoryExhausted();
    }
}

TypedAppleScriptValue runScript(const Program& program, const ApplicationList& applications, ScriptCall& call) {
    const Session session(program, applications);
    const Applications find = [&](const std::string& name) -> Application& { return *applications.find(name); };
    try {
        return Evaluator(program, find, call).run();
    } catch (const std::bad_alloc&) {
        throw memoryExhausted();
    }
}

} // namespace bridge::applescript
