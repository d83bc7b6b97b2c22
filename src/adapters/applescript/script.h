#pragma once

#include "adapters/applescript/application.h"
#include "adapters/applescript/statement.h"
#include "adapters/applescript/terminology.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bridge::applescript {

// The applications that scripts can talk to, with their words prepared. Reading is safe on every thread.
class ApplicationList {
public:
    explicit ApplicationList(std::vector<std::unique_ptr<Application>> applications);

    std::vector<std::string> names() const; // in lower case
    // By name without regard to case; nullptr when there is none.
    Application* find(const std::string& name) const;
    const Terminology* terms(const std::string& name) const;

private:
    struct Known {
        Known(std::unique_ptr<Application> known, const Dictionary& dictionary)
            : application(std::move(known)), terms(dictionary) {}

        std::unique_ptr<Application> application;
        Terminology terms;
    };
    const Known* known(const std::string& name) const;

    std::map<std::string, Known> m_known;
};

// Reads the source and finds out which applications it names. Throws NoScriptError for what is not UTF-8 or too long,
// otherwise as Parser does.
Program readScript(const std::string& source, const ApplicationList& applications);

// Runs it on this thread and tells its applications when it is over, in whatever way.
TypedAppleScriptValue runScript(const Program& program, const ApplicationList& applications, ScriptCall& call);

} // namespace bridge::applescript
