#pragma once

#include "bridges/music/music_results.h"
#include "platform/music_catalog.h"
#include "platform/music_library.h"

namespace bridge {

MusicSongDescriptor describe(const MusicItem& item);
MusicSongDescriptor describe(const MusicCatalogSong& song);
MusicPlaylistDescriptor describe(const MusicPlaylist& playlist);

// Of the texts in which scripts answer; nothing for what is no number.
std::optional<int64_t> wholeNumber(const std::string& text);
std::optional<double> realNumber(const std::string& text);

} // namespace bridge
