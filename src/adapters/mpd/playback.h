#pragma once

#include "adapters/mpd/mpd_connection.h"

#include <optional>
#include <string>

namespace bridge::mpd {

struct Status {
    bool isUpdating = false; // reads its folders
    bool isPlaying = false;
    bool isHeard = false; // what plays has been opened
    std::string error;    // of the last song that failed, until the next is played
};
Status statusOf(MpdConnection& mpd, Call& call);

// Puts the song behind what is queued, and plays it in place of `former`, which goes out of the queue. Returns its
// number there when it is to be heard. MPD says yes to a song that can't be played, so what comes of it is waited for.
unsigned playSong(MpdConnection& mpd, const std::string& uri, std::optional<unsigned> former, Call& call);

} // namespace bridge::mpd
