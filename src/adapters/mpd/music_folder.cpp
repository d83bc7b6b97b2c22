#include "adapters/mpd/music_folder.h"

#include "base/platform_error.h"

#include <fstream>
#include <pwd.h>
#include <unistd.h>

namespace bridge::mpd {

namespace {

std::string homeFolder(const std::optional<std::string>& variable) {
    if (variable && variable->starts_with('/')) return *variable;
    const passwd* user = getpwuid(getuid());
    if (!user || !user->pw_dir || user->pw_dir[0] != '/') throw PlatformError("The user has no home folder.");
    return user->pw_dir;
}

} // namespace

std::string userMusicFolder(const std::function<std::optional<std::string>(const char* name)>& variable) {
    if (const auto folder = variable("XDG_MUSIC_DIR"); folder && folder->starts_with('/')) return *folder;
    const auto home = homeFolder(variable("HOME"));
    constexpr std::string_view key = "XDG_MUSIC_DIR=\"", inHome = "$HOME";
    std::string found = home + "/Music";
    std::ifstream file(variable("XDG_CONFIG_HOME").value_or(home + "/.config") + "/user-dirs.dirs");
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with(key)) continue;
        auto value = line.substr(key.size());
        value.resize(value.rfind('"') == std::string::npos ? 0 : value.rfind('"'));
        if (value.starts_with(inHome)) value.replace(0, inHome.size(), home);
        if (value.starts_with('/')) found = value;
    }
    return found;
}

} // namespace bridge::mpd
