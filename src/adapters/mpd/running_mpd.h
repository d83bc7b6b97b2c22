#pragma once

#include "adapters/mpd/mpd_server.h"

#include <functional>

namespace bridge::mpd {

// What the configuration of a private MPD is called, by which it is told from the user's own.
constexpr const char* privateConfig = "brindlefox-mpd.conf";

using Environment = std::function<std::optional<std::string>(const char* name)>;

// The MPD that the user runs: where $MPD_HOST says, in the usual sockets, or on this computer's usual port. Found by
// looking who listens and never by asking: a socket may belong to a service manager, which would start MPD for whoever
// connects. What is on another computer can't be looked at and is taken at its word.
std::optional<MpdServer> findRunningMpd(const Environment& variable);

} // namespace bridge::mpd
