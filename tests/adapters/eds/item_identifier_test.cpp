#include "adapters/eds/item_identifier.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

std::optional<std::string> again(const std::string& text) {
    const auto identifier = ItemIdentifier::parse(text);
    if (!identifier) return std::nullopt;
    return identifier->text();
}

TEST(ItemIdentifier, FindsItsPartsAgain) {
    for (const std::string uid : {"one", "a/b//c", "100%", "%2F", "a b\n", "🦊", "20260814T090000Z", "..", "~"})
        for (const std::string recurrence : {"", "20260814", "20260814T090000Z"}) {
            const ItemIdentifier given{"system-calendar", uid, recurrence};
            const auto found = ItemIdentifier::parse(given.text());
            ASSERT_TRUE(found) << given.text();
            EXPECT_EQ(found->sourceID, given.sourceID);
            EXPECT_EQ(found->uid, uid);
            EXPECT_EQ(found->recurrenceID, recurrence);
        }
}

TEST(ItemIdentifier, IsReadable) {
    const ItemIdentifier identifier{"system-calendar", "1@host", "20260814"};
    EXPECT_EQ(identifier.text(), "system-calendar/1%40host/20260814");
}

TEST(ItemIdentifier, IsNotMadeOfWhatItHasNotWritten) {
    for (const std::string text : {"", "a", "a/", "/b", "a/b/", "a/b/c/d", "a//c", "/", "//", "a/b%", "a/b%4", "a/%zz",
                                   "a/%41", "a/%2f", "a/b c", "a/%00", "a/%FF", "a/\xff"})
        EXPECT_EQ(again(text), std::nullopt) << text;
    EXPECT_EQ(again(std::string("a/b\0", 4)), std::nullopt);
    EXPECT_EQ(again(std::string(100'000, '/')), std::nullopt);
}

} // namespace
} // namespace bridge
