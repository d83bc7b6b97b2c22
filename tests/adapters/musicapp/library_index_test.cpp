#include "adapters/musicapp/library_index.h"

#include <gmock/gmock.h>

namespace bridge::musicapp {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Index : public testing::Test {
protected:
    static ContentsPointer contents() {
        MusicLibraryContents contents;
        contents.items = {
            {1, "Noir et Blanc", "Zoé", "Nuits"}, {2, "NOÏR", "Ana", std::nullopt}, {3, "Straße", "Noir Désir", "One"}};
        return std::make_shared<const MusicLibraryContents>(contents);
    }
    std::vector<uint64_t> found(std::string_view term, LibraryIndex::In where = LibraryIndex::In::titles) {
        std::vector<uint64_t> ids;
        for (const auto* item : index.search(term, where))
            ids.push_back(item->persistentID);
        return ids;
    }

    LibraryIndex index{contents()};
};

TEST_F(Index, FindsTitlesWithoutRegardToCaseAndAccents) {
    EXPECT_THAT(found("noir"), ElementsAre(2, 1)); // the one that is just that comes first
    EXPECT_THAT(found("BLANC"), ElementsAre(1));
    EXPECT_THAT(found("STRASSE"), ElementsAre(3));
    EXPECT_THAT(found("zoe"), IsEmpty());
    EXPECT_THAT(found(""), ElementsAre(1, 2, 3));
}

TEST_F(Index, FindsArtistsAndAlbumsWhenAsked) {
    EXPECT_THAT(found("zoe", LibraryIndex::In::everything), ElementsAre(1));
    EXPECT_THAT(found("noir", LibraryIndex::In::everything), ElementsAre(2, 1, 3));
    EXPECT_THAT(found("nuits", LibraryIndex::In::everything), ElementsAre(1));
    EXPECT_THAT(found("désirone", LibraryIndex::In::everything), IsEmpty());
}

TEST_F(Index, FindsItemsByTheirID) {
    ASSERT_NE(index.item(2), nullptr);
    EXPECT_EQ(index.item(2)->title, "NOÏR");
    EXPECT_EQ(index.item(4), nullptr);
}

} // namespace
} // namespace bridge::musicapp
