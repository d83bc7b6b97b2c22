#pragma once

#include <functional>
#include <optional>
#include <string>

namespace bridge::mpd {

// Where the user keeps music: as ~/.config/user-dirs.dirs says it, else ~/Music. Throws PlatformError when the user has
// no home folder.
std::string userMusicFolder(const std::function<std::optional<std::string>(const char* name)>& variable);

} // namespace bridge::mpd
