#include "app/script_applications.h"

#include "adapters/iworkapps/keynote_application.h"
#include "adapters/iworkapps/numbers_application.h"
#include "adapters/iworkapps/pages_application.h"
#include "adapters/musicapp/music_application.h"
#include "app/helper_program.h"

namespace bridge {

namespace {

office::LibreOfficeOptions officeOptions(const std::string& folder) {
    office::LibreOfficeOptions options;
    options.programs.helper = helperProgram("brindlefox-office");
    options.folder = folder;
    return options;
}

std::vector<std::unique_ptr<applescript::Application>> applications(iworkapps::OfficeSession& session,
                                                                    musicapp::Player& player) {
    std::vector<std::unique_ptr<applescript::Application>> all;
    all.push_back(std::make_unique<iworkapps::PagesApplication>(session));
    all.push_back(std::make_unique<iworkapps::NumbersApplication>(session));
    all.push_back(std::make_unique<iworkapps::KeynoteApplication>(session));
    all.push_back(std::make_unique<musicapp::MusicApplication>(player));
    return all;
}

} // namespace

ScriptApplications::ScriptApplications(EventLoop& loop, const std::string& folder,
                                       std::shared_ptr<musicapp::Player> player)
    : m_office(officeOptions(folder)),
      m_player(std::move(player)),
      m_engine(loop, applications(m_session, *m_player)) {}

} // namespace bridge
