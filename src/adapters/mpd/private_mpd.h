#pragma once

#include "adapters/mpd/mpd_process.h"
#include "adapters/mpd/mpd_server.h"
#include "adapters/musicapp/player.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace bridge::mpd {

struct PrivateMpdOptions {
    std::string program = "/usr/bin/mpd";
    std::string folder;      // of ours alone: made when it is needed, and kept
    std::string musicFolder; // of the user
    std::string output;      // audio_output blocks
};

// An MPD of the bridge's own, with a configuration, a database and playlists of its own. It ends with this object, and
// with our process in whatever way that ends.
class PrivateMpd {
public:
    explicit PrivateMpd(PrivateMpdOptions options);
    ~PrivateMpd();

    // On any thread.
    bool isRunning() const;
    // What it takes to start it; nothing when it is all there.
    std::optional<std::string> whyUnavailable() const;
    // Returns when it listens; does nothing when it does already. One that runs but doesn't is ended first. Throws with
    // what to do when it can't be started.
    MpdServer start(musicapp::Call& call);
    pid_t processID() const;
    const std::string& musicFolder() const { return m_options.musicFolder; }

private:
    void end();
    void prepareFolder();
    std::string socketPath();
    // Of the log, where it says why it did not start.
    std::string lastWords() const;

    PrivateMpdOptions m_options;
    mutable std::mutex m_mutex; // of the pointer
    std::unique_ptr<MpdProcess> m_process;
    std::string m_socket;
    std::string m_socketFolder; // when the other one's path is too long for a socket
};

} // namespace bridge::mpd
