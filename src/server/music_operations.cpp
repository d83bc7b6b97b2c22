#include "bridges/music/music_requests.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"
#include "server/payloads.h"

namespace bridge {

namespace {

constexpr std::array rows{
    later<SearchMusicRequest>("music.search", BridgeCapability::musicLibraryRead),
    later<LimitPayload>("music.playlists.list", BridgeCapability::musicPlaylistsRead),
    later<CreateMusicPlaylistRequest>("music.playlists.create", BridgeCapability::musicPlaylistsCreate),
    later<AddSongsToMusicPlaylistRequest>("music.playlists.add_songs", BridgeCapability::musicPlaylistsUpdate),
    later<MusicPlaylistIdentifierRequest>("music.playlists.delete", BridgeCapability::musicPlaylistsDelete,
                                          Confirm::always),
    later<MusicSongIdentifierRequest>("music.play", BridgeCapability::musicPlayback),
    later("music.pause", BridgeCapability::musicPlayback),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> musicOperations() {
    return rows;
}

} // namespace bridge
