#include "base/name_words.h"

#include "base/text.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace bridge {
namespace {

using Words = std::vector<std::string>;

bool finds(std::string_view sought, std::string_view name) {
    return wordsBeginWordsOf(nameWords(sought), nameWords(name));
}

TEST(NameWords, AreFoldedAndInOrder) {
    EXPECT_EQ(nameWords("José  NÚÑEZ-García"), (Words{"jose", "nunez", "garcia"}));
    EXPECT_EQ(nameWords("O'Brien, St.John (3rd)"), (Words{"o", "brien", "st", "john", "3rd"}));
    EXPECT_EQ(nameWords("Straße"), (Words{"strasse"}));
}

TEST(NameWords, AreNoneWithoutALetterOrDigit) {
    for (const char* text : {"", " ", "\n", "-", "!?", "😀", "\u200D", "\xff"})
        EXPECT_EQ(nameWords(text), Words{}) << text;
}

TEST(NameWords, AreSingleCharactersInScriptsWithoutSpaces) {
    EXPECT_EQ(nameWords("山田太郎"), (Words{"山", "田", "太", "郎"}));
    EXPECT_EQ(nameWords("さくら"), (Words{"さ", "く", "ら"}));
    EXPECT_EQ(nameWords("ジョン"), Words{fold("ジョン")});
    EXPECT_EQ(nameWords("김민준"), Words{fold("김민준")});
    EXPECT_EQ(nameWords("สมชาย ใจดี").size(), 2u);
    EXPECT_EQ(nameWords("王Wang小明"), (Words{"王", "wang", "小", "明"}));
}

TEST(NameWords, LeaveJoinersOut) {
    EXPECT_EQ(nameWords("می\u200Cخواهم"), nameWords("میخواهم"));
    EXPECT_EQ(nameWords("Ann\u00ADa"), Words{"anna"});
}

TEST(NameWords, AreFoundByTheirBeginnings) {
    EXPECT_TRUE(finds("ann", "Anna Müller"));
    EXPECT_TRUE(finds("mull an", "Anna Müller"));
    EXPECT_TRUE(finds("王小", "王小明"));
    EXPECT_TRUE(finds("小明", "王小明"));
    EXPECT_TRUE(finds("Ёлк", "Анна ёлкина"));
    EXPECT_FALSE(finds("nna", "Anna Müller"));
    EXPECT_FALSE(finds("anna x", "Anna Müller"));
    EXPECT_FALSE(finds("", "Anna"));
    EXPECT_FALSE(finds("anna", ""));
}

TEST(NameSortKey, GoesByFamilyThenGivenThenOrganization) {
    EXPECT_LT(nameSortKey("Abel", "Zoe", ""), nameSortKey("Baum", "Ada", ""));
    EXPECT_LT(nameSortKey("Abel", "Ada", ""), nameSortKey("abel", "Zoe", ""));
    EXPECT_LT(nameSortKey("Abel", "Ada", "Alpha"), nameSortKey("Abel", "Ada", "Beta"));
    EXPECT_LT(nameSortKey("Abel", "Zoe", ""), nameSortKey("Abele", "Ada", ""));
    EXPECT_EQ(nameSortKey("ABEL", "ada", ""), nameSortKey("abel", "Ada", ""));
}

TEST(NameSortKey, TakesTheNextNameForOneThatIsMissing) {
    EXPECT_EQ(nameSortKey("", "Cher", ""), nameSortKey("Cher", "", ""));
    EXPECT_EQ(nameSortKey(" ", "", "Cher"), nameSortKey("Cher", "", ""));
    EXPECT_EQ(nameSortKey("", "", ""), "");
}

TEST(NameRules, SayTheLanguage) {
    EXPECT_FALSE(nameRules().empty());
    EXPECT_EQ(nameRules(), nameRules());
}

} // namespace
} // namespace bridge
