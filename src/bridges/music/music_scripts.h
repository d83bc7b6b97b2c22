#pragma once

#include <optional>
#include <string>
#include <vector>

namespace bridge {

// A song of the library as a script finds it: by its title, and among those by its persistent id.
struct MusicLibrarySongReference {
    std::string id;
    std::string title;
};

// What the Music application is told. The first two answer with a playlist's persistent id, name, description and
// number of tracks, and change nothing unless every song is found.
std::string createPlaylistScript(const std::string& name, const std::string& description,
                                 const std::vector<MusicLibrarySongReference>& songs);
std::string addSongsScript(const std::string& playlistID, const std::vector<MusicLibrarySongReference>& songs);
std::string deletePlaylistScript(const std::string& identifier);
// Answers with the song's persistent id, name, artist, album and seconds.
std::string playSongScript(const std::string& identifier);
std::string pauseScript();

} // namespace bridge
