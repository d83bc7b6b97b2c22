#pragma once

#include "bridges/music/library_search.h"
#include "bridges/music/music_requests.h"
#include "bridges/music/music_results.h"
#include "bridges/music/music_scripts.h"
#include "bridges/scripting/typed_apple_script_runner.h"
#include "platform/authorization.h"
#include "platform/music_catalog.h"

namespace bridge {

// The user's music: read from the library and the catalogue, changed and played by scripts that the Music application
// is told.
//
// Main thread only; what it is made of outlives it. Every operation first throws AppleBridgeError permissionDenied
// unless the user has granted access to music. A wrong request is malformedRequest and changes nothing, a library that
// can't be read operationFailed; scripts fail as TypedAppleScriptRunner says.
class MusicDataBridge {
public:
    MusicDataBridge(MusicLibrary& library, MusicCatalog& catalog, ScriptEngine& engine,
                    const Authorization& authorization)
        : m_library(library),
          m_catalog(catalog),
          m_engine(engine),
          m_authorization(authorization),
          m_scriptRunner(engine) {}

    // At most `limit` (1 to 100). In the library by title or artist, without regard to case and accents; no term finds
    // everything. A catalogue that is not configured is capabilityUnavailable.
    Task<std::vector<MusicSongDescriptor>> searchSongs(SearchMusicRequest request);

    Task<std::vector<MusicPlaylistDescriptor>> listPlaylists();
    // Of 1 to 100 songs. Ids that the library does not know are left out.
    Task<MusicPlaylistDescriptor> createPlaylist(CreateMusicPlaylistRequest request);
    // 1 to 100 songs, again those that are in it already.
    Task<MusicPlaylistDescriptor> addSongs(AddSongsToMusicPlaylistRequest request);
    Task<> deletePlaylist(MusicPlaylistIdentifierRequest request);

    Task<MusicSongDescriptor> playSong(MusicSongIdentifierRequest request);
    // Does not start the application.
    Task<> pause();

private:
    void ensureMusicAccess() const;
    Task<std::shared_ptr<const MusicLibraryContents>> openLibrary();
    Task<std::vector<MusicLibrarySongReference>> resolve(std::vector<std::string> songIDs);
    Task<std::vector<MusicSongDescriptor>> searchCatalog(std::string term, int64_t limit);
    Task<MusicPlaylistDescriptor> changePlaylist(std::string script);
    Task<TypedAppleScriptValue> run(std::string script, MayHaveChanged mayHaveChanged);

    MusicLibrary& m_library;
    MusicCatalog& m_catalog;
    ScriptEngine& m_engine;
    const Authorization& m_authorization;
    LibrarySearch m_search;
    TypedAppleScriptRunner m_scriptRunner;
};

} // namespace bridge
