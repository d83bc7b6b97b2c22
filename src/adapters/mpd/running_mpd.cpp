#include "adapters/mpd/running_mpd.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <vector>

namespace bridge::mpd {

namespace fs = std::filesystem;

namespace {

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The sockets of every MPD that is not a bridge's, by their inodes.
struct Listeners {
    std::set<std::string> sockets;
    bool hasHidden = false; // one of another user, whose sockets can't be seen

    Listeners() {
        std::error_code problem;
        for (const auto& entry : fs::directory_iterator("/proc", problem)) {
            const auto name = entry.path().filename().string();
            if (name.find_first_not_of("0123456789") != std::string::npos) continue;
            if (contentOf(entry.path() / "comm") != "mpd\n") continue;
            if (contentOf(entry.path() / "cmdline").find(privateConfig) == std::string::npos) add(entry.path());
        }
    }

private:
    void add(const fs::path& process) {
        constexpr std::string_view prefix = "socket:[";
        std::error_code problem;
        fs::directory_iterator descriptors(process / "fd", problem);
        if (problem) hasHidden = true;
        for (const auto end = fs::directory_iterator(); !problem && descriptors != end;
             descriptors.increment(problem)) {
            const auto target = fs::read_symlink(descriptors->path(), problem).string();
            problem.clear();
            if (target.starts_with(prefix))
                sockets.insert(target.substr(prefix.size(), target.size() - prefix.size() - 1));
        }
    }
};

std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream words(line);
    return {std::istream_iterator<std::string>(words), {}};
}

bool isServed(const std::string& socket, const Listeners& listeners) {
    constexpr size_t inode = 6, path = 7;
    std::ifstream table("/proc/net/unix");
    for (std::string line; std::getline(table, line);) {
        const auto words = wordsOf(line);
        // A path with blanks is more than one word.
        if (words.size() <= path || !line.ends_with(' ' + socket)) continue;
        if (listeners.hasHidden || listeners.sockets.contains(words[inode])) return true;
    }
    return false;
}

bool isPortServed(const std::string& port, const Listeners& listeners) {
    constexpr size_t local = 1, state = 3, inode = 9;
    unsigned number = 0;
    std::from_chars(port.data(), port.data() + port.size(), number);
    for (const auto* name : {"/proc/net/tcp", "/proc/net/tcp6"}) {
        std::ifstream table(name);
        for (std::string line; std::getline(table, line);) {
            const auto words = wordsOf(line);
            if (words.size() <= inode || words[state] != "0A") continue; // listening
            unsigned its = 0;
            const auto colon = words[local].rfind(':') + 1;
            std::from_chars(words[local].data() + colon, words[local].data() + words[local].size(), its, 16);
            if (its == number && (listeners.hasHidden || listeners.sockets.contains(words[inode]))) return true;
        }
    }
    return false;
}

bool isHere(const std::string& host) {
    return host == "localhost" || host == "::1" || host.starts_with("127.");
}

} // namespace

std::optional<MpdServer> findRunningMpd(const Environment& variable) {
    std::vector<MpdServer> candidates;
    if (const auto chosen = parseServer(variable("MPD_HOST").value_or(""), variable("MPD_PORT").value_or(""))) {
        if (!chosen->isLocalSocket() && !isHere(chosen->host)) return chosen;
        candidates.push_back(*chosen);
    }
    if (const auto runtime = variable("XDG_RUNTIME_DIR")) candidates.push_back({*runtime + "/mpd/socket"});
    candidates.push_back({"/run/mpd/socket"});
    candidates.push_back({"localhost"});
    const Listeners listeners;
    for (const auto& candidate : candidates)
        if (candidate.isLocalSocket() ? isServed(candidate.host, listeners) : isPortServed(candidate.port, listeners))
            return candidate;
    return std::nullopt;
}

} // namespace bridge::mpd
