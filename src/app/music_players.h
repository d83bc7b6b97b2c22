#pragma once

#include "adapters/musicapp/player.h"

#include <memory>

namespace bridge {

// What plays music here. Each is started when it is first needed, says what to install when it can't be, and ends with
// the object.

// Of the bridge alone, with the music that is in `musicFolder`; what it keeps lies in `folder`.
std::shared_ptr<musicapp::Player> openPrivateMusicPlayer(const std::string& folder, const std::string& musicFolder);
// The user's own when it runs, else a private one on the user's music folder.
std::shared_ptr<musicapp::Player> openUsersMusicPlayer(const std::string& folder);

} // namespace bridge
