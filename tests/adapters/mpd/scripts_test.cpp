#include "adapters/applescript/applescript_engine.h"
#include "adapters/musicapp/music_application.h"
#include "adapters/musicapp/player_music_library.h"
#include "base/apple_bridge_error.h"
#include "bridges/music/music_data_bridge.h"
#include "tests/adapters/mpd/mpd_test.h"
#include "tests/fakes/scripted_authorization.h"
#include "tests/fakes/scripted_music_catalog.h"

namespace bridge::mpd {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// The whole way from a request to MPD and back.
class MusicOverMpd : public MpdTest {
protected:
    struct Everything {
        explicit Everything(const MpdOptions& options) : player(std::make_shared<MpdPlayer>(options)) {}
        static std::vector<std::unique_ptr<applescript::Application>> applications(musicapp::Player& player) {
            std::vector<std::unique_ptr<applescript::Application>> all;
            all.push_back(std::make_unique<musicapp::MusicApplication>(player));
            return all;
        }

        EventLoop loop;
        std::shared_ptr<MpdPlayer> player;
        musicapp::PlayerMusicLibrary library{loop, player};
        ScriptedMusicCatalog catalog;
        AppleScriptEngine engine{loop, applications(*player)};
        ScriptedAuthorization authorization;
        MusicDataBridge bridge{library, catalog, engine, authorization};
    };

    Everything& all() {
        if (!m_all) m_all.emplace(options());
        return *m_all;
    }
    template <typename T> T run(Task<T> task) { return all().loop.runUntilDone(std::move(task)); }
    template <typename T> std::string refusal(Task<T> task) {
        try {
            run(std::move(task));
        } catch (const AppleBridgeError& error) {
            return error.message();
        }
        return "";
    }
    MusicDataBridge& bridge() { return all().bridge; }
    std::vector<MusicSongDescriptor> search(std::optional<std::string> term) {
        return run(bridge().searchSongs({std::move(term), "library", 100}));
    }
    std::vector<std::string> ids() {
        std::vector<std::string> found;
        for (const auto& song : search(std::nullopt))
            found.push_back(song.id);
        return found;
    }

private:
    std::optional<Everything> m_all;
};

TEST_F(MusicOverMpd, IsSearched) {
    addSong("1.flac", {{"TITLE", "Café Noir"}, {"ARTIST", "Ana"}, {"ALBUM", "Nights"}});
    addSong("2.flac", {{"TITLE", "Harvest"}, {"ARTIST", "Noirot"}});
    addSong("3.flac", {{"TITLE", "Nothing"}});
    EXPECT_THAT(search("NOIR"), SizeIs(2));
    EXPECT_THAT(search("cafe "), SizeIs(1));
    EXPECT_THAT(search("nights"), IsEmpty());
    EXPECT_THAT(search(std::nullopt), SizeIs(3));
}

TEST_F(MusicOverMpd, HasPlaylistsMadeFilledAndDeleted) {
    const std::vector<std::string> titles{"A", "B \"quoted\" \\ back", "Ça ira — été", "夜の歌", "أغنية", "😀", "a"};
    for (size_t index = 0; index < titles.size(); ++index)
        addSong(std::to_string(index) + ".flac", {{"TITLE", titles[index]}});
    addSong("untitled.flac", {});
    const auto all = ids();
    ASSERT_THAT(all, SizeIs(8));
    auto wanted = all;
    wanted.push_back(all[3]);
    const auto made = run(bridge().createPlaylist({" Trip \"😀\" ", "Two\nlines \"x\"", wanted}));
    EXPECT_EQ(made.name, "Trip \"😀\"");
    EXPECT_EQ(made.description, "Two\nlines \"x\"");
    EXPECT_EQ(made.trackCount, 9);
    const auto added = run(bridge().addSongs({made.id, {all[0], all[0]}}));
    EXPECT_EQ(added, (MusicPlaylistDescriptor{made.id, made.name, made.description, 11}));
    EXPECT_THAT(run(bridge().listPlaylists()),
                ElementsAre(MusicPlaylistDescriptor{made.id, made.name, std::nullopt, 11}));
    run(bridge().deletePlaylist({made.id}));
    EXPECT_THAT(run(bridge().listPlaylists()), IsEmpty());
    EXPECT_THAT(refusal(bridge().deletePlaylist({made.id})), HasSubstr("User playlist not found"));
    EXPECT_NE(refusal(bridge().addSongs({made.id, {all[0]}})), "");
}

TEST_F(MusicOverMpd, TakesAHundredSongsOfTheSameTitle) {
    for (int song = 0; song < 100; ++song)
        addSong(std::to_string(song) + ".flac", {{"TITLE", "Untitled"}});
    EXPECT_EQ(run(bridge().createPlaylist({"All", std::nullopt, ids()})).trackCount, 100);
    auto tooMany = ids();
    tooMany.push_back(tooMany[0]);
    EXPECT_THAT(refusal(bridge().createPlaylist({"More", std::nullopt, tooMany})), HasSubstr("at most 100 songs"));
}

TEST_F(MusicOverMpd, RefusesNamesThatMpdCantKeep) {
    addSongs(1);
    const auto create = [&](const char* name) { return refusal(bridge().createPlaylist({name, "", ids()})); };
    EXPECT_EQ(create("AC/DC"),
              "Operation failed: A playlist’s name can’t contain a slash: MPD keeps it as a file’s name.");
    EXPECT_THAT(create("two\nlines"), HasSubstr("control characters"));
    EXPECT_EQ(create("Trip"), "");
    EXPECT_EQ(create("Trip"), "Operation failed: There is a playlist “Trip” already.");
}

TEST_F(MusicOverMpd, MakesNothingWhenASongHasVanished) {
    addSongs(2);
    const auto all = ids();
    std::filesystem::remove(music() / "song 2.flac");
    MpdConnection connection({folder.file("MPD") + "/socket"}, call);
    connection.run(call, [](auto* mpd) { return mpd_send_update(mpd, nullptr); });
    while (ids().size() == 2) {
    }
    EXPECT_THAT(refusal(bridge().createPlaylist({"Trip", "", {all[1]}})), HasSubstr("between 1 and 100 library songs"));
    EXPECT_THAT(run(bridge().listPlaylists()), IsEmpty());
}

TEST_F(MusicOverMpd, PlaysAndPauses) {
    writeSoundFile(music() / "1.flac",
                   {{{"TITLE", "Café"}, {"ARTIST", "Ana"}, {"ALBUM", "Nights"}}, std::vector<double>(60, 440.0)});
    const auto played = run(bridge().playSong({ids()[0]}));
    EXPECT_EQ(played.title, "Café");
    EXPECT_EQ(played.artistName, "Ana");
    EXPECT_EQ(played.albumTitle, "Nights");
    EXPECT_GT(played.duration, 30.0);
    run(bridge().pause());
    EXPECT_THAT(refusal(bridge().playSong({"000000000000001A"})), HasSubstr("Library song not found"));
    EXPECT_THAT(refusal(bridge().playSong({"\""})), HasSubstr("Library song not found"));
    std::filesystem::remove(music() / "1.flac");
    EXPECT_NE(refusal(bridge().playSong({played.id})), "");
}

TEST_F(MusicOverMpd, IsNotStartedToBePaused) {
    run(bridge().pause());
    EXPECT_FALSE(all().player->isRunning());
    EXPECT_FALSE(std::filesystem::exists(folder / "MPD"));
}

} // namespace
} // namespace bridge::mpd
