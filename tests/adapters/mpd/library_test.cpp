#include "tests/adapters/mpd/mpd_test.h"

namespace bridge::mpd {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MpdLibrary : public MpdTest {
protected:
    // By another program, on the same MPD.
    template <typename Send> void otherwise(Send request) {
        MpdConnection connection({folder.file("MPD") + "/socket"}, call);
        connection.run(call, request);
    }
    std::vector<std::string> titles() {
        std::vector<std::string> found;
        for (const auto& item : contents()->items)
            found.push_back(item.title);
        std::ranges::sort(found);
        return found;
    }
};

TEST_F(MpdLibrary, TellsWhatTheFilesSayOfThemselves) {
    addSong("Ana/Café Noir #1.flac",
            {{"TITLE", "Café \"Noir\""}, {"ARTIST", "Ana"}, {"ARTIST", "Béla"}, {"ALBUM", "夜"}});
    const auto library = contents();
    ASSERT_EQ(library->items.size(), 1u);
    const auto& item = library->items[0];
    EXPECT_EQ(item.persistentID, stableHash("Ana/Café Noir #1.flac"));
    EXPECT_EQ(item.title, "Café \"Noir\"");
    EXPECT_EQ(item.artist, "Ana, Béla");
    EXPECT_EQ(item.album, "夜");
    EXPECT_GT(item.totalTime, 500);
    EXPECT_EQ(item.location, "file://" + music().string() + "/Ana/Caf%C3%A9%20Noir%20%231.flac");
    EXPECT_EQ(item.kind, MusicItemKind::song);
}

TEST_F(MpdLibrary, NamesSongsWithoutATitleAsTheirFiles) {
    addSong("a/track 7 😀.flac", {});
    addSong("b.flac", {{"TITLE", "  "}});
    EXPECT_THAT(titles(), ElementsAre("b.flac", "track 7 😀.flac"));
    EXPECT_EQ(contents()->items[0].artist, "");
    EXPECT_EQ(contents()->items[0].album, std::nullopt);
}

TEST_F(MpdLibrary, MayBeEmpty) {
    EXPECT_THAT(contents()->items, IsEmpty());
    EXPECT_THAT(contents()->playlists, IsEmpty());
}

TEST_F(MpdLibrary, IsTheSameObjectUntilItChanges) {
    addSongs(2);
    const auto before = contents();
    EXPECT_EQ(contents(), before);
    otherwise([](auto* mpd) { return mpd_send_update(mpd, nullptr); });
    EXPECT_EQ(contents(), before);
    const auto playlist = player().makePlaylist("Trip", "", {songs()[0]}, call);
    const auto after = contents();
    EXPECT_NE(after, before);
    EXPECT_THAT(after->playlists, ElementsAre(MusicPlaylist{playlist, "Trip", {songs()[0]}}));
}

TEST_F(MpdLibrary, SeesNewSongs) {
    addSongs(1);
    EXPECT_THAT(titles(), ElementsAre("Song 1"));
    addSongs(3);
    otherwise([](auto* mpd) { return mpd_send_update(mpd, nullptr); });
    while (contents()->items.size() < 3) {
    }
    EXPECT_THAT(titles(), ElementsAre("Song 1", "Song 2", "Song 3"));
}

TEST_F(MpdLibrary, KeepsItsIDsOverRestartAndRescan) {
    addSongs(3);
    const auto playlist = player().makePlaylist("Trip", "Far away", {songs()[2], songs()[2]}, call);
    const auto before = *contents();
    restart();
    addSong("another.flac", {{"TITLE", "Another"}});
    EXPECT_EQ(contents()->items.size(), 4u);
    for (const auto& item : before.items)
        EXPECT_THAT(contents()->items, testing::Contains(item));
    EXPECT_EQ(contents()->playlists, before.playlists);
    EXPECT_EQ(player().description(playlist, call), "Far away");
    std::filesystem::remove(folder / "MPD/database");
    restart();
    EXPECT_EQ(contents()->playlists, before.playlists);
    EXPECT_EQ(contents()->items.size(), 4u);
}

TEST_F(MpdLibrary, FollowsAPlaylistThatAnotherProgramRenames) {
    addSongs(3);
    const auto trip = player().makePlaylist("Trip", "Far away", {songs()[0]}, call);
    player().makePlaylist("Home", "", {songs()[1]}, call);
    contents();
    otherwise([](auto* mpd) { return mpd_send_rename(mpd, "Trip", "Journey"); });
    while (contents()->playlists.back().name == "Trip") {
    }
    EXPECT_EQ(contents()->playlists[1].name, "Journey");
    EXPECT_EQ(contents()->playlists[1].persistentID, trip);
    EXPECT_EQ(player().description(trip, call), "Far away");
}

TEST_F(MpdLibrary, ReadsFiveThousandSongsInPieces) {
    // As a playlist file, the only thing that can be made so quickly in such numbers: a cue sheet.
    addSong("all.flac", {});
    std::string sheet = "FILE \"all.flac\" WAVE\n";
    for (int track = 1; track <= 99; ++track)
        sheet += "TRACK " + std::to_string(track) + " AUDIO\nTITLE \"Part " + std::to_string(track) +
                 "\"\nINDEX 01 00:00:" + (track < 10 ? "0" : "") + std::to_string(track % 75) + "\n";
    for (int copy = 0; copy < 52; ++copy)
        putFile(music() / ("sheet " + std::to_string(copy) + ".cue"), sheet);
    EXPECT_GT(contents()->items.size(), 5000u);
    const auto again = songs();
    EXPECT_EQ(std::set(again.begin(), again.end()).size(), again.size());
}

TEST_F(MpdLibrary, MayLieDeeperThanASocketCan) {
    addSongs(1);
    auto deep = options();
    deep.own.folder += "/" + std::string(120, 'd') + "/\"quoted\" \\ folder";
    MpdPlayer player(deep);
    EXPECT_EQ(player.contents(call)->items.size(), 1u);
}

TEST_F(MpdLibrary, SaysWhatIsMissing) {
    auto without = options();
    without.own.program = "/nowhere/mpd";
    MpdPlayer none(without);
    EXPECT_EQ(failureOf([&] { none.contents(call); }), "MPD is not installed. Install mpd.");
    EXPECT_EQ(none.whyUnavailable(), "MPD is not installed. Install mpd.");
    EXPECT_FALSE(none.isRunning());
    MpdPlayer some(options());
    EXPECT_EQ(some.whyUnavailable(), std::nullopt);
    EXPECT_FALSE(some.isRunning());
    std::filesystem::remove(music());
    const auto missing =
        "There is no music folder " + music().string() + ". Make it, or set XDG_MUSIC_DIR in ~/.config/user-dirs.dirs.";
    EXPECT_EQ(some.whyUnavailable(), missing);
    EXPECT_EQ(failureOf([&] { contents(); }), missing);
    std::filesystem::create_directory(music());
    EXPECT_THAT(contents()->items, IsEmpty());
}

} // namespace
} // namespace bridge::mpd
