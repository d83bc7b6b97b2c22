#pragma once

#include "adapters/applescript/script_call.h"
#include "platform/music_library.h"
#include "platform/script_engine.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bridge::musicapp {

using Call = applescript::ScriptCall;
using ContentsPointer = std::shared_ptr<const MusicLibraryContents>;

// A program that knows the user's music, keeps playlists and plays. Songs and playlists go by the persistent ids of the
// contents. On any thread, one call at a time within; each may block as long as its call has time left. What fails
// throws ScriptError: timedOut after that, noSuchObject for what isn't there, or the program's own words.
class Player {
public:
    virtual ~Player() = default;

    // Whether the program runs; never starts it, and never waits.
    virtual bool isRunning() const = 0;
    // Whether it runs or could be started, and if not, what to install. Never waits.
    virtual std::optional<std::string> whyUnavailable() const = 0;

    // The same object as long as nothing has changed.
    virtual ContentsPointer contents(Call& call) = 0;
    virtual std::string description(uint64_t playlist, Call& call) = 0;

    // Throws for a name that no new playlist can have.
    virtual void checkNewName(const std::string& name, Call& call) = 0;
    // These two are done whole or not at all; the order and repetitions are kept.
    virtual uint64_t makePlaylist(const std::string& name, const std::string& description,
                                  const std::vector<uint64_t>& songs, Call& call) = 0;
    virtual void addSongs(uint64_t playlist, const std::vector<uint64_t>& songs, Call& call) = 0;
    virtual void deletePlaylist(uint64_t playlist, Call& call) = 0;

    // Returns when the song is to be heard.
    virtual void play(uint64_t song, Call& call) = 0;
    // Does nothing when the program doesn't run.
    virtual void pause(Call& call) = 0;
};

} // namespace bridge::musicapp
