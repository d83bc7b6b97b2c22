#pragma once

#include "base/apple_bridge_error.h"
#include "bridges/music/music_data_bridge.h"
#include "tests/fakes/memory_music_library.h"
#include "tests/fakes/scripted_authorization.h"
#include "tests/fakes/scripted_engine.h"
#include "tests/fakes/scripted_music_catalog.h"

#include <gmock/gmock.h>

namespace bridge {

// A bridge over a library of four items.
class MusicBridgeTest : public testing::Test {
protected:
    MusicBridgeTest() {
        MusicLibraryContents contents;
        contents.items = {{0x1A, "Café Noir", "Ana Moura", "Nights", 61'500, "file:///music/a.flac"},
                          {0xFEDCBA9876543210, "Harvest", "The Field", std::nullopt, 180'000, std::nullopt},
                          {0x2B, "Straße", "", "Nights", 0, std::nullopt},
                          {0x3C, "Evening News", "Radio", std::nullopt, 0, std::nullopt, MusicItemKind::other}};
        contents.playlists = {{0x77, "Morning", {0x1A, 0x1A, 0x2B}}, {0x78, "Empty", {}}};
        library.library = std::make_shared<const MusicLibraryContents>(contents);
    }

    template <typename T> static T run(Task<T> task) {
        task.start();
        if (!task.done()) throw std::logic_error("It waits.");
        return task.take();
    }
    // What it failed with, as the client reads it; "" when it went well.
    template <typename T> static std::string failureOf(Task<T> task) {
        try {
            run(std::move(task));
        } catch (const AppleBridgeError& error) {
            return error.message();
        }
        return "";
    }
    std::vector<std::string> titles(std::optional<std::string> term, int64_t limit = 100,
                                    std::string source = "library") {
        std::vector<std::string> found;
        for (const auto& song : run(bridge.searchSongs({std::move(term), std::move(source), limit})))
            found.push_back(song.title);
        return found;
    }
    std::string refusalToSearch(std::optional<std::string> term, std::string source) {
        return failureOf(bridge.searchSongs({std::move(term), std::move(source), 10}));
    }

    MemoryMusicLibrary library;
    ScriptedMusicCatalog catalog;
    ScriptedEngine engine;
    ScriptedAuthorization authorization;
    MusicDataBridge bridge{library, catalog, engine, authorization};
};

} // namespace bridge
