#include "adapters/mpd/known_playlists.h"

#include "adapters/mpd/song_ids.h"
#include "base/atomic_file.h"
#include "base/file_descriptor.h"
#include "base/platform_error.h"

#include <algorithm>
#include <charconv>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

namespace bridge::mpd {

namespace {

std::string idText(uint64_t id) {
    return fmt::format("{:016X}", id);
}

uint64_t idFrom(const std::string& text) {
    uint64_t id = 0;
    std::from_chars(text.data(), text.data() + text.size(), id, 16);
    return id;
}

uint64_t randomID() {
    std::random_device random;
    return uint64_t{random()} << 32 | random();
}

std::string hashOf(const StoredPlaylist& playlist) {
    if (playlist.uris.empty()) return {};
    std::string all;
    for (const auto& uri : playlist.uris)
        all += uri + '\n';
    return idText(stableHash(all));
}

// What has gone, or come, with these songs, if it is only one.
template <typename List, typename Songs>
typename List::value_type onlyOne(const List& list, const std::string& wanted, Songs songs) {
    typename List::value_type found = nullptr;
    for (auto* each : list) {
        if (songs(*each) != wanted) continue;
        if (found) return nullptr;
        found = each;
    }
    return found;
}

} // namespace

std::vector<uint64_t> KnownPlaylists::idsOf(const std::vector<StoredPlaylist>& playlists) {
    read();
    std::vector<KnownPlaylist> now;
    std::set<std::string> names;
    for (const auto& playlist : playlists) {
        now.push_back({"", playlist.name, "", hashOf(playlist)});
        names.insert(playlist.name);
    }
    std::vector<const KnownPlaylist*> gone;
    for (const auto& known : m_known)
        if (!names.contains(known.name)) gone.push_back(&known);
    std::vector<KnownPlaylist*> come;
    for (auto& playlist : now) {
        const auto known = std::ranges::find(m_known, playlist.name, &KnownPlaylist::name);
        if (known == m_known.end()) {
            come.push_back(&playlist);
            continue;
        }
        playlist.id = known->id;
        playlist.description = known->description;
    }
    for (auto* playlist : come) {
        const auto songs = [](const KnownPlaylist& each) { return each.songs; };
        const auto* former = playlist->songs.empty() || !onlyOne(come, playlist->songs, songs)
                                 ? nullptr
                                 : onlyOne(gone, playlist->songs, songs);
        playlist->id = former ? former->id : idText(randomID());
        if (former) playlist->description = former->description;
    }
    std::vector<uint64_t> ids;
    for (const auto& playlist : now)
        ids.push_back(idFrom(playlist.id));
    if (now != m_known) keep(std::move(now));
    return ids;
}

std::string KnownPlaylists::description(uint64_t id) const {
    const auto known = std::ranges::find(m_known, idText(id), &KnownPlaylist::id);
    return known == m_known.end() ? "" : known->description;
}

uint64_t KnownPlaylists::announce(const std::string& name, const std::string& description) {
    read();
    const auto id = randomID();
    auto playlists = m_known;
    playlists.push_back({idText(id), name, description, ""});
    keep(std::move(playlists));
    return id;
}

void KnownPlaylists::read() {
    if (m_isRead) return;
    if (std::filesystem::exists(m_file)) {
        std::ifstream file(m_file, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        try {
            if (!file) throw std::runtime_error("it can't be read");
            m_known = decode<std::vector<KnownPlaylist>>(parseJSON(text));
        } catch (const std::exception& error) {
            throw PlatformError("What is known of the playlists is damaged, in " + m_file + ": " + error.what());
        }
    }
    m_isRead = true;
}

void KnownPlaylists::keep(std::vector<KnownPlaylist> playlists) {
    const std::filesystem::path path(m_file);
    const FileDescriptor folder(open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) throw PlatformError::fromErrno(path.parent_path(), errno);
    writeFileAtomically(folder.get(), path.filename(), encodeJSON(playlists), 0600, IfExists::replace);
    m_known = std::move(playlists);
}

} // namespace bridge::mpd
