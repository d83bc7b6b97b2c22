#pragma once

#include "base/record.h"

namespace bridge {

struct SearchMusicRequest {
    std::optional<std::string> term;
    std::string source;
    int64_t limit = 0;

    static constexpr auto fields() {
        return std::tuple{optional("term", &SearchMusicRequest::term), required("source", &SearchMusicRequest::source),
                          required("limit", &SearchMusicRequest::limit)};
    }
};
static_assert(listsEveryMember<SearchMusicRequest>());

struct CreateMusicPlaylistRequest {
    std::string name;
    std::optional<std::string> description;
    std::vector<std::string> songIDs;

    static constexpr auto fields() {
        return std::tuple{required("name", &CreateMusicPlaylistRequest::name),
                          optional("description", &CreateMusicPlaylistRequest::description),
                          required("songIDs", &CreateMusicPlaylistRequest::songIDs)};
    }
};
static_assert(listsEveryMember<CreateMusicPlaylistRequest>());

struct AddSongsToMusicPlaylistRequest {
    std::string playlistID;
    std::vector<std::string> songIDs;

    static constexpr auto fields() {
        return std::tuple{required("playlistID", &AddSongsToMusicPlaylistRequest::playlistID),
                          required("songIDs", &AddSongsToMusicPlaylistRequest::songIDs)};
    }
};
static_assert(listsEveryMember<AddSongsToMusicPlaylistRequest>());

struct MusicPlaylistIdentifierRequest {
    std::string identifier;

    static constexpr auto fields() {
        return std::tuple{required("identifier", &MusicPlaylistIdentifierRequest::identifier)};
    }
};
static_assert(listsEveryMember<MusicPlaylistIdentifierRequest>());

struct MusicSongIdentifierRequest {
    std::string identifier;

    static constexpr auto fields() {
        return std::tuple{required("identifier", &MusicSongIdentifierRequest::identifier)};
    }
};
static_assert(listsEveryMember<MusicSongIdentifierRequest>());

} // namespace bridge
