#include "adapters/mpd/playback.h"

#include "tests/adapters/mpd/mpd_test.h"

namespace bridge::mpd {
namespace {

class MpdPlayback : public MpdTest {
protected:
    MpdConnection connect() { return MpdConnection({folder.file("MPD") + "/socket"}, call); }
    bool isPlaying() {
        auto mpd = connect();
        return statusOf(mpd, call).isPlaying;
    }
    std::vector<std::string> queued() {
        auto mpd = connect();
        std::vector<std::string> uris;
        mpd.send(call, mpd_send_list_queue_meta);
        while (auto* song = mpd_recv_song(mpd.get())) {
            uris.emplace_back(mpd_song_get_uri(song));
            mpd_song_free(song);
        }
        mpd.finish(call);
        return uris;
    }
    void addLongSong(const std::string& title) {
        writeSoundFile(music() / (title + ".flac"), {{{"TITLE", title}}, std::vector<double>(60, 440.0)});
    }
};

TEST_F(MpdPlayback, PlaysAndPauses) {
    addLongSong("One");
    player().play(songNamed("One"), call);
    EXPECT_TRUE(isPlaying());
    player().pause(call);
    EXPECT_FALSE(isPlaying());
    player().pause(call);
    EXPECT_FALSE(isPlaying());
}

TEST_F(MpdPlayback, LeavesWhatTheUserHasQueued) {
    for (const auto* title : {"One", "Two", "Three"})
        addLongSong(title);
    contents();
    auto mpd = connect();
    mpd.run(call, [](auto* each) { return mpd_send_add(each, "Three.flac"); });
    player().play(songNamed("One"), call);
    player().play(songNamed("Two"), call);
    EXPECT_THAT(queued(), testing::ElementsAre("Three.flac", "Two.flac"));
    EXPECT_TRUE(isPlaying());
}

TEST_F(MpdPlayback, OfAFileThatHasGoneFails) {
    addLongSong("One");
    addLongSong("Two");
    const auto one = songNamed("One"), two = songNamed("Two");
    std::filesystem::remove(music() / "One.flac");
    EXPECT_NE(failureOf([&] { player().play(one, call); }), "");
    EXPECT_FALSE(isPlaying());
    EXPECT_THAT(queued(), testing::IsEmpty());
    player().play(two, call);
    EXPECT_TRUE(isPlaying());
}

TEST_F(MpdPlayback, OfAnUnknownSongFails) {
    EXPECT_EQ(failureOf([&] { player().play(7, call); }), "There is no such song.");
}

TEST_F(MpdPlayback, DoesNotStartMpdToPauseIt) {
    EXPECT_FALSE(player().isRunning());
    player().pause(call);
    EXPECT_FALSE(player().isRunning());
    EXPECT_FALSE(std::filesystem::exists(folder / "MPD"));
    contents();
    EXPECT_TRUE(player().isRunning());
}

} // namespace
} // namespace bridge::mpd
