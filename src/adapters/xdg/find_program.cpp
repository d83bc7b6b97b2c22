#include "adapters/xdg/find_program.h"

#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace bridge {

namespace {

bool isProgram(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

} // namespace

std::optional<std::string> findProgram(const std::string& name, const XdgPaths::Environment& environment) {
    if (name.find('/') != std::string::npos) return isProgram(name) ? std::optional(name) : std::nullopt;
    if (name.empty()) return std::nullopt;
    std::istringstream folders(environment("PATH").value_or("/usr/local/bin:/usr/bin:/bin"));
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (!folder.starts_with('/')) continue;
        auto path = folder + '/' + name;
        if (isProgram(path)) return path;
    }
    return std::nullopt;
}

} // namespace bridge
