#include "adapters/mpd/playlist_changes.h"
#include "tests/adapters/mpd/mpd_test.h"

namespace bridge::mpd {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class MpdPlaylists : public MpdTest {
protected:
    std::string refusalOf(const std::string& name) {
        return failureOf([&] { player().makePlaylist(name, "", {}, call); });
    }
    std::vector<uint64_t> itemsOf(uint64_t playlist) {
        for (const auto& each : contents()->playlists)
            if (each.persistentID == playlist) return each.items;
        throw std::runtime_error("there is no such playlist");
    }
    // As a program that isn't ours would.
    void loseFile(const std::string& title) {
        const auto wanted = songNamed(title);
        for (const auto& entry : std::filesystem::directory_iterator(music()))
            if (stableHash(entry.path().filename().string()) == wanted) std::filesystem::remove(entry.path());
        MpdConnection connection({folder.file("MPD") + "/socket"}, call);
        connection.run(call, [](auto* mpd) { return mpd_send_update(mpd, nullptr); });
    }
};

TEST_F(MpdPlaylists, KeepOrderAndRepetitions) {
    addSongs(3);
    const auto all = songs();
    const auto trip = player().makePlaylist("Trip “😀” \"x\"", "Two\nlines", {all[2], all[0], all[2]}, call);
    EXPECT_THAT(itemsOf(trip), ElementsAre(all[2], all[0], all[2]));
    player().addSongs(trip, {all[1], all[2]}, call);
    EXPECT_THAT(itemsOf(trip), ElementsAre(all[2], all[0], all[2], all[1], all[2]));
    EXPECT_EQ(player().description(trip, call), "Two\nlines");
    EXPECT_EQ(contents()->playlists[0].name, "Trip “😀” \"x\"");
}

TEST_F(MpdPlaylists, MayBeEmpty) {
    const auto empty = player().makePlaylist("Nothing", "", {}, call);
    EXPECT_THAT(itemsOf(empty), IsEmpty());
    player().deletePlaylist(empty, call);
    EXPECT_THAT(contents()->playlists, IsEmpty());
}

TEST_F(MpdPlaylists, AreRefusedUnderNamesThatMpdCantKeep) {
    EXPECT_THAT(refusalOf("AC/DC"), HasSubstr("slash"));
    EXPECT_THAT(refusalOf("two\nlines"), HasSubstr("control characters"));
    EXPECT_THAT(refusalOf("bell\a"), HasSubstr("control characters"));
    EXPECT_EQ(refusalOf("Trip"), "");
    EXPECT_EQ(refusalOf("Trip"), "There is a playlist “Trip” already.");
    EXPECT_NE(refusalOf(std::string(300, 'x')), "");
    EXPECT_EQ(contents()->playlists.size(), 1u);
}

TEST_F(MpdPlaylists, AreNotMadeByHalves) {
    addSongs(3);
    const std::vector wanted{songNamed("Song 1"), songNamed("Song 2"), songNamed("Song 3")};
    const auto home = player().makePlaylist("Home", "", {wanted[0]}, call);
    loseFile("Song 3");
    // The library still knows it when this is asked, or does not any more: it fails in both cases.
    EXPECT_NE(failureOf([&] {
                  while (true)
                      player().deletePlaylist(player().makePlaylist("Trip", "", wanted, call), call);
              }),
              "");
    EXPECT_NE(failureOf([&] { player().addSongs(home, wanted, call); }), "");
    EXPECT_EQ(contents()->playlists.size(), 1u);
    EXPECT_THAT(itemsOf(home), ElementsAre(wanted[0]));
}

TEST_F(MpdPlaylists, TakeBackWhatWasAddedBeforeARefusal) {
    addSongs(2);
    contents();
    MpdConnection mpd({folder.file("MPD") + "/socket"}, call);
    const std::vector<std::string> uris{"song 1.flac", "song 2.flac", "no such.flac"};
    EXPECT_THROW(storePlaylist(mpd, "Trip", uris, call), MpdRefusal);
    EXPECT_THAT(contents()->playlists, IsEmpty());
    storePlaylist(mpd, "Home", {"song 2.flac"}, call);
    EXPECT_THROW(extendPlaylist(mpd, "Home", 1, uris, call), MpdRefusal);
    EXPECT_THAT(contents()->playlists.at(0).items, ElementsAre(stableHash("song 2.flac")));
}

TEST_F(MpdPlaylists, ThatAreUnknownAreRefused) {
    addSongs(1);
    EXPECT_EQ(failureOf([&] { player().deletePlaylist(7, call); }), "There is no such playlist.");
    EXPECT_EQ(failureOf([&] { player().addSongs(7, songs(), call); }), "There is no such playlist.");
    const auto home = player().makePlaylist("Home", "", songs(), call);
    EXPECT_EQ(failureOf([&] { player().addSongs(home, {7}, call); }), "There is no such song.");
    EXPECT_EQ(itemsOf(home), songs());
}

TEST_F(MpdPlaylists, TakeAThousandSongsAtOnce) {
    addSongs(1);
    const auto home = player().makePlaylist("Home", "", std::vector(1000, songs()[0]), call);
    player().addSongs(home, std::vector(1000, songs()[0]), call);
    EXPECT_EQ(itemsOf(home).size(), 2000u);
}

} // namespace
} // namespace bridge::mpd
