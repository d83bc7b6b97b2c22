#include "adapters/mpd/library_reader.h"

#include "base/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace bridge::mpd {

namespace {

constexpr unsigned songsAtOnce = 5000;

struct FreeSong {
    void operator()(mpd_song* song) const { mpd_song_free(song); }
};
struct FreePlaylist {
    void operator()(mpd_playlist* playlist) const { mpd_playlist_free(playlist); }
};
struct FreePair {
    mpd_connection* connection;
    void operator()(mpd_pair* pair) const { mpd_return_pair(connection, pair); }
};

std::optional<std::string> tag(const mpd_song& song, mpd_tag_type type) {
    const char* value = mpd_song_get_tag(&song, type, 0);
    if (!value || trim(value).empty()) return std::nullopt;
    return value;
}

std::string fileURL(const std::string& path) {
    std::string url = "file://";
    for (const char byte : path) {
        const bool isPlain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= '0' && byte <= '9') ||
                             std::string_view("/-._~!$&'()*+,=:@").find(byte) != std::string_view::npos;
        if (isPlain)
            url += byte;
        else
            url += fmt::format("%{:02X}", static_cast<unsigned char>(byte));
    }
    return url;
}

std::string allOf(const mpd_song& song, mpd_tag_type type) {
    std::string all;
    for (unsigned index = 0; const char* value = mpd_song_get_tag(&song, type, index); ++index)
        all += (index == 0 ? "" : ", ") + std::string(value);
    return all;
}

MusicItem itemOf(const mpd_song& song, const std::optional<std::string>& musicFolder, SongIDs& ids) {
    const std::string uri = mpd_song_get_uri(&song);
    const bool isStream = uri.find("://") != std::string::npos;
    const bool isPartOfAFile = mpd_song_get_start(&song) != 0 || mpd_song_get_end(&song) != 0;
    MusicItem item;
    item.persistentID = ids.idOf(uri);
    item.title = tag(song, MPD_TAG_TITLE).value_or(uri.substr(uri.rfind('/') + 1));
    item.artist = allOf(song, MPD_TAG_ARTIST);
    item.album = tag(song, MPD_TAG_ALBUM);
    item.totalTime = mpd_song_get_duration_ms(&song);
    if (musicFolder && !isStream && !isPartOfAFile) item.location = fileURL(*musicFolder + '/' + uri);
    item.kind = isStream ? MusicItemKind::other : MusicItemKind::song;
    return item;
}

} // namespace

time_t ChangeTimes::newestPlaylist() const {
    time_t newest = 0;
    for (const auto& [name, changed] : playlists)
        newest = std::max(newest, changed);
    return newest;
}

ChangeTimes readChangeTimes(MpdConnection& mpd, Call& call) {
    ChangeTimes times;
    mpd.send(call, mpd_send_stats);
    const std::unique_ptr<mpd_stats, decltype(&mpd_stats_free)> stats(mpd_recv_stats(mpd.get()), &mpd_stats_free);
    mpd.finish(call);
    if (stats) times.songs = static_cast<time_t>(mpd_stats_get_db_update_time(stats.get()));
    mpd.send(call, mpd_send_list_playlists);
    while (const std::unique_ptr<mpd_playlist, FreePlaylist> playlist{mpd_recv_playlist(mpd.get())})
        times.playlists.emplace_back(mpd_playlist_get_path(playlist.get()),
                                     mpd_playlist_get_last_modified(playlist.get()));
    mpd.finish(call);
    std::ranges::sort(times.playlists);
    return times;
}

Songs readSongs(MpdConnection& mpd, const std::optional<std::string>& musicFolder, Call& call) {
    Songs songs;
    for (unsigned start = 0;; start += songsAtOnce) {
        mpd.send(call, [&](mpd_connection* connection) {
            return mpd_search_db_songs(connection, true) && mpd_search_add_expression(connection, "(file != '')") &&
                   mpd_search_add_window(connection, start, start + songsAtOnce) && mpd_search_commit(connection);
        });
        const auto before = songs.items.size();
        while (const std::unique_ptr<mpd_song, FreeSong> song{mpd_recv_song(mpd.get())})
            songs.items.push_back(itemOf(*song, musicFolder, songs.ids));
        mpd.finish(call);
        if (songs.items.size() - before < songsAtOnce) return songs;
    }
}

std::vector<StoredPlaylist> readPlaylists(MpdConnection& mpd, const ChangeTimes& times, Call& call) {
    std::vector<StoredPlaylist> playlists;
    for (const auto& [name, changed] : times.playlists)
        try {
            StoredPlaylist playlist{name, {}};
            mpd.send(call,
                     [&, &its = name](auto* connection) { return mpd_send_list_playlist(connection, its.c_str()); });
            while (const std::unique_ptr<mpd_song, FreeSong> song{mpd_recv_song(mpd.get())})
                playlist.uris.emplace_back(mpd_song_get_uri(song.get()));
            mpd.finish(call);
            playlists.push_back(std::move(playlist));
        } catch (const MpdRefusal& refusal) {
            if (refusal.code() != MPD_SERVER_ERROR_NO_EXIST) throw;
        }
    return playlists;
}

std::optional<std::string> readMusicFolder(MpdConnection& mpd, Call& call) {
    std::optional<std::string> folder;
    try {
        mpd.send(call, [](auto* connection) { return mpd_send_command(connection, "config", nullptr); });
        if (const std::unique_ptr<mpd_pair, FreePair> pair{mpd_recv_pair_named(mpd.get(), "music_directory"),
                                                           FreePair{mpd.get()}})
            folder = pair->value;
        mpd.finish(call);
    } catch (const MpdRefusal&) {
        return std::nullopt; // it tells only those who come by a local socket
    }
    // It may also be somewhere on a network.
    return folder && folder->starts_with('/') ? folder : std::nullopt;
}

} // namespace bridge::mpd
