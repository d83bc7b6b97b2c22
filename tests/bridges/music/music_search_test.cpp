#include "tests/bridges/music/music_bridge_test.h"

namespace bridge {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using MusicSearch = MusicBridgeTest;

TEST_F(MusicSearch, LooksAtTitlesAndArtistsWithoutCaseAndAccents) {
    EXPECT_THAT(titles("cafe"), ElementsAre("Café Noir"));
    EXPECT_THAT(titles("MOURÁ"), ElementsAre("Café Noir"));
    EXPECT_THAT(titles("strasse"), ElementsAre("Straße"));
    EXPECT_THAT(titles("  the field\n"), ElementsAre("Harvest"));
    EXPECT_THAT(titles("n"), ElementsAre("Café Noir", "Evening News"));
}

TEST_F(MusicSearch, DoesNotLookAtAlbums) {
    EXPECT_THAT(titles("nights"), IsEmpty());
}

TEST_F(MusicSearch, WithoutATermFindsEverything) {
    for (const auto& term :
         {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>(" \t")})
        EXPECT_EQ(titles(term).size(), 4u);
}

TEST_F(MusicSearch, KeepsTheLimitBetween1And100) {
    EXPECT_EQ(titles(std::nullopt, 0).size(), 1u);
    EXPECT_EQ(titles(std::nullopt, -5).size(), 1u);
    EXPECT_EQ(titles(std::nullopt, 2).size(), 2u);
    MusicLibraryContents many;
    many.items.resize(150, {1, "Song", "", std::nullopt, 0});
    library.library = std::make_shared<const MusicLibraryContents>(many);
    EXPECT_EQ(titles(std::nullopt, 500).size(), 100u);
    EXPECT_EQ(titles("song", 500).size(), 100u);
}

TEST_F(MusicSearch, TakesTheSourceInAnyCase) {
    EXPECT_EQ(titles("cafe", 1, "LIBRARY").size(), 1u);
    catalog.found = {{"c1", "Found", "Somebody"}};
    EXPECT_THAT(titles("x", 1, "Catalog"), ElementsAre("Found"));
    EXPECT_EQ(refusalToSearch("x", "store"),
              AppleBridgeError::malformedRequest("Music source must be library or catalog.").message());
}

TEST_F(MusicSearch, DescribesASongOfTheLibrary) {
    const auto songs = run(bridge.searchSongs({"cafe", "library", 1}));
    EXPECT_EQ(songs.at(0), (MusicSongDescriptor{"000000000000001A", "library", "Café Noir", "Ana Moura", "Nights", 61.5,
                                                "file:///music/a.flac"}));
    EXPECT_EQ(run(bridge.searchSongs({"harvest", "library", 1})).at(0).id, "FEDCBA9876543210");
}

TEST_F(MusicSearch, FollowsTheLibrary) {
    EXPECT_THAT(titles("later"), IsEmpty());
    auto contents = *library.library;
    contents.items.push_back({0x4D, "Later", "", std::nullopt, 0});
    library.library = std::make_shared<const MusicLibraryContents>(contents);
    EXPECT_THAT(titles("later"), ElementsAre("Later"));
}

TEST_F(MusicSearch, SaysWhyTheLibraryCantBeRead) {
    library.failure = "The disk is gone.";
    const auto refusal = AppleBridgeError::operationFailed("Could not read the Music library: The disk is gone.");
    EXPECT_EQ(refusalToSearch("x", "library"), refusal.message());
    EXPECT_EQ(failureOf(bridge.listPlaylists()), refusal.message());
}

TEST_F(MusicSearch, OfTheCatalogueNeedsATerm) {
    const auto refusal = AppleBridgeError::malformedRequest("Catalog search requires a term.");
    for (const auto& term : {std::optional<std::string>(), std::optional<std::string>(" \n ")})
        EXPECT_EQ(refusalToSearch(term, "catalog"), refusal.message());
    EXPECT_THAT(catalog.terms, IsEmpty());
}

TEST_F(MusicSearch, DescribesASongOfTheCatalogue) {
    catalog.found = {{"c1", "Found", "Somebody", "Album", 12.25, "https://example.org/c1"}, {"c2", "Another", "Else"}};
    EXPECT_THAT(
        run(bridge.searchSongs({" term ", "catalog", 500})),
        ElementsAre(MusicSongDescriptor{"c1", "catalog", "Found", "Somebody", "Album", 12.25, "https://example.org/c1"},
                    MusicSongDescriptor{"c2", "catalog", "Another", "Else"}));
    EXPECT_THAT(catalog.terms, ElementsAre("term"));
}

TEST_F(MusicSearch, OfACatalogueThatIsNotConfiguredSaysSo) {
    catalog.failure = "The developer token is missing.";
    EXPECT_EQ(refusalToSearch("x", "catalog"),
              AppleBridgeError::capabilityUnavailable(
                  "Apple Music catalog access is not configured for this developer account. The local Music library "
                  "and playlists remain available.")
                  .message());
    catalog.failure = "There is no network.";
    EXPECT_EQ(refusalToSearch("x", "catalog"),
              AppleBridgeError::operationFailed("Apple Music catalog request failed: There is no network.").message());
}

TEST_F(MusicSearch, NeedsThePermission) {
    for (const int status : {0, 1, 2, 9}) {
        authorization.statuses[PrivacyService::music] = status;
        EXPECT_EQ(refusalToSearch("x", "library"), AppleBridgeError::permissionDenied("Music").message());
        EXPECT_EQ(failureOf(bridge.pause()), AppleBridgeError::permissionDenied("Music").message());
    }
    EXPECT_EQ(library.opened, 0u);
}

} // namespace
} // namespace bridge
