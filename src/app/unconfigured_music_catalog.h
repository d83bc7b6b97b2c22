#pragma once

#include "platform/music_catalog.h"

namespace bridge {

// A catalogue that nobody has an account for: on this platform there is none that an application may search unasked.
class UnconfiguredMusicCatalog : public MusicCatalog {
public:
    Task<std::vector<MusicCatalogSong>> songs(std::string, int64_t) override {
        throw PlatformError("No developer token is configured for a music catalog.");
        co_return std::vector<MusicCatalogSong>(); // makes it a coroutine
    }
};

} // namespace bridge
