#pragma once

#include "adapters/applescript/applescript_engine.h"
#include "adapters/iworkapps/office_session.h"
#include "adapters/libreoffice/libreoffice.h"
#include "adapters/musicapp/player.h"

namespace bridge {

// Scripts, with the applications of this computer that they can talk to: Pages, Numbers and Keynote, which LibreOffice
// stands in for, and Music, with what plays music here. What is not installed says so when a script asks for it, and
// comes to life when it has been installed.
class ScriptApplications : public ScriptEngine {
public:
    // Copies of documents lie below the folder while they are open; it is made when that is needed.
    ScriptApplications(EventLoop& loop, const std::string& folder, std::shared_ptr<musicapp::Player> player);

    Task<TypedAppleScriptValue> run(std::string source) override { return m_engine.run(std::move(source)); }
    bool isRunning(const std::string& application) override { return m_engine.isRunning(application); }

    // What to install for Pages, Numbers and Keynote; nothing when they can be had.
    std::optional<std::string> whyNoOffice() const { return m_office.whyUnavailable(); }

private:
    office::LibreOffice m_office;
    iworkapps::OfficeSession m_session{m_office};
    std::shared_ptr<musicapp::Player> m_player;
    AppleScriptEngine m_engine;
};

} // namespace bridge
