#pragma once

#include "platform/music_library.h"

namespace bridge {

// What the test puts in, until it fails.
class MemoryMusicLibrary : public MusicLibrary {
public:
    std::shared_ptr<const MusicLibraryContents> library = std::make_shared<MusicLibraryContents>();
    std::optional<std::string> failure;
    size_t opened = 0;

    Task<std::shared_ptr<const MusicLibraryContents>> contents() override {
        ++opened;
        if (failure) throw PlatformError(*failure);
        co_return library;
    }
};

} // namespace bridge
