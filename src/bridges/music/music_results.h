#pragma once

#include "base/record.h"

namespace bridge {

struct MusicSongDescriptor {
    std::string id;     // in the library 16 upper-case hexadecimal digits
    std::string source; // "library" or "catalog"
    std::string title;
    std::string artistName;
    std::optional<std::string> albumTitle = std::nullopt;
    std::optional<double> duration = std::nullopt; // in seconds
    std::optional<std::string> url = std::nullopt;

    static constexpr auto fields() {
        return std::tuple{required("id", &MusicSongDescriptor::id),
                          required("source", &MusicSongDescriptor::source),
                          required("title", &MusicSongDescriptor::title),
                          required("artistName", &MusicSongDescriptor::artistName),
                          optional("albumTitle", &MusicSongDescriptor::albumTitle),
                          optional("duration", &MusicSongDescriptor::duration),
                          optional("url", &MusicSongDescriptor::url)};
    }
    bool operator==(const MusicSongDescriptor&) const = default;
};
static_assert(listsEveryMember<MusicSongDescriptor>());

struct MusicPlaylistDescriptor {
    std::string id; // 16 upper-case hexadecimal digits
    std::string name;
    std::optional<std::string> description = std::nullopt;
    std::optional<int64_t> trackCount = std::nullopt;

    static constexpr auto fields() {
        return std::tuple{required("id", &MusicPlaylistDescriptor::id),
                          required("name", &MusicPlaylistDescriptor::name),
                          optional("description", &MusicPlaylistDescriptor::description),
                          optional("trackCount", &MusicPlaylistDescriptor::trackCount)};
    }
    bool operator==(const MusicPlaylistDescriptor&) const = default;
};
static_assert(listsEveryMember<MusicPlaylistDescriptor>());

} // namespace bridge
