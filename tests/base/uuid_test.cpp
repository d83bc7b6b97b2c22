#include "base/uuid.h"

#include <array>
#include <gtest/gtest.h>
#include <set>

namespace bridge {
namespace {

TEST(UUID, HasItsCanonicalForm) {
    for (int round = 0; round < 1000; ++round) {
        const auto text = makeUUID();
        ASSERT_EQ(text.size(), 36u);
        for (size_t index = 0; index < text.size(); ++index) {
            if (index == 8 || index == 13 || index == 18 || index == 23)
                ASSERT_EQ(text[index], '-') << text;
            else
                ASSERT_NE(std::string("0123456789ABCDEF").find(text[index]), std::string::npos) << text;
        }
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
    }
}

TEST(UUID, IsNeverTheSameTwice) {
    std::set<std::string> seen;
    for (int round = 0; round < 10'000; ++round)
        EXPECT_TRUE(seen.insert(makeUUID()).second);
}

// Every digit that is not fixed takes every value: nothing of it is constant by mistake.
TEST(UUID, IsRandomInEveryDigit) {
    std::array<std::set<char>, 36> seen;
    for (int round = 0; round < 2000; ++round) {
        const auto text = makeUUID();
        for (size_t index = 0; index < text.size(); ++index)
            seen[index].insert(text[index]);
    }
    for (size_t index = 0; index < seen.size(); ++index) {
        const bool fixed = index == 8 || index == 13 || index == 14 || index == 18 || index == 23;
        EXPECT_EQ(seen[index].size(), fixed ? 1u : index == 19 ? 4u : 16u) << index;
    }
}

TEST(UUID, OfATextIsTheSameForTheSameText) {
    EXPECT_EQ(makeUUIDOf(""), "6C62272E-07BB-8142-A2B8-21756295C58D");
    EXPECT_EQ(makeUUIDOf("foobar"), "343E1662-793C-84BF-AF0D-3597BA446F18");
    std::set<std::string> seen;
    for (int number = 0; number < 10'000; ++number)
        EXPECT_TRUE(seen.insert(makeUUIDOf("contact " + std::to_string(number))).second);
}

} // namespace
} // namespace bridge
