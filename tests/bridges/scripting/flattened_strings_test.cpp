#include "bridges/scripting/flattened_strings.h"
#include "tests/fakes/scripted_engine.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Strings = std::vector<std::string>;

TEST(FlattenedStrings, OfOneTextAreThatText) {
    EXPECT_EQ(flattenedStrings(scriptText("a")), Strings{"a"});
    EXPECT_EQ(flattenedStrings(scriptText("")), Strings{""});
}

TEST(FlattenedStrings, OfAListAreItsTexts) {
    const auto list = scriptList({scriptText("a"), scriptText("b"), scriptText("c")});
    ASSERT_EQ(list.items.size(), 3u);
    EXPECT_EQ(flattenedStrings(list), (Strings{"a", "b", "c"}));
}

TEST(FlattenedStrings, LoseTheListsThatTheyStoodIn) {
    const auto pair = [](const char* one, const char* other) {
        return scriptList({scriptText(one), scriptText(other)});
    };
    EXPECT_EQ(flattenedStrings(scriptList({pair("a", "b"), pair("c", "d")})), (Strings{"a", "b", "c", "d"}));
    EXPECT_EQ(
        flattenedStrings(scriptList({scriptText("a"), scriptList({pair("b", "c"), scriptText("d")}), scriptText("e")})),
        (Strings{"a", "b", "c", "d", "e"}));
}

TEST(FlattenedStrings, AreEmptyWhereThereIsNoText) {
    EXPECT_EQ(flattenedStrings({}), Strings{""});
    EXPECT_EQ(flattenedStrings(scriptList({scriptText("a"), {}, scriptList({}), scriptText("b")})),
              (Strings{"a", "", "", "b"}));
    auto null = scriptText("null");
    null.isNull = true;
    EXPECT_EQ(flattenedStrings(null), Strings{""});
}

TEST(FlattenedStrings, OfAListDoNotShowTheTextOfTheListItself) {
    auto list = scriptList({scriptText("a")});
    list.stringValue = "a, b";
    EXPECT_EQ(flattenedStrings(list), Strings{"a"});
}

TEST(FlattenedStrings, MayBeMany) {
    const std::vector<TypedAppleScriptValue> row(100, scriptText("cell"));
    EXPECT_EQ(flattenedStrings(scriptList(std::vector(1000, scriptList(row)))), Strings(100'000, "cell"));
}

} // namespace
} // namespace bridge
