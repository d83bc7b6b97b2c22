#pragma once

#include "adapters/mpd/library_reader.h"
#include "adapters/mpd/private_mpd.h"
#include "adapters/mpd/running_mpd.h"

namespace bridge::mpd {

struct MpdOptions {
    // Where the user's own MPD is looked for; without it there is only the private one.
    Environment environment = {};
    PrivateMpdOptions own;
};

// The music of an MPD, for the Music application that it stands in for: the user's own when it runs, otherwise a
// private one, which is started when it is first needed. It is one conversation, that threads have in turns and that
// begins again when it was broken off; a request that it broke off under has failed.
//
// Playlists are those that MPD stores. MPD has no two of one name and no name with a slash, so neither can be made.
// What is played is put behind what the user has queued, and taken away again when the next song is.
class MpdPlayer : public musicapp::Player {
public:
    explicit MpdPlayer(MpdOptions options);
    ~MpdPlayer() override;

    bool isRunning() const override;
    std::optional<std::string> whyUnavailable() const override;
    musicapp::ContentsPointer contents(Call& call) override;
    std::string description(uint64_t playlist, Call& call) override;
    void checkNewName(const std::string& name, Call& call) override;
    uint64_t makePlaylist(const std::string& name, const std::string& description, const std::vector<uint64_t>& songs,
                          Call& call) override;
    void addSongs(uint64_t playlist, const std::vector<uint64_t>& songs, Call& call) override;
    void deletePlaylist(uint64_t playlist, Call& call) override;
    void play(uint64_t song, Call& call) override;
    void pause(Call& call) override;

    // Of the private one.
    pid_t processID() const { return m_private.processID(); }

private:
    template <typename Action> auto withMpd(Call& call, Action action);
    MpdConnection& connection(Call& call);
    void connect(const MpdServer& server, Call& call);
    void awaitFirstScan(MpdConnection& mpd, Call& call);
    // Makes the contents those of now.
    void refresh(MpdConnection& mpd, Call& call);
    std::string playlistName(uint64_t playlist) const;
    std::vector<std::string> urisOf(const std::vector<uint64_t>& songs) const;
    void refuseTakenName(const std::string& name) const;

    MpdOptions m_options;
    PrivateMpd m_private;
    std::timed_mutex m_mutex; // of all that follows
    MpdServer m_server;
    std::unique_ptr<MpdConnection> m_connection;
    bool m_isScanned = false; // since the private one was started
    std::optional<std::string> m_musicFolder;
    std::optional<KnownPlaylists> m_known;
    Songs m_songs;
    std::optional<ChangeTimes> m_times;
    time_t m_readAt = 0;     // by the clock of this computer
    bool m_isChanged = true; // the playlists, by us
    musicapp::ContentsPointer m_contents;
    std::optional<unsigned> m_played; // in MPD's queue
};

} // namespace bridge::mpd
