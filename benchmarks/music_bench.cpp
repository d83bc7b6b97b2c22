#include "base/text.h"
#include "benchmarks/measure.h"
#include "bridges/music/music_data_bridge.h"
#include "tests/fakes/memory_music_library.h"
#include "tests/fakes/scripted_authorization.h"
#include "tests/fakes/scripted_engine.h"
#include "tests/fakes/scripted_music_catalog.h"
#ifdef HAVE_MPD
#include "adapters/mpd/mpd_player.h"
#include "adapters/mpd/sound_output.h"
#include "tests/support/temporary_folder.h"
#include "tools/sound_file/sound_file.h"
#endif

#include <cstdlib>
#include <fmt/format.h>

namespace {

using namespace bridge;
using namespace bridge::bench;

constexpr int songs = 50'000;
constexpr const char* nowhere = "zzz nowhere";

MusicLibraryContents largeLibrary() {
    constexpr const char* words[] = {"Noche", "Été", "Straße", "海の朝", "Harvest", "Река", "Blue"};
    MusicLibraryContents contents;
    for (int number = 0; number < songs; ++number)
        contents.items.push_back({static_cast<uint64_t>(number), fmt::format("{} {}", words[number % 7], number),
                                  fmt::format("The {} Band {}", words[number % 5], number / 40)});
    return contents;
}

// The bridge over such a library.
class Searches {
public:
    void change() { m_library.library = std::make_shared<const MusicLibraryContents>(m_contents); }
    // Milliseconds for a term that has to be looked for everywhere.
    double search() {
        return 1e3 * secondsFor([&] {
                   auto task = m_bridge.searchSongs({nowhere, "library", 100});
                   task.start();
                   if (!task.take().empty()) std::exit(1);
               });
    }

    // What can't be spared: folding, and looking at all that was folded.
    double fold() {
        return 1e3 * secondsFor([&] {
                   m_folded.clear();
                   for (const auto& item : m_contents.items)
                       m_folded.emplace_back(bridge::fold(item.title), bridge::fold(item.artist));
               });
    }
    double scan() {
        return 1e3 * secondsFor([&] {
                   for (const auto& [title, artist] : m_folded)
                       if (title.find(nowhere) != std::string::npos || artist.find(nowhere) != std::string::npos)
                           std::exit(1);
               });
    }

private:
    MusicLibraryContents m_contents = largeLibrary();
    std::vector<std::pair<std::string, std::string>> m_folded;
    MemoryMusicLibrary m_library;
    ScriptedMusicCatalog m_catalog;
    ScriptedEngine m_engine;
    ScriptedAuthorization m_authorization;
    MusicDataBridge m_bridge{m_library, m_catalog, m_engine, m_authorization};
};

#ifdef HAVE_MPD

void comparePlaylists() {
    TemporaryFolder folder;
    std::filesystem::create_directory(folder / "Music");
    writeSoundFile(folder / "Music/song.flac", {{{"TITLE", "Song"}}, {440}});
    mpd::MpdPlayer player({{}, {"/usr/bin/mpd", folder.file("MPD"), folder.file("Music"), mpd::silentOutput}});
    mpd::Call call{std::chrono::seconds(120)};
    const auto song = player.contents(call)->items.at(0).persistentID;
    const std::vector<uint64_t> hundred(100, song);
    int made = 0;
    const auto filled = [&](auto fill) {
        const auto playlist = player.makePlaylist(fmt::format("Playlist {}", ++made), "", {}, call);
        const double seconds = secondsFor([&] { fill(playlist); });
        player.deletePlaylist(playlist, call);
        return 1e3 * seconds;
    };
    const auto atOnce = [&](uint64_t playlist) { player.addSongs(playlist, hundred, call); };
    const auto oneByOne = [&](uint64_t playlist) {
        for (const auto each : hundred)
            player.addSongs(playlist, {each}, call);
    };
    report("100 songs into a playlist, at once against one by one",
           compare(
               5, [&] { return filled(oneByOne); }, [&] { return filled(atOnce); }),
           "ms", "goal 0.10");
}

#endif

} // namespace

int main() {
    Searches searches;
    searches.fold();
    searches.change();
    searches.search();
    report("search in 50,000 songs, against a bare scan",
           compare(
               15, [&] { return searches.scan(); }, [&] { return searches.search(); }),
           "ms", "goal 2.00");
    report("first search after a change, against folding and a scan",
           compare(
               5, [&] { return searches.fold() + searches.scan(); },
               [&] {
                   searches.change();
                   return searches.search();
               }),
           "ms", "goal 1.50");
#ifdef HAVE_MPD
    comparePlaylists();
#endif
}
