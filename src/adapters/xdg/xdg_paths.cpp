#include "adapters/xdg/xdg_paths.h"

#include "base/platform_error.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace bridge {

namespace {

std::optional<std::string> absolute(const XdgPaths::Environment& environment, const char* name) {
    auto value = environment(name);
    if (!value || !value->starts_with('/')) return std::nullopt;
    while (value->size() > 1 && value->ends_with('/'))
        value->pop_back();
    return value;
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
    const auto home = findHome(environment);
    dataHome = absolute(environment, "XDG_DATA_HOME").value_or((home == "/" ? "" : home) + "/.local/share");
}

} // namespace bridge
