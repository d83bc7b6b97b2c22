#include "adapters/mpd/mpd_server.h"

namespace bridge::mpd {

std::optional<MpdServer> parseServer(const std::string& host, const std::string& port) {
    MpdServer server;
    // A leading @ is no password but a socket without a path.
    const auto at = host.find('@');
    if (host.empty() || at == 0) return std::nullopt;
    server.host = at == std::string::npos ? host : host.substr(at + 1);
    if (at != std::string::npos) server.password = host.substr(0, at);
    if (server.host.empty() || server.host.starts_with('@')) return std::nullopt;
    if (!port.empty()) server.port = port;
    return server;
}

} // namespace bridge::mpd
