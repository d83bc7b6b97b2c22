#pragma once

#include "adapters/mpd/known_playlists.h"
#include "adapters/mpd/mpd_connection.h"
#include "adapters/mpd/song_ids.h"

#include <ctime>

namespace bridge::mpd {

struct Songs {
    std::vector<MusicItem> items; // in the order of MPD's folders
    SongIDs ids;
};

// When something was changed last, as MPD tells it: to the second. So what is not yet old may change again without
// being seen by this.
struct ChangeTimes {
    time_t songs = 0;
    std::vector<std::pair<std::string, time_t>> playlists; // by name
    bool operator==(const ChangeTimes&) const = default;

    time_t newestPlaylist() const;
};

ChangeTimes readChangeTimes(MpdConnection& mpd, Call& call);

// Songs below `musicFolder`, where it is known, get a location. Read in pieces: the answer for a large library at once
// is more than MPD has room for.
Songs readSongs(MpdConnection& mpd, const std::optional<std::string>& musicFolder, Call& call);

// Without those that went while they were read.
std::vector<StoredPlaylist> readPlaylists(MpdConnection& mpd, const ChangeTimes& times, Call& call);

// As MPD tells it to those on its own computer.
std::optional<std::string> readMusicFolder(MpdConnection& mpd, Call& call);

} // namespace bridge::mpd
