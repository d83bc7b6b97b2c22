#include "adapters/mpd/song_ids.h"

#include <gmock/gmock.h>

namespace bridge::mpd {
namespace {

TEST(SongIDs, AreThePublishedHash) {
    EXPECT_EQ(stableHash(""), 0xcbf29ce484222325u);
    EXPECT_EQ(stableHash("a"), 0xaf63dc4c8601ec8cu);
    EXPECT_EQ(stableHash("foobar"), 0x85944171f73967e8u);
}

TEST(SongIDs, AreFoundAgain) {
    SongIDs ids;
    const auto id = ids.idOf("a/b.flac");
    EXPECT_EQ(id, stableHash("a/b.flac"));
    EXPECT_EQ(ids.idOf("a/b.flac"), id);
    ASSERT_NE(ids.uriOf(id), nullptr);
    EXPECT_EQ(*ids.uriOf(id), "a/b.flac");
    EXPECT_EQ(ids.uriOf(id + 1), nullptr);
}

TEST(SongIDs, DifferThoughTheHashesAreTheSame) {
    const auto byLength = [](std::string_view text) { return uint64_t{text.size()}; };
    SongIDs ids(byLength);
    EXPECT_EQ(ids.idOf("one"), 3u);
    EXPECT_EQ(ids.idOf("two"), 4u);
    EXPECT_EQ(ids.idOf("six"), 5u);
    EXPECT_EQ(ids.idOf("four"), 6u);
    EXPECT_EQ(ids.idOf("two"), 4u);
    EXPECT_EQ(*ids.uriOf(6), "four");
}

} // namespace
} // namespace bridge::mpd
