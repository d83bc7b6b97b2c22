#pragma once

#include "adapters/applescript/errors.h"
#include "adapters/musicapp/player.h"

namespace bridge {

// Of a build that has no library to speak to a player with.
class NoMusicPlayer : public musicapp::Player {
public:
    bool isRunning() const override { return false; }
    std::optional<std::string> whyUnavailable() const override { return reason; }
    musicapp::ContentsPointer contents(musicapp::Call&) override { fail(); }
    std::string description(uint64_t, musicapp::Call&) override { fail(); }
    void checkNewName(const std::string&, musicapp::Call&) override { fail(); }
    uint64_t makePlaylist(const std::string&, const std::string&, const std::vector<uint64_t>&,
                          musicapp::Call&) override {
        fail();
    }
    void addSongs(uint64_t, const std::vector<uint64_t>&, musicapp::Call&) override { fail(); }
    void deletePlaylist(uint64_t, musicapp::Call&) override { fail(); }
    void play(uint64_t, musicapp::Call&) override { fail(); }
    void pause(musicapp::Call&) override {}

private:
    [[noreturn]] static void fail() { throw ScriptError(applescript::eventFailed, reason); }

    static constexpr const char* reason = "MPD can't be used: this bridge was built without it. Install "
                                          "libmpdclient-dev and mpd, and build the bridge again.";
};

} // namespace bridge
