#include "adapters/mpd/song_ids.h"

namespace bridge::mpd {

uint64_t stableHash(std::string_view text) {
    constexpr uint64_t prime = 0x100000001b3;
    uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : text) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= prime;
    }
    return hash;
}

uint64_t SongIDs::idOf(const std::string& uri) {
    for (auto name = uri;; name += '\0') {
        const auto id = m_hash(name);
        if (m_uris.try_emplace(id, uri).first->second == uri) return id;
    }
}

const std::string* SongIDs::uriOf(uint64_t id) const {
    const auto found = m_uris.find(id);
    return found == m_uris.end() ? nullptr : &found->second;
}

} // namespace bridge::mpd
