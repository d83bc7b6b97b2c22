#include "adapters/mpd/playlist_changes.h"

namespace bridge::mpd {

namespace {

void addAll(MpdConnection& mpd, const std::string& name, const std::vector<std::string>& uris, Call& call) {
    mpd.runList(call, [&](auto* connection) {
        for (const auto& uri : uris)
            mpd_send_playlist_add(connection, name.c_str(), uri.c_str());
    });
}

} // namespace

void checkPlaylistName(const std::string& name) {
    if (sendable(name, "A playlist’s name").find('/') != std::string::npos)
        fail("A playlist’s name can’t contain a slash: MPD keeps it as a file’s name.");
}

void storePlaylist(MpdConnection& mpd, const std::string& name, const std::vector<std::string>& uris, Call& call) {
    // MPD makes a playlist by adding to it; the address of a stream is taken without being looked at.
    constexpr const char* anything = "http://localhost/";
    try {
        if (!uris.empty()) return addAll(mpd, name, uris, call);
        mpd.runList(call, [&](auto* connection) {
            mpd_send_playlist_add(connection, name.c_str(), anything);
            mpd_send_playlist_delete(connection, name.c_str(), 0);
        });
    } catch (const MpdRefusal& refusal) {
        if (refusal.index() > 0) mpd.run(call, [&](auto* connection) { return mpd_send_rm(connection, name.c_str()); });
        throw;
    }
}

void extendPlaylist(MpdConnection& mpd, const std::string& name, size_t size, const std::vector<std::string>& uris,
                    Call& call) {
    try {
        addAll(mpd, name, uris, call);
    } catch (const MpdRefusal& refusal) {
        if (refusal.index() > 0)
            mpd.runList(call, [&](auto* connection) {
                for (size_t position = size + refusal.index(); position > size; --position)
                    mpd_send_playlist_delete(connection, name.c_str(), static_cast<unsigned>(position - 1));
            });
        throw;
    }
}

} // namespace bridge::mpd
