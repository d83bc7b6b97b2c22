#include "adapters/mpd/mpd_player.h"

#include "adapters/mpd/playback.h"
#include "adapters/mpd/playlist_changes.h"
#include "adapters/mpd/waiting.h"
#include "base/make_folders.h"

#include <algorithm>
#include <fmt/format.h>

namespace bridge::mpd {

using musicapp::ContentsPointer;

namespace {

// A call that waits for the conversation's other user shows in a descriptor that it was given up, which can't be waited
// for together with the mutex.
constexpr std::chrono::milliseconds glance{50};
constexpr std::chrono::milliseconds betweenLooks{20};
constexpr std::chrono::seconds patienceWithFirstScan{10};
// Within the second that MPD tells as the last change, and one for the clocks, another change may still come.
constexpr time_t settled = 2;

} // namespace

MpdPlayer::MpdPlayer(MpdOptions options) : m_options(std::move(options)), m_private(m_options.own) {}

MpdPlayer::~MpdPlayer() = default;

bool MpdPlayer::isRunning() const {
    return m_private.isRunning() || (m_options.environment && findRunningMpd(m_options.environment));
}

std::optional<std::string> MpdPlayer::whyUnavailable() const {
    if (isRunning()) return std::nullopt;
    return m_private.whyUnavailable();
}

// Has the conversation to itself; whatever but a refusal has ended it.
template <typename Action> auto MpdPlayer::withMpd(Call& call, Action action) {
    std::unique_lock lock(m_mutex, std::defer_lock);
    do
        call.check();
    while (!lock.try_lock_for(std::min(call.remaining(), glance)));
    try {
        return action(connection(call));
    } catch (const MpdRefusal&) {
        throw;
    } catch (const ScriptError& error) {
        m_connection.reset();
        if (error.number() == ScriptError::timedOut)
            throw ScriptError(ScriptError::timedOut, "MPD did not answer in time.");
        throw;
    } catch (...) {
        m_connection.reset();
        throw;
    }
}

MpdConnection& MpdPlayer::connection(Call& call) {
    if (m_connection && m_connection->isUsable()) return *m_connection;
    m_connection.reset();
    // The private one stays once it was needed: what was made there is there.
    const auto own =
        m_options.environment && !m_private.isRunning() ? findRunningMpd(m_options.environment) : std::nullopt;
    if (own) {
        connect(*own, call);
        m_musicFolder = own->isLocalSocket() ? readMusicFolder(*m_connection, call) : std::nullopt;
        return *m_connection;
    }
    const auto former = m_private.processID();
    connect(m_private.start(call), call);
    m_musicFolder = m_private.musicFolder();
    if (m_private.processID() != former) {
        m_isScanned = false;
        m_connection->send(call, [](auto* mpd) { return mpd_send_update(mpd, nullptr); });
        m_connection->finish(call);
    }
    if (!m_isScanned) awaitFirstScan(*m_connection, call);
    return *m_connection;
}

void MpdPlayer::connect(const MpdServer& server, Call& call) {
    auto connection = std::make_unique<MpdConnection>(server, call);
    if (!m_known || server != m_server) {
        makeFolders(m_options.own.folder, "The folder of the music player could not be made");
        // Each MPD has playlists of its own.
        m_known.emplace(fmt::format("{}/playlists-{:016X}.json", m_options.own.folder,
                                    stableHash(server.host + '\n' + server.port)));
        m_server = server;
    }
    m_times.reset();
    m_played.reset();
    m_connection = std::move(connection);
}

void MpdPlayer::awaitFirstScan(MpdConnection& mpd, Call& call) {
    const auto patienceEnds = std::chrono::steady_clock::now() + patienceWithFirstScan;
    while (statusOf(mpd, call).isUpdating) {
        if (std::chrono::steady_clock::now() >= patienceEnds)
            fail("MPD is still reading the music folder. Try again in a moment.");
        pauseFor(betweenLooks, call);
    }
    m_isScanned = true;
}

void MpdPlayer::refresh(MpdConnection& mpd, Call& call) {
    const auto now = std::time(nullptr);
    auto times = readChangeTimes(mpd, call);
    const bool songsAreOld = !m_times || times.songs != m_times->songs || times.songs + settled > m_readAt;
    const bool playlistsAreOld =
        songsAreOld || m_isChanged || times != *m_times || times.newestPlaylist() + settled > m_readAt;
    if (!playlistsAreOld) return;
    auto contents = std::make_shared<MusicLibraryContents>();
    auto songs = songsAreOld ? readSongs(mpd, m_musicFolder, call) : Songs{m_contents->items, m_songs.ids};
    const auto playlists = readPlaylists(mpd, times, call);
    const auto ids = m_known->idsOf(playlists);
    for (size_t index = 0; index < playlists.size(); ++index) {
        MusicPlaylist playlist{ids[index], playlists[index].name, {}};
        for (const auto& uri : playlists[index].uris)
            playlist.items.push_back(songs.ids.idOf(uri));
        contents->playlists.push_back(std::move(playlist));
    }
    contents->items = std::move(songs.items);
    m_songs.ids = std::move(songs.ids);
    m_times = std::move(times);
    m_readAt = now;
    m_isChanged = false;
    if (!m_contents || m_contents->items != contents->items || m_contents->playlists != contents->playlists)
        m_contents = std::move(contents);
}

ContentsPointer MpdPlayer::contents(Call& call) {
    return withMpd(call, [&](MpdConnection& mpd) {
        refresh(mpd, call);
        return m_contents;
    });
}

std::string MpdPlayer::description(uint64_t playlist, Call& call) {
    return withMpd(call, [&](MpdConnection&) { return m_known->description(playlist); });
}

void MpdPlayer::checkNewName(const std::string& name, Call& call) {
    checkPlaylistName(name);
    withMpd(call, [&](MpdConnection& mpd) {
        refresh(mpd, call);
        refuseTakenName(name);
    });
}

uint64_t MpdPlayer::makePlaylist(const std::string& name, const std::string& description,
                                 const std::vector<uint64_t>& songs, Call& call) {
    checkPlaylistName(name);
    return withMpd(call, [&](MpdConnection& mpd) {
        refresh(mpd, call);
        refuseTakenName(name);
        const auto uris = urisOf(songs);
        const auto id = m_known->announce(name, description);
        m_isChanged = true;
        storePlaylist(mpd, name, uris, call);
        return id;
    });
}

void MpdPlayer::addSongs(uint64_t playlist, const std::vector<uint64_t>& songs, Call& call) {
    withMpd(call, [&](MpdConnection& mpd) {
        refresh(mpd, call);
        const auto found = std::ranges::find(m_contents->playlists, playlist, &MusicPlaylist::persistentID);
        const auto name = playlistName(playlist);
        m_isChanged = true;
        extendPlaylist(mpd, name, found->items.size(), urisOf(songs), call);
    });
}

void MpdPlayer::deletePlaylist(uint64_t playlist, Call& call) {
    withMpd(call, [&](MpdConnection& mpd) {
        refresh(mpd, call);
        const auto name = playlistName(playlist);
        m_isChanged = true;
        mpd.run(call, [&](auto* connection) { return mpd_send_rm(connection, name.c_str()); });
    });
}

void MpdPlayer::play(uint64_t song, Call& call) {
    withMpd(call, [&](MpdConnection& mpd) {
        refresh(mpd, call);
        m_played = playSong(mpd, urisOf({song}).front(), m_played, call);
    });
}

void MpdPlayer::pause(Call& call) {
    if (!isRunning()) return;
    withMpd(call, [&](MpdConnection& mpd) {
        mpd.run(call, [](auto* connection) { return mpd_send_pause(connection, true); });
    });
}

std::string MpdPlayer::playlistName(uint64_t playlist) const {
    const auto found = std::ranges::find(m_contents->playlists, playlist, &MusicPlaylist::persistentID);
    if (found == m_contents->playlists.end())
        throw ScriptError(ScriptError::noSuchObject, "There is no such playlist.");
    return found->name;
}

std::vector<std::string> MpdPlayer::urisOf(const std::vector<uint64_t>& songs) const {
    std::vector<std::string> uris;
    for (const auto song : songs) {
        const auto* uri = m_songs.ids.uriOf(song);
        if (!uri) throw ScriptError(ScriptError::noSuchObject, "There is no such song.");
        uris.push_back(sendable(*uri, "A song’s file name"));
    }
    return uris;
}

void MpdPlayer::refuseTakenName(const std::string& name) const {
    if (std::ranges::find(m_contents->playlists, name, &MusicPlaylist::name) != m_contents->playlists.end())
        fail("There is a playlist “" + name + "” already.");
}

} // namespace bridge::mpd
