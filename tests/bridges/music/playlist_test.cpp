#include "tests/bridges/music/music_bridge_test.h"

namespace bridge {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Playlists : public MusicBridgeTest {
protected:
    Playlists() {
        engine.willAnswer(scriptList(
            {scriptText("00000000000000AA"), scriptText("Trip"), scriptText("For the road"), scriptText("2")}));
    }
    std::string refusalToCreate(std::string name, std::vector<std::string> ids) {
        return failureOf(bridge.createPlaylist({std::move(name), std::nullopt, std::move(ids)}));
    }
    std::string refusalToAdd(std::vector<std::string> ids) {
        return failureOf(bridge.addSongs({"77", std::move(ids)}));
    }
    static std::string malformed(std::string_view detail) {
        return AppleBridgeError::malformedRequest(detail).message();
    }
};

TEST_F(Playlists, AreListed) {
    EXPECT_THAT(run(bridge.listPlaylists()),
                ElementsAre(MusicPlaylistDescriptor{"0000000000000077", "Morning", std::nullopt, 3},
                            MusicPlaylistDescriptor{"0000000000000078", "Empty", std::nullopt, 0}));
    EXPECT_THAT(engine.sources(), IsEmpty());
}

TEST_F(Playlists, AreMadeByThisScript) {
    const auto made =
        run(bridge.createPlaylist({" My \"Trip\"\n", "For\nthe road", {" 000000000000001A ", "FEDCBA9876543210"}}));
    EXPECT_EQ(made, (MusicPlaylistDescriptor{"00000000000000AA", "Trip", "For the road", 2}));
    EXPECT_THAT(engine.sources(), ElementsAre(R"(with timeout of 30 seconds
    tell application "Music"
    set resolvedTracks to {}
    set matchingTracks to search library playlist 1 for "Café Noir" only songs
set selectedTrack to missing value
repeat with candidateTrack in matchingTracks
    if (persistent ID of candidateTrack as text) is "000000000000001A" then
        set selectedTrack to candidateTrack
        exit repeat
    end if
end repeat
if selectedTrack is missing value then error "Library song not found" number -1728
set end of resolvedTracks to selectedTrack
set matchingTracks to search library playlist 1 for "Harvest" only songs
set selectedTrack to missing value
repeat with candidateTrack in matchingTracks
    if (persistent ID of candidateTrack as text) is "FEDCBA9876543210" then
        set selectedTrack to candidateTrack
        exit repeat
    end if
end repeat
if selectedTrack is missing value then error "Library song not found" number -1728
set end of resolvedTracks to selectedTrack
    set targetPlaylist to make new user playlist with properties {name:"My \"Trip\"", description:"For\nthe road"}
    repeat with selectedTrack in resolvedTracks
        duplicate selectedTrack to targetPlaylist
    end repeat
    return {(persistent ID of targetPlaylist as text), (name of targetPlaylist as text), (description of targetPlaylist as text), (count of tracks of targetPlaylist)}
end tell
end timeout)"));
}

TEST_F(Playlists, WithoutADescriptionHaveAnEmptyOne) {
    run(bridge.createPlaylist({"Trip", std::nullopt, {"000000000000002B"}}));
    EXPECT_THAT(engine.sources().at(0), HasSubstr("description:\"\"}"));
}

TEST_F(Playlists, GetSongsByThisScript) {
    EXPECT_EQ(run(bridge.addSongs({"77\"", {"000000000000002B"}})).trackCount, 2);
    EXPECT_THAT(engine.sources().at(0),
                HasSubstr("\n    set targetPlaylist to first user playlist whose persistent ID is \"77\\\"\"\n"
                          "    repeat with selectedTrack in resolvedTracks\n"));
}

TEST_F(Playlists, TakeTheSameSongTwice) {
    run(bridge.addSongs({"77", {"000000000000002B", "000000000000002B"}}));
    const auto& source = engine.sources().at(0);
    const auto first = source.find("for \"Straße\"");
    EXPECT_THAT(source.substr(first + 1), HasSubstr("for \"Straße\""));
}

TEST_F(Playlists, LeaveOutWhatIsNoSongOfTheLibrary) {
    run(bridge.createPlaylist({"Trip", std::nullopt, {"000000000000003C", "unknown", "000000000000002B", "2b"}}));
    EXPECT_THAT(engine.sources().at(0), Not(HasSubstr("Evening News")));
    EXPECT_THAT(engine.sources().at(0), HasSubstr("Straße"));
}

TEST_F(Playlists, AreRefusedBeforeTheLibraryIsOpened) {
    const std::vector<std::string> tooMany(101, "000000000000002B");
    EXPECT_EQ(refusalToCreate(" \n", {"000000000000002B"}), malformed("Playlist name cannot be empty."));
    EXPECT_EQ(refusalToCreate("Trip", tooMany), malformed("A playlist operation supports at most 100 songs at once."));
    EXPECT_EQ(refusalToCreate("Trip", {"000000000000002B", "  "}), malformed("Song IDs cannot be empty."));
    EXPECT_EQ(refusalToAdd({}), malformed("A playlist change requires between 1 and 100 song IDs."));
    EXPECT_EQ(refusalToAdd(tooMany), malformed("A playlist change requires between 1 and 100 song IDs."));
    EXPECT_EQ(refusalToAdd({" "}), malformed("Song IDs cannot be empty."));
    EXPECT_EQ(library.opened, 0u);
    EXPECT_THAT(engine.sources(), IsEmpty());
}

TEST_F(Playlists, OfNoKnownSongAreNotMade) {
    const auto refusal = malformed("A new playlist must contain between 1 and 100 library songs.");
    EXPECT_EQ(refusalToCreate("Trip", {}), refusal);
    EXPECT_EQ(refusalToCreate("Trip", {"unknown"}), refusal);
    EXPECT_THAT(engine.sources(), IsEmpty());
}

TEST_F(Playlists, OfAHundredSongsAreMade) {
    run(bridge.createPlaylist({"Trip", std::nullopt, std::vector<std::string>(100, "000000000000002B")}));
    EXPECT_EQ(engine.sources().size(), 1u);
}

TEST_F(Playlists, WithoutAllFourAnswersFail) {
    run(bridge.listPlaylists());
    run(bridge.addSongs({"77", {"000000000000002B"}})); // takes the prepared answer
    engine.willAnswer(scriptList({scriptText("1"), scriptText("2"), scriptText("3")}));
    EXPECT_EQ(refusalToAdd({"000000000000002B"}),
              AppleBridgeError::operationFailed("Music returned incomplete playlist metadata.").message());
}

TEST_F(Playlists, AreDeletedByThisScript) {
    run(bridge.deletePlaylist({"00\"77"}));
    EXPECT_THAT(engine.sources(), ElementsAre(R"(with timeout of 30 seconds
    tell application "Music"
    set matchingPlaylists to (every user playlist whose persistent ID is "00\"77")
    if (count of matchingPlaylists) is not 1 then error "User playlist not found" number -1728
    delete item 1 of matchingPlaylists
end tell
end timeout)"));
}

TEST_F(Playlists, MayHaveChangedWhenTheApplicationDoesNotAnswer) {
    run(bridge.listPlaylists());
    run(bridge.deletePlaylist({"77"})); // takes the prepared answer
    engine.willFail(ScriptError(ScriptError::timedOut, "AppleEvent timed out."));
    try {
        run(bridge.deletePlaylist({"77"}));
        FAIL() << "It went well.";
    } catch (const AppleBridgeError& error) {
        EXPECT_EQ(error.kind(), AppleBridgeError::Case::outcomeUnknown);
    }
}

} // namespace
} // namespace bridge
