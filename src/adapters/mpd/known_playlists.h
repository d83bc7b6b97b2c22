#pragma once

#include "base/record.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bridge::mpd {

struct StoredPlaylist {
    std::string name;
    std::vector<std::string> uris;
};

struct KnownPlaylist {
    std::string id, name, description;
    std::string songs; // a hash of what is in it; empty for nothing

    static constexpr auto fields() {
        return std::tuple{required("id", &KnownPlaylist::id), required("name", &KnownPlaylist::name),
                          required("description", &KnownPlaylist::description),
                          required("songs", &KnownPlaylist::songs)};
    }
    bool operator==(const KnownPlaylist&) const = default;
};
static_assert(listsEveryMember<KnownPlaylist>());

// What MPD doesn't keep of its playlists, which it knows by their names alone: an id, at random, and a description.
// They lie in a file of ours.
//
// A playlist that another program has renamed is followed by what is in it: when one has gone and one has come, with
// the same songs in the same order and no other like them, it is taken for the same. An empty one, or one that was
// changed at the same time, is a new one.
class KnownPlaylists {
public:
    // The file is made when there is something to be kept; its folder is there by then.
    explicit KnownPlaylists(std::string file) : m_file(std::move(file)) {}

    // The ids of these playlists, in their order; they are all that there are, and the others are forgotten. Throws
    // PlatformError when the file can't be read or written.
    std::vector<uint64_t> idsOf(const std::vector<StoredPlaylist>& playlists);
    // "" for one that nobody knows.
    std::string description(uint64_t id) const;
    // One that is about to be made under a name of its own; its id.
    uint64_t announce(const std::string& name, const std::string& description);

private:
    void read();
    void keep(std::vector<KnownPlaylist> playlists);

    std::string m_file;
    bool m_isRead = false;
    std::vector<KnownPlaylist> m_known;
};

} // namespace bridge::mpd
