#include "adapters/musicapp/music_application.h"

#include "adapters/applescript/script.h"
#include "tests/fakes/memory_player.h"

#include <gmock/gmock.h>

namespace bridge::musicapp {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class MusicScripts : public testing::Test {
protected:
    MusicScripts() {
        MusicLibraryContents contents;
        contents.items = {
            {1, "Blue", "Ana", "Nights", 61'500}, {2, "Blue Moon", "", std::nullopt, 0}, {3, "blue", "Béla"}};
        contents.playlists = {{0x77, "Morning", {1, 1, 2, 999}}};
        player.put(contents);
        player.descriptions[0x77] = "Good";
    }

    TypedAppleScriptValue run(const std::string& body) {
        ScriptCall call;
        const auto source = "tell application \"Music\"\n" + body + "\nend tell";
        return applescript::runScript(applescript::readScript(source, applications), applications, call);
    }
    std::string text(const std::string& body) { return run(body).stringValue.value_or("absent"); }
    std::vector<std::string> texts(const std::string& body) {
        std::vector<std::string> all;
        for (const auto& item : run(body).items)
            all.push_back(item.stringValue.value_or("absent"));
        return all;
    }
    std::string refusal(const std::string& body) {
        try {
            run(body);
        } catch (const ScriptError& error) {
            return std::to_string(error.number().value_or(0)) + " " + error.what();
        }
        return "none";
    }

    MemoryPlayer player;

private:
    static std::vector<std::unique_ptr<applescript::Application>> made(Player& player) {
        std::vector<std::unique_ptr<applescript::Application>> all;
        all.push_back(std::make_unique<MusicApplication>(player));
        return all;
    }
    applescript::ApplicationList applications{made(player)};
};

TEST_F(MusicScripts, TellOfTracks) {
    EXPECT_THAT(
        texts("set t to track 1 of library playlist 1\n{persistent ID of t, name of t, artist of t, album of t, "
              "(duration of t as real)}"),
        ElementsAre("0000000000000001", "Blue", "Ana", "Nights", "61.5"));
    EXPECT_EQ(text("album of track 2 of library playlist 1"), "");
    EXPECT_EQ(text("count of tracks of library playlist 1"), "3");
    EXPECT_EQ(text("count tracks"), "3");
    EXPECT_EQ(text("name of library playlist 1"), "Library");
    EXPECT_EQ(text("count playlists"), "2");
}

TEST_F(MusicScripts, FindTracksByTheirID) {
    EXPECT_EQ(text("name of item 1 of (every track of library playlist 1 whose persistent ID is \"0000000000000002\")"),
              "Blue Moon");
    EXPECT_EQ(text("name of first track whose persistent ID is \"0000000000000003\""), "blue");
    for (const auto* unknown : {"0000000000000009", "2", "", "x000000000000002", "00000000000000002"})
        EXPECT_EQ(text("count of (every track of library playlist 1 whose persistent ID is \"" + std::string(unknown) +
                       "\")"),
                  "0")
            << unknown;
}

TEST_F(MusicScripts, SearchTheLibrary) {
    EXPECT_THAT(texts("name of (search library playlist 1 for \"BLUE\" only songs)"),
                ElementsAre("Blue", "blue", "Blue Moon"));
    EXPECT_THAT(texts("name of (search library playlist 1 for \"bela\")"), ElementsAre("blue"));
    EXPECT_EQ(text("count of (search library playlist 1 for \"bela\" only songs)"), "0");
    EXPECT_THAT(refusal("search library playlist 1 only songs"), HasSubstr("-1701"));
    EXPECT_THAT(refusal("search user playlist 1 for \"x\""), HasSubstr("doesn’t understand the “search” message"));
}

TEST_F(MusicScripts, TellOfPlaylists) {
    EXPECT_THAT(texts("set p to first user playlist whose persistent ID is \"0000000000000077\"\n"
                      "{persistent ID of p, name of p, description of p, (count of tracks of p)}"),
                ElementsAre("0000000000000077", "Morning", "Good", "4"));
    // A song that the library has lost has nothing to be told of.
    EXPECT_THAT(texts("name of tracks of user playlist \"morning\""), ElementsAre("Blue", "Blue", "Blue Moon"));
    EXPECT_THAT(refusal("first user playlist whose persistent ID is \"1\""), HasSubstr("-1719"));
    EXPECT_THAT(refusal("name of user playlist 2"), HasSubstr("-1728"));
}

TEST_F(MusicScripts, MakeAPlaylistWithAllItsSongsAtOnce) {
    EXPECT_THAT(texts("set p to make new user playlist with properties {name:\"Trip\", description:\"Far\"}\n"
                      "duplicate track 2 of library playlist 1 to p\nduplicate track 1 of library playlist 1 to p\n"
                      "duplicate tracks of library playlist 1 to end of tracks of p\n"
                      "{persistent ID of p, name of p, description of p, (count of tracks of p)}"),
                ElementsAre("0000000000000101", "Trip", "Far", "5"));
    EXPECT_THAT(player.said, ElementsAre("make Trip 2 1 1 2 3"));
}

TEST_F(MusicScripts, AddSongsAtOnce) {
    EXPECT_EQ(
        text("set p to user playlist 1\nrepeat 100 times\nduplicate track 1 of library playlist 1 to p\nend repeat\n"
             "count of tracks of p"),
        "104");
    EXPECT_THAT(player.said, testing::SizeIs(1));
}

TEST_F(MusicScripts, ChangeWhatTheyDidNotAskAbout) {
    run("duplicate track 1 of library playlist 1 to user playlist 1");
    EXPECT_THAT(player.said, ElementsAre("add 1"));
    run("make new user playlist with properties {name:\"Empty\"}");
    EXPECT_THAT(player.said, ElementsAre("add 1", "make Empty"));
}

TEST_F(MusicScripts, LeaveNoPlaylistThatFailed) {
    player.failure = "The disk is full.";
    EXPECT_EQ(refusal("set p to make new user playlist with properties {name:\"Trip\"}\n"
                      "duplicate track 1 of library playlist 1 to p\nname of p"),
              "-10000 The disk is full.");
    EXPECT_THAT(player.said, IsEmpty());
    EXPECT_EQ(text("count user playlists"), "1");
}

TEST_F(MusicScripts, DeletePlaylists) {
    run("delete item 1 of (every user playlist whose persistent ID is \"0000000000000077\")");
    EXPECT_THAT(player.said, ElementsAre("delete 119"));
    EXPECT_EQ(text("count user playlists"), "0");
    EXPECT_THAT(refusal("delete library playlist 1"), HasSubstr("-1708"));
    EXPECT_THAT(refusal("delete track 1 of library playlist 1"), HasSubstr("-1708"));
}

TEST_F(MusicScripts, PlayAndPause) {
    run("play track 3 of library playlist 1");
    run("pause");
    EXPECT_THAT(player.said, ElementsAre("play 3", "pause"));
    player.failure = "It can't be heard.";
    EXPECT_EQ(refusal("play track 3 of library playlist 1"), "-10000 It can't be heard.");
    EXPECT_THAT(refusal("play user playlist 1"), HasSubstr("-1708"));
    EXPECT_THAT(refusal("play"), HasSubstr("-1708"));
}

TEST_F(MusicScripts, AreRefusedWhatMusicCantDo) {
    EXPECT_THAT(refusal("make new track"), HasSubstr("-2710"));
    EXPECT_THAT(refusal("make new user playlist with properties {name:\"a/b\"}"), HasSubstr("No slashes."));
    EXPECT_THAT(refusal("make new user playlist with properties {name:5}"), HasSubstr("-1700"));
    EXPECT_THAT(refusal("set name of track 1 of library playlist 1 to \"x\""), HasSubstr("-10006"));
    EXPECT_THAT(refusal("duplicate user playlist 1 to user playlist 1"), HasSubstr("-1708"));
    EXPECT_THAT(refusal("duplicate track 1 of library playlist 1 to library playlist 1"), HasSubstr("-1708"));
    EXPECT_THAT(player.said, IsEmpty());
}

} // namespace
} // namespace bridge::musicapp
