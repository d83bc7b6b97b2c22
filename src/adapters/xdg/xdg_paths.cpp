#include "adapters/xdg/xdg_paths.h"

#include "base/platform_error.h"

#include <cstdlib>
#include <pwd.h>
#include <sstream>
#include <unistd.h>

namespace bridge {

namespace {

std::optional<std::string> absolutePath(std::string value) {
    if (!value.starts_with('/')) return std::nullopt;
    while (value.size() > 1 && value.ends_with('/'))
        value.pop_back();
    return value;
}

std::optional<std::string> absolute(const XdgPaths::Environment& environment, const char* name) {
    auto value = environment(name);
    if (!value) return std::nullopt;
    return absolutePath(std::move(*value));
}

// `usual` when the variable is not set or empty.
std::vector<std::string> directories(const XdgPaths::Environment& environment, const char* name,
                                     std::string_view usual) {
    auto value = environment(name).value_or("");
    if (value.empty()) value = usual;
    std::vector<std::string> found;
    std::istringstream list(value);
    for (std::string each; std::getline(list, each, ':');)
        if (auto path = absolutePath(std::move(each))) found.push_back(std::move(*path));
    return found;
}

std::string findHome(const XdgPaths::Environment& environment) {
    if (auto home = absolute(environment, "HOME")) return *home;
    const passwd* user = getpwuid(getuid());
    if (!user || !user->pw_dir || user->pw_dir[0] != '/') throw PlatformError("The user has no home folder.");
    return user->pw_dir;
}

} // namespace

std::optional<std::string> XdgPaths::ofProcess(const char* name) {
    const char* value = std::getenv(name);
    if (!value) return std::nullopt;
    return value;
}

XdgPaths::XdgPaths(const Environment& environment) {
    auto home = findHome(environment);
    if (home == "/") home.clear();
    dataHome = absolute(environment, "XDG_DATA_HOME").value_or(home + "/.local/share");
    configHome = absolute(environment, "XDG_CONFIG_HOME").value_or(home + "/.config");
    dataDirectories = directories(environment, "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    configDirectories = directories(environment, "XDG_CONFIG_DIRS", "/etc/xdg");
}

} // namespace bridge
