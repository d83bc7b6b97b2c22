#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

class MusicOverTheWire : public testing::Test {
protected:
    MusicOverTheWire() {
        MusicLibraryContents contents;
        contents.items = {{0x1A, "Café \"Noir\"", "Ana Moura", "Nights", 61'500, "file:///music/a.flac"},
                          {0xFEDCBA9876543210, "Harvest", "", std::nullopt, 0}};
        contents.playlists = {{0x77, "Morning", {0x1A, 0x1A}}};
        bridge.onLoop([&](BridgeModel&) {
            bridge.musicLibrary().library = std::make_shared<const MusicLibraryContents>(contents);
            return true;
        });
    }

    void willAnswer(TypedAppleScriptValue value) {
        bridge.onLoop([&](BridgeModel&) { bridge.engine().willAnswer(std::move(value)); });
    }
    std::vector<std::string> scripts() {
        return bridge.onLoop([&](BridgeModel&) { return bridge.engine().sources(); });
    }
    static std::string result(const std::string& operation, const std::string& payload, bool confirmed = false) {
        return writeJSON(call(operation, payload, confirmed).result());
    }

    RunningBridge bridge{RunningBridge::Consent::full};
};

TEST_F(MusicOverTheWire, IsSearched) {
    const std::string noir =
        R"({"albumTitle":"Nights","artistName":"Ana Moura","duration":61.5,"id":"000000000000001A",)"
        R"("source":"library","title":"Café \"Noir\"","url":"file:///music/a.flac"})";
    EXPECT_EQ(result("music.search", R"({"term":" CAFE ","source":"Library","limit":0})"), '[' + noir + ']');
    EXPECT_EQ(result("music.search", R"({"source":"library","limit":500})"),
              '[' + noir +
                  R"(,{"artistName":"","duration":0,"id":"FEDCBA9876543210","source":"library","title":"Harvest"}])");
    EXPECT_EQ(result("music.search", R"({"term":"nights","source":"library","limit":5})"), "[]");
}

TEST_F(MusicOverTheWire, IsSearchedInTheCatalog) {
    bridge.onLoop([&](BridgeModel&) {
        bridge.musicCatalog().found = {{"c1", "Blue", "Ana", "Nights", 2.5, "https://music.example.com/c1"}};
        return true;
    });
    EXPECT_EQ(
        result("music.search", R"({"term":"blue","source":"catalog","limit":5})"),
        R"([{"albumTitle":"Nights","artistName":"Ana","duration":2.5,"id":"c1","source":"catalog","title":"Blue",)"
        R"("url":"https://music.example.com/c1"}])");
    bridge.onLoop([&](BridgeModel&) {
        bridge.musicCatalog().failure = "No developer token.";
        return true;
    });
    const auto unavailable = call("music.search", R"({"term":"blue","source":"catalog","limit":5})");
    EXPECT_EQ(unavailable.status, 400);
    EXPECT_EQ(unavailable.code(), "capability_unavailable");
}

TEST_F(MusicOverTheWire, HasPlaylists) {
    EXPECT_EQ(result("music.playlists.list", R"({"limit":0})"),
              R"([{"id":"0000000000000077","name":"Morning","trackCount":2}])");
    const auto answer =
        scriptList({scriptText("00000000000000AA"), scriptText("Trip"), scriptText(""), scriptText("1")});
    const std::string trip = R"({"description":"","id":"00000000000000AA","name":"Trip","trackCount":1})";
    willAnswer(answer);
    EXPECT_EQ(result("music.playlists.create", R"({"name":" Trip ","songIDs":["000000000000001A"]})"), trip);
    willAnswer(answer);
    EXPECT_EQ(result("music.playlists.add_songs", R"({"playlistID":"00AA","songIDs":["FEDCBA9876543210"]})"), trip);
    EXPECT_EQ(result("music.playlists.delete", R"({"identifier":"00AA"})", true),
              R"({"deleted":true,"identifier":"00AA"})");
    EXPECT_THAT(scripts(), testing::SizeIs(3));
}

TEST_F(MusicOverTheWire, IsPlayedAndPaused) {
    willAnswer(scriptList({scriptText("000000000000001A"), scriptText("Café"), scriptText("Ana"), scriptText("Nights"),
                           scriptText("61.5")}));
    EXPECT_EQ(result("music.play", R"({"identifier":"000000000000001A"})"),
              R"({"albumTitle":"Nights","artistName":"Ana","duration":61.5,"id":"000000000000001A","source":"library",)"
              R"("title":"Café"})");
    EXPECT_EQ(writeJSON(call("music.pause").result()), R"({"operation":"music.pause","success":true})");
    EXPECT_THAT(scripts(), testing::SizeIs(1)); // it does not run, so nothing was paused
}

TEST_F(MusicOverTheWire, IsRefusedBeforeAnyScript) {
    const std::string malformed = "Malformed bridge request: ";
    for (const auto& [operation, payload, message] :
         std::initializer_list<std::tuple<const char*, const char*, std::string>>{
             {"music.search", R"({"source":"store","limit":1})",
              malformed + "Music source must be library or catalog."},
             {"music.search", R"({"source":"catalog","limit":1,"term":" \n"})",
              malformed + "Catalog search requires a term."},
             {"music.search", R"({"source":"library"})", malformed + ".limit: required, but missing"},
             {"music.playlists.list", "{}", malformed + ".limit: required, but missing"},
             {"music.playlists.create", R"({"name":" ","songIDs":[]})", malformed + "Playlist name cannot be empty."},
             {"music.playlists.create", R"({"name":"Trip","songIDs":["9"]})",
              malformed + "A new playlist must contain between 1 and 100 library songs."},
             {"music.playlists.add_songs", R"({"playlistID":"77","songIDs":[" "]})",
              malformed + "Song IDs cannot be empty."},
             {"music.playlists.delete", R"({"identifier":"77"})",
              "Explicit confirmation is required for music.playlists.delete."}})
        EXPECT_EQ(call(operation, payload).message(), message) << operation;
    EXPECT_THAT(scripts(), testing::IsEmpty());
}

TEST(MusicWithoutConsent, IsDenied) {
    const RunningBridge bridge;
    const auto denied = call("music.search", R"({"source":"library","limit":1})");
    EXPECT_EQ(denied.status, 403);
    EXPECT_EQ(denied.code(), "permission_denied");
}

} // namespace
} // namespace bridge
