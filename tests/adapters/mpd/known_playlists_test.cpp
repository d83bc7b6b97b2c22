#include "adapters/mpd/known_playlists.h"

#include "base/platform_error.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

namespace bridge::mpd {
namespace {

class Known : public testing::Test {
protected:
    using Playlists = std::vector<StoredPlaylist>;

    TemporaryFolder folder;
    KnownPlaylists known{folder.file("known.json")};
};

TEST_F(Known, HaveTheSameIDsAfterARestart) {
    const Playlists playlists{{"Trip", {"a", "b"}}, {"Home “😀”", {}}};
    const auto ids = known.idsOf(playlists);
    EXPECT_NE(ids[0], ids[1]);
    EXPECT_EQ(known.idsOf(playlists), ids);
    EXPECT_EQ(KnownPlaylists(folder.file("known.json")).idsOf(playlists), ids);
}

TEST_F(Known, KeepTheirDescriptions) {
    const auto id = known.announce("Trip", "Far\naway");
    EXPECT_EQ(known.idsOf({{"Trip", {"a"}}}), std::vector{id});
    KnownPlaylists again(folder.file("known.json"));
    again.idsOf({{"Trip", {"b"}}});
    EXPECT_EQ(again.description(id), "Far\naway");
    EXPECT_EQ(again.description(id + 1), "");
}

TEST_F(Known, AreForgottenWhenTheyHaveGone) {
    const auto ids = known.idsOf({{"Trip", {}}});
    known.idsOf({});
    EXPECT_NE(known.idsOf({{"Trip", {}}}), ids);
}

TEST_F(Known, AreFollowedByTheirSongs) {
    const auto ids = known.idsOf({{"Trip", {"a", "b"}}, {"Home", {"b", "a"}}});
    EXPECT_EQ(known.idsOf({{"Home", {"b", "a"}}, {"Journey", {"a", "b"}}}), (std::vector{ids[1], ids[0]}));
}

TEST_F(Known, AreNotFollowedWhereItIsUncertain) {
    const auto ids = known.idsOf({{"One", {"a"}}, {"Two", {"a"}}, {"Empty", {}}});
    for (const auto id : known.idsOf({{"Three", {"a"}}, {"Nothing", {}}}))
        EXPECT_THAT(ids, testing::Not(testing::Contains(id)));
    const auto later = known.idsOf({{"Three", {"a"}}});
    for (const auto id : known.idsOf({{"Four", {"a"}}, {"Five", {"a"}}}))
        EXPECT_THAT(later, testing::Not(testing::Contains(id)));
}

TEST_F(Known, AreNotForgottenForADamagedFile) {
    putFile(folder / "known.json", "[{\"id\":");
    EXPECT_THROW(known.idsOf({}), PlatformError);
    EXPECT_EQ(getFile(folder / "known.json"), "[{\"id\":");
}

} // namespace
} // namespace bridge::mpd
