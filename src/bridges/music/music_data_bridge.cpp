#include "bridges/music/music_data_bridge.h"

#include "base/apple_bridge_error.h"
#include "base/text.h"
#include "bridges/common/permission_state.h"
#include "bridges/music/descriptions.h"
#include "bridges/music/persistent_id.h"
#include "bridges/scripting/flattened_strings.h"
#include "platform/privacy_service_names.h"

#include <algorithm>
#include <unordered_map>

namespace bridge {

namespace {

constexpr const char* application = "Music";
constexpr std::chrono::seconds timeout{30};
constexpr size_t mostSongs = 100;

// Without white space at their ends.
std::vector<std::string> trimmedIDs(const std::vector<std::string>& songIDs) {
    if (songIDs.size() > mostSongs)
        throw AppleBridgeError::malformedRequest("A playlist operation supports at most 100 songs at once.");
    std::vector<std::string> trimmed;
    for (const auto& each : songIDs) {
        trimmed.emplace_back(trim(each));
        if (trimmed.back().empty()) throw AppleBridgeError::malformedRequest("Song IDs cannot be empty.");
    }
    return trimmed;
}

} // namespace

void MusicDataBridge::ensureMusicAccess() const {
    if (permissionState(m_authorization, PrivacyService::music) != BridgePermissionState::fullAccess)
        throw AppleBridgeError::permissionDenied(titleOf(PrivacyService::music));
}

Task<std::shared_ptr<const MusicLibraryContents>> MusicDataBridge::openLibrary() {
    try {
        auto contents = co_await m_library.contents();
        co_return contents;
    } catch (const PlatformError& error) {
        throw AppleBridgeError::operationFailed(std::string("Could not read the Music library: ") + error.what());
    }
}

Task<std::vector<MusicSongDescriptor>> MusicDataBridge::searchSongs(SearchMusicRequest request) {
    ensureMusicAccess();
    const int64_t limit = std::clamp<int64_t>(request.limit, 1, 100);
    const auto source = lowercase(request.source);
    if (source != "library" && source != "catalog")
        throw AppleBridgeError::malformedRequest("Music source must be library or catalog.");
    const std::string term = request.term.value_or("");
    if (source == "catalog") {
        auto searching = searchCatalog(std::string(trim(term)), limit);
        auto found = co_await std::move(searching);
        co_return found;
    }
    const auto library = co_await openLibrary();
    std::vector<MusicSongDescriptor> songs;
    for (const MusicItem& item : m_search.find(library, term, static_cast<size_t>(limit)))
        songs.push_back(describe(item));
    co_return songs;
}

Task<std::vector<MusicSongDescriptor>> MusicDataBridge::searchCatalog(std::string term, int64_t limit) {
    if (term.empty()) throw AppleBridgeError::malformedRequest("Catalog search requires a term.");
    std::vector<MusicCatalogSong> found;
    try {
        found = co_await m_catalog.songs(term, limit);
    } catch (const PlatformError& error) {
        const std::string failure = error.what();
        if (failure.find("developer token") != std::string::npos)
            throw AppleBridgeError::capabilityUnavailable(
                "Apple Music catalog access is not configured for this developer account. The local Music library and "
                "playlists remain available.");
        throw AppleBridgeError::operationFailed("Apple Music catalog request failed: " + failure);
    }
    std::vector<MusicSongDescriptor> songs;
    for (const auto& song : found)
        songs.push_back(describe(song));
    co_return songs;
}

Task<std::vector<MusicPlaylistDescriptor>> MusicDataBridge::listPlaylists() {
    ensureMusicAccess();
    const auto library = co_await openLibrary();
    std::vector<MusicPlaylistDescriptor> playlists;
    for (const auto& playlist : library->playlists)
        playlists.push_back(describe(playlist));
    co_return playlists;
}

Task<std::vector<MusicLibrarySongReference>> MusicDataBridge::resolve(std::vector<std::string> songIDs) {
    const auto wanted = trimmedIDs(songIDs);
    const auto library = co_await openLibrary();
    std::unordered_map<std::string, const MusicItem*> songs;
    for (const auto& item : library->items)
        if (item.kind == MusicItemKind::song) songs.emplace(persistentIDText(item.persistentID), &item);
    std::vector<MusicLibrarySongReference> references;
    for (const auto& id : wanted)
        if (const auto song = songs.find(id); song != songs.end()) references.push_back({id, song->second->title});
    co_return references;
}

Task<MusicPlaylistDescriptor> MusicDataBridge::createPlaylist(CreateMusicPlaylistRequest request) {
    ensureMusicAccess();
    const std::string name(trim(request.name));
    if (name.empty()) throw AppleBridgeError::malformedRequest("Playlist name cannot be empty.");
    const auto songs = co_await resolve(request.songIDs);
    if (songs.empty())
        throw AppleBridgeError::malformedRequest("A new playlist must contain between 1 and 100 library songs.");
    auto changing = changePlaylist(createPlaylistScript(name, request.description.value_or(""), songs));
    auto playlist = co_await std::move(changing);
    co_return playlist;
}

Task<MusicPlaylistDescriptor> MusicDataBridge::addSongs(AddSongsToMusicPlaylistRequest request) {
    ensureMusicAccess();
    if (request.songIDs.empty() || request.songIDs.size() > mostSongs)
        throw AppleBridgeError::malformedRequest("A playlist change requires between 1 and 100 song IDs.");
    const auto songs = co_await resolve(request.songIDs);
    auto changing = changePlaylist(addSongsScript(request.playlistID, songs));
    auto playlist = co_await std::move(changing);
    co_return playlist;
}

Task<MusicPlaylistDescriptor> MusicDataBridge::changePlaylist(std::string script) {
    auto running = run(std::move(script), MayHaveChanged::yes);
    const auto values = flattenedStrings(co_await std::move(running));
    if (values.size() < 4) throw AppleBridgeError::operationFailed("Music returned incomplete playlist metadata.");
    co_return MusicPlaylistDescriptor{values[0], values[1], values[2], wholeNumber(values[3])};
}

Task<> MusicDataBridge::deletePlaylist(MusicPlaylistIdentifierRequest request) {
    ensureMusicAccess();
    auto running = run(deletePlaylistScript(request.identifier), MayHaveChanged::yes);
    co_await std::move(running);
}

Task<MusicSongDescriptor> MusicDataBridge::playSong(MusicSongIdentifierRequest request) {
    ensureMusicAccess();
    auto running = run(playSongScript(request.identifier), MayHaveChanged::no);
    const auto values = flattenedStrings(co_await std::move(running));
    if (values.size() < 5) throw AppleBridgeError::operationFailed("Music returned incomplete song metadata.");
    MusicSongDescriptor song;
    song.id = values[0];
    song.source = "library";
    song.title = values[1];
    song.artistName = values[2];
    song.albumTitle = values[3];
    song.duration = realNumber(values[4]);
    co_return song;
}

Task<> MusicDataBridge::pause() {
    ensureMusicAccess();
    if (!m_engine.isRunning(application)) co_return;
    auto running = run(pauseScript(), MayHaveChanged::no);
    co_await std::move(running);
}

Task<TypedAppleScriptValue> MusicDataBridge::run(std::string script, MayHaveChanged mayHaveChanged) {
    auto running = m_scriptRunner.run(std::move(script), application, timeout, mayHaveChanged);
    auto result = co_await std::move(running);
    co_return result;
}

} // namespace bridge
