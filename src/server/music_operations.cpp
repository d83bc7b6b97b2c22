#include "bridges/music/music_data_bridge.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"
#include "server/payloads.h"

namespace bridge {

namespace {

struct Paused {
    static BridgeOperationResult result(const auto&) { return {true, "music.pause"}; }
};

constexpr std::array rows{
    operation<&MusicDataBridge::searchSongs>("music.search", BridgeCapability::musicLibraryRead),
    listing<&MusicDataBridge::listPlaylists, LimitPayload>("music.playlists.list",
                                                           BridgeCapability::musicPlaylistsRead),
    operation<&MusicDataBridge::createPlaylist>("music.playlists.create", BridgeCapability::musicPlaylistsCreate),
    operation<&MusicDataBridge::addSongs>("music.playlists.add_songs", BridgeCapability::musicPlaylistsUpdate),
    deletion<&MusicDataBridge::deletePlaylist, &MusicPlaylistIdentifierRequest::identifier>(
        "music.playlists.delete", BridgeCapability::musicPlaylistsDelete),
    operation<&MusicDataBridge::playSong>("music.play", BridgeCapability::musicPlayback),
    act<&MusicDataBridge::pause, Paused>("music.pause", BridgeCapability::musicPlayback),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> musicOperations() {
    return rows;
}

} // namespace bridge
