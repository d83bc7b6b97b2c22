#pragma once

#include <optional>
#include <string>

namespace bridge::mpd {

// Where an MPD listens.
struct MpdServer {
    std::string host; // the absolute path of a local socket, or a computer's name
    std::string port = "6600";
    std::string password = {};

    bool isLocalSocket() const { return host.starts_with('/'); }
    bool operator==(const MpdServer&) const = default;
};

// As $MPD_HOST and $MPD_PORT say it: "socket", "computer", "password@computer". Nothing for an empty host, and for a
// socket without a path.
std::optional<MpdServer> parseServer(const std::string& host, const std::string& port);

} // namespace bridge::mpd
