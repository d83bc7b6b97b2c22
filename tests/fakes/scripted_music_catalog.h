#pragma once

#include "platform/music_catalog.h"

namespace bridge {

// Answers with what the test wrote down, as many as are asked for, and remembers the terms.
class ScriptedMusicCatalog : public MusicCatalog {
public:
    std::vector<MusicCatalogSong> found;
    std::optional<std::string> failure;
    std::vector<std::string> terms;

    Task<std::vector<MusicCatalogSong>> songs(std::string term, int64_t limit) override {
        terms.push_back(std::move(term));
        if (failure) throw PlatformError(*failure);
        auto songs = found;
        if (songs.size() > static_cast<size_t>(limit)) songs.resize(static_cast<size_t>(limit));
        co_return songs;
    }
};

} // namespace bridge
