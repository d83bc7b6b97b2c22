#include "bridges/music/descriptions.h"

#include "bridges/music/persistent_id.h"

#include <charconv>
#include <cmath>

namespace bridge {

namespace {

template <typename Number> std::optional<Number> number(const std::string& text) {
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [rest, problem] = std::from_chars(text.data(), end, value);
    if (problem != std::errc() || rest != end) return std::nullopt;
    return value;
}

} // namespace

MusicSongDescriptor describe(const MusicItem& item) {
    return {persistentIDText(item.persistentID),          "library",    item.title, item.artist, item.album,
            static_cast<double>(item.totalTime) / 1000.0, item.location};
}

MusicSongDescriptor describe(const MusicCatalogSong& song) {
    return {song.id, "catalog", song.title, song.artistName, song.albumTitle, song.duration, song.url};
}

MusicPlaylistDescriptor describe(const MusicPlaylist& playlist) {
    return {persistentIDText(playlist.persistentID), playlist.name, std::nullopt,
            static_cast<int64_t>(playlist.items.size())};
}

std::optional<int64_t> wholeNumber(const std::string& text) {
    return number<int64_t>(text);
}

std::optional<double> realNumber(const std::string& text) {
    const auto value = number<double>(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

} // namespace bridge
