#include "adapters/libreoffice/helper/profile.h"

#include <array>
#include <filesystem>
#include <fstream>

namespace bridge::office {

namespace {

struct Setting {
    const char* path;
    const char* name;
    const char* value;
};

constexpr std::array settings = std::to_array<Setting>({
    {"Office.Common/Security/Scripting", "MacroSecurityLevel", "3"},
    {"Office.Common/Security/Scripting", "DisableMacrosExecution", "true"},
    {"Office.Common/Security/Scripting", "BlockUntrustedRefererLinks", "true"},
    {"Office.Java/VirtualMachine", "Enable", "false"},
    {"Office.Calc/Content/Update", "Link", "1"},
    {"Office.Writer/Content/Update", "Link", "0"},
    {"Office.Recovery/AutoSave", "Enabled", "false"},
    {"Office.Recovery/RecoveryInfo", "Enabled", "false"},
    {"Office.Common/Misc", "FirstRun", "false"},
    {"Office.Common/Misc", "CrashReport", "false"},
    {"Office.Common/Save/Document", "CreateBackup", "false"},
    {"Office.Common/History", "PickListSize", "0"},
    {"Setup/L10N", "ooLocale", "en-US"},
    {"Setup/L10N", "ooSetupSystemLocale", "en-US"},
    {"Setup/Office", "ooSetupInstCompleted", "true"},
});

} // namespace

void writeProfile(const std::string& folder) {
    std::filesystem::create_directories(folder + "/user");
    std::ofstream file(folder + "/user/registrymodifications.xcu");
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<oor:items xmlns:oor=\"http://openoffice.org/2001/registry\">\n";
    for (const auto& [path, name, value] : settings)
        file << "<item oor:path=\"/org.openoffice." << path << "\"><prop oor:name=\"" << name
             << "\" oor:op=\"fuse\"><value>" << value << "</value></prop></item>\n";
    file << "</oor:items>\n";
}

} // namespace bridge::office
