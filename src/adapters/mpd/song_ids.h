#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace bridge::mpd {

// FNV-1a with 64 bits.
uint64_t stableHash(std::string_view text);

// MPD knows songs by their URIs alone. Their ids are hashes of those, so they are the same after every restart and
// rescan. Of two URIs with the same hash, the one that comes later gets the hash of the URI with a NUL behind it; so
// give them in an order that is always the same.
class SongIDs {
public:
    using Hash = std::function<uint64_t(std::string_view)>;

    explicit SongIDs(Hash hash = stableHash) : m_hash(std::move(hash)) {}

    uint64_t idOf(const std::string& uri);
    // nullptr for an id that nobody has been given.
    const std::string* uriOf(uint64_t id) const;

private:
    Hash m_hash;
    std::unordered_map<uint64_t, std::string> m_uris;
};

} // namespace bridge::mpd
