#pragma once

#include "base/platform_error.h"
#include "base/task.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace bridge {

enum class MusicItemKind { song, other }; // other: a stream, a spoken book, a film

// Texts are UTF-8.
struct MusicItem {
    uint64_t persistentID = 0; // stays over restarts and rescans as long as the file stays where it is
    std::string title;         // never empty: the file's name where nobody gave one
    std::string artist;        // empty when there is none
    std::optional<std::string> album = std::nullopt;
    int64_t totalTime = 0;                              // in milliseconds
    std::optional<std::string> location = std::nullopt; // a file URL
    MusicItemKind kind = MusicItemKind::song;
    bool operator==(const MusicItem&) const = default;
};

struct MusicPlaylist {
    uint64_t persistentID = 0;
    std::string name;
    std::vector<uint64_t> items; // with repetitions, in the order of the playlist
    bool operator==(const MusicPlaylist&) const = default;
};

// All of it at one moment; never changes.
struct MusicLibraryContents {
    std::vector<MusicItem> items; // in the library's own order
    std::vector<MusicPlaylist> playlists;
};

// The user's music, to be read. It keeps no rights: who may see what is decided above it.
//
// Main thread. A library that can't be read throws PlatformError in its own words; empty contents mean that there is no
// music.
class MusicLibrary {
public:
    virtual ~MusicLibrary() = default;

    // As the library is now. What has not changed since the last call is the same object as then, so that whoever has
    // prepared something from it can tell by the pointer.
    virtual Task<std::shared_ptr<const MusicLibraryContents>> contents() = 0;
};

} // namespace bridge
