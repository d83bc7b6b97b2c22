#pragma once

#include "adapters/applescript/applescript_engine.h"
#include "adapters/iworkapps/office_session.h"
#include "adapters/libreoffice/libreoffice.h"

namespace bridge {

// Scripts, with the applications of this computer that they can talk to: Pages, Numbers and Keynote, which LibreOffice
// stands in for. What is not installed says so when a script asks for it, and comes to life when it has been installed.
class ScriptApplications : public ScriptEngine {
public:
    // Copies of documents lie below the folder while they are open; it is made when that is needed.
    ScriptApplications(EventLoop& loop, const std::string& folder);

    Task<TypedAppleScriptValue> run(std::string source) override { return m_engine.run(std::move(source)); }
    bool isRunning(const std::string& application) override { return m_engine.isRunning(application); }

private:
    office::LibreOffice m_office;
    iworkapps::OfficeSession m_session{m_office};
    AppleScriptEngine m_engine;
};

} // namespace bridge
