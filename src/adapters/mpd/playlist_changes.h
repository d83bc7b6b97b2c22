#pragma once

#include "adapters/mpd/mpd_connection.h"

#include <string>
#include <vector>

namespace bridge::mpd {

// Throws for a name that MPD can't keep a playlist under.
void checkPlaylistName(const std::string& name);

// Both are done whole: what MPD did before it refused a song is taken back.
void storePlaylist(MpdConnection& mpd, const std::string& name, const std::vector<std::string>& uris, Call& call);
// `size` is how many are in it.
void extendPlaylist(MpdConnection& mpd, const std::string& name, size_t size, const std::vector<std::string>& uris,
                    Call& call);

} // namespace bridge::mpd
