#include "tests/bridges/music/music_bridge_test.h"

namespace bridge {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Playback = MusicBridgeTest;

TEST_F(Playback, BeginsByThisScript) {
    engine.willAnswer(scriptList({scriptText("000000000000001A"), scriptText("Café Noir"), scriptText("Ana Moura"),
                                  scriptText("Nights"), scriptText("61.5")}));
    EXPECT_EQ(run(bridge.playSong({"000000000000001A"})),
              (MusicSongDescriptor{"000000000000001A", "library", "Café Noir", "Ana Moura", "Nights", 61.5}));
    EXPECT_THAT(engine.sources(), ElementsAre(R"(with timeout of 30 seconds
    tell application "Music"
    set matchingTracks to (every track of library playlist 1 whose persistent ID is "000000000000001A")
    if (count of matchingTracks) is not 1 then error "Library song not found" number -1728
    set selectedTrack to item 1 of matchingTracks
    play selectedTrack
    return {(persistent ID of selectedTrack as text), (name of selectedTrack as text), (artist of selectedTrack as text), (album of selectedTrack as text), (duration of selectedTrack as real)}
end tell
end timeout)"));
}

TEST_F(Playback, WithoutAllFiveAnswersFails) {
    engine.willAnswer(scriptList({scriptText("1"), scriptText("2"), scriptText("3"), scriptText("4")}));
    EXPECT_EQ(failureOf(bridge.playSong({"1"})),
              AppleBridgeError::operationFailed("Music returned incomplete song metadata.").message());
}

TEST_F(Playback, OfAnUnknownSongSaysSo) {
    engine.willFail(ScriptError(ScriptError::noSuchObject, "Library song not found"));
    EXPECT_EQ(failureOf(bridge.playSong({"1"})), AppleBridgeError::operationFailed("Library song not found").message());
}

TEST_F(Playback, ThatDoesNotBeginInTimeHasChangedNothing) {
    engine.willFail(ScriptError(ScriptError::timedOut, "AppleEvent timed out."));
    try {
        run(bridge.playSong({"1"}));
        FAIL() << "It went well.";
    } catch (const AppleBridgeError& error) {
        EXPECT_EQ(error.kind(), AppleBridgeError::Case::operationFailed);
    }
}

TEST_F(Playback, PausesAnApplicationThatRuns) {
    engine.isApplicationRunning = true;
    run(bridge.pause());
    EXPECT_THAT(engine.sources(),
                ElementsAre("with timeout of 30 seconds\n    tell application \"Music\" to pause\nend timeout"));
}

TEST_F(Playback, DoesNotStartTheApplicationToPauseIt) {
    run(bridge.pause());
    EXPECT_THAT(engine.sources(), IsEmpty());
}

} // namespace
} // namespace bridge
