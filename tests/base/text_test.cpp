#include "base/text.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

namespace bridge {
namespace {

const char* const illFormed[] = {"\xff",
                                 "\x80",
                                 "\xc0\xaf",
                                 "\xc3",
                                 "a\xc3",
                                 "\xe2\x82",
                                 "\xe2\x82z",
                                 "\xed\xa0\x80",
                                 "\xed\xb0\x80\xed\xa0\x80",
                                 "\xf0\x9f\x98",
                                 "\xf4\x90\x80\x80",
                                 "\xf8\x88\x80\x80\x80",
                                 "\xfe\xfe\xff\xff",
                                 " \xff ",
                                 "\xe2\x80",
                                 "\xcc\x81\xff\xcc\x81"};

TEST(UTF8, IsToldFromOtherBytes) {
    for (const char* text : {"", "abc", "é", "😀", "\x7f", "\xef\xbf\xbd", "\xef\xbb\xbf", "\xf4\x8f\xbf\xbf"})
        EXPECT_TRUE(isUTF8(text)) << text;
    EXPECT_TRUE(isUTF8(std::string_view("\0", 1)));
    EXPECT_TRUE(isUTF8(std::string_view()));
    for (const char* text : illFormed)
        EXPECT_FALSE(isUTF8(text)) << text;
}

TEST(UTF8, RepairReplacesEachBadSequence) {
    EXPECT_EQ(repairUTF8("a\xff"), "a\uFFFD");
    EXPECT_EQ(repairUTF8("\xe2\x82z"), "\uFFFDz");
    EXPECT_EQ(repairUTF8("\xff\xfe"), "\uFFFD\uFFFD");
    EXPECT_EQ(repairUTF8("é😀"), "é😀");
    EXPECT_EQ(repairUTF8(""), "");
    EXPECT_EQ(repairUTF8(std::string_view("a\0b", 3)), std::string("a\0b", 3));
    for (const char* text : illFormed)
        EXPECT_TRUE(isUTF8(repairUTF8(text))) << text;
}

TEST(Trimming, TakesEveryWhiteSpaceCharacterOffBothEnds) {
    for (const char* space : {"\t",     "\n",     "\v",     "\f",     "\r",     " ",      "\u0085", "\u00A0", "\u1680",
                              "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
                              "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"}) {
        const std::string around(space);
        EXPECT_EQ(trim(around + "a" + around + "b" + around), "a" + around + "b");
        EXPECT_EQ(trim(around + around), "");
    }
}

TEST(Trimming, LeavesWhatOnlyLooksLikeSpace) {
    for (const char* other : {"\u200B", "\u180E", "\uFEFF", "\u2060", "\u00AD", "\x01", "\x1f"})
        EXPECT_EQ(trim(other), other);
    EXPECT_EQ(trim(std::string_view("\0", 1)).size(), 1u);
}

TEST(Trimming, HandsOutAPartOfTheTextItGot) {
    const std::string text = "  né \u3000";
    const auto trimmed = trim(text);
    EXPECT_EQ(trimmed, "né");
    EXPECT_EQ(trimmed.data(), text.data() + 2);
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trim(std::string_view()), "");
    EXPECT_EQ(trim(" \n\t "), "");
}

TEST(Folding, DropsCaseAndAccents) {
    for (const char* word : {"Café", "CAFÉ", "cafe", "cafe\u0301", "CAFE\u0301", "cAfÈ"})
        EXPECT_EQ(fold(word), "cafe") << word;
    EXPECT_EQ(fold("Straße"), fold("STRASSE"));
    EXPECT_EQ(fold("ß"), "ss");
    EXPECT_EQ(fold("ẞ"), "ss");
    EXPECT_EQ(fold("Å"), "a");
    EXPECT_EQ(fold("A\u030A"), "a");
    EXPECT_EQ(fold("\u212B"), "a"); // the Ångström sign
    EXPECT_EQ(fold("İ"), "i");
    EXPECT_EQ(fold("I\u0307"), "i");
    EXPECT_EQ(fold("Việt Nam"), "viet nam");
    EXPECT_EQ(fold("ﬁn"), "fin");
}

TEST(Folding, KnowsTheGreekFinalSigma) {
    EXPECT_EQ(fold("ΟΔΟΣ"), fold("οδος"));
    EXPECT_EQ(fold("ὈΔΌΣ"), fold("ὀδός"));
    EXPECT_EQ(fold("ΑΙ"), fold("ᾼ"));
}

TEST(Folding, KeepsDifferentLettersApart) {
    EXPECT_NE(fold("o"), fold("ø"));
    EXPECT_NE(fold("n"), fold("m"));
    EXPECT_NE(fold("и"), fold("у"));
    EXPECT_EQ(fold("日本"), "日本");
    EXPECT_EQ(fold("👩‍👧"), fold("👩‍👧"));
    EXPECT_EQ(fold(""), "");
    EXPECT_EQ(fold(std::string_view("A\0B", 3)), std::string("a\0b", 3));
}

TEST(Case, FollowsUnicodeAndNoParticularLanguage) {
    EXPECT_EQ(lowercase("ÀÉÎ ΟΔΟΣ I"), "àéî οδος i");
    EXPECT_EQ(uppercase("straße i é"), "STRASSE I É");
}

TEST(Graphemes, AreWhatAPersonCounts) {
    EXPECT_EQ(graphemeCount(""), 0u);
    EXPECT_EQ(graphemeCount("abc"), 3u);
    EXPECT_EQ(graphemeCount("é"), 1u);
    EXPECT_EQ(graphemeCount("e\u0301"), 1u);
    EXPECT_EQ(graphemeCount("e\u0301\u0323\u0308"), 1u);
    EXPECT_EQ(graphemeCount("👩‍👩‍👧‍👦"), 1u);
    EXPECT_EQ(graphemeCount("👍🏽"), 1u);
    EXPECT_EQ(graphemeCount("❤️"), 1u);
    EXPECT_EQ(graphemeCount("🇵🇹"), 1u);
    EXPECT_EQ(graphemeCount("🇵🇹🇩🇪🇫🇷"), 3u);
    EXPECT_EQ(graphemeCount("👩‍👧 ok 🇵🇹"), 6u);
    EXPECT_EQ(graphemeCount("각"), 1u);
    EXPECT_EQ(graphemeCount("\u1100\u1161\u11A8"), 1u); // the same syllable in three letters
    EXPECT_EQ(graphemeCount("שָׁלוֹם"), 4u);
    EXPECT_EQ(graphemeCount("日本語"), 3u);
}

TEST(Graphemes, CountALineBreakOfTwoCharactersOnce) {
    EXPECT_EQ(graphemeCount("\r\n"), 1u);
    EXPECT_EQ(graphemeCount("a\r\nb\nc\r"), 6u);
    EXPECT_EQ(graphemeCount("\n\r"), 2u);
    EXPECT_EQ(graphemeCount("é\r\n"), 2u);
}

TEST(Graphemes, CountLongTextsWhole) {
    EXPECT_EQ(graphemeCount(std::string(10'000, 'x')), 10'000u);
    std::string families;
    for (int index = 0; index < 400; ++index)
        families += "👩‍👩‍👧‍👦";
    ASSERT_EQ(families.size(), 10'000u);
    EXPECT_EQ(graphemeCount(families), 400u);
    std::string marks = "e";
    for (int index = 0; index < 5000; ++index)
        marks += "\u0301";
    EXPECT_EQ(graphemeCount(marks), 1u);
}

TEST(Graphemes, AreCountedNoFurtherThanAsked) {
    EXPECT_EQ(graphemeCount("abc", 2), 2u);
    EXPECT_EQ(graphemeCount("abc", 3), 3u);
    EXPECT_EQ(graphemeCount("äöü", 2), 2u);
    EXPECT_EQ(graphemeCount("äöü", 3), 3u);
    EXPECT_EQ(graphemeCount("äöü", 4), 3u);
    EXPECT_EQ(graphemeCount("\r\n\r\n", 1), 1u);
    EXPECT_EQ(graphemeCount("ä", 0), 0u);
}

std::vector<std::string> sorted(std::vector<std::string> texts) {
    std::stable_sort(texts.begin(), texts.end(),
                     [](const auto& left, const auto& right) { return sortKey(left) < sortKey(right); });
    return texts;
}
using Texts = std::vector<std::string>;

TEST(SortKeys, OrderWithoutRegardToCase) {
    EXPECT_EQ(sorted({"cherry", "apple", "Banana"}), (Texts{"apple", "Banana", "cherry"}));
    EXPECT_EQ(sorted({"b", "A", "B", "a"}), (Texts{"A", "a", "b", "B"}));
    EXPECT_EQ(sortKey("HOME"), sortKey("home"));
    EXPECT_EQ(sortKey("ÉTÉ"), sortKey("été"));
}

TEST(SortKeys, OrderAccentsBesideTheirLetter) {
    EXPECT_EQ(sorted({"zoo", "été", "etui", "Éclair", "ecru"}), (Texts{"Éclair", "ecru", "été", "etui", "zoo"}));
    EXPECT_EQ(sorted({"cotes", "coté", "cote"}), (Texts{"cote", "coté", "cotes"}));
    EXPECT_NE(sortKey("cote"), sortKey("coté"));
    EXPECT_EQ(sortKey("é"), sortKey("e\u0301"));
}

TEST(SortKeys, PutAPrefixFirst) {
    EXPECT_EQ(sorted({"ab", "a", ""}), (Texts{"", "a", "ab"}));
    EXPECT_EQ(sorted({"Work 2", "Work"}), (Texts{"Work", "Work 2"}));
}

TEST(Texts, BytesThatAreNoTextDoNoHarm) {
    for (const char* text : illFormed) {
        EXPECT_LE(trim(text).size(), std::string(text).size());
        EXPECT_TRUE(isUTF8(fold(text)));
        EXPECT_TRUE(isUTF8(lowercase(text)));
        EXPECT_TRUE(isUTF8(uppercase(text)));
        EXPECT_GE(graphemeCount(text), 1u);
        EXPECT_FALSE(sortKey(text).empty());
        EXPECT_EQ(fold(text), fold(repairUTF8(text)));
        EXPECT_EQ(graphemeCount(text), graphemeCount(repairUTF8(text)));
        EXPECT_EQ(sortKey(text), sortKey(repairUTF8(text)));
    }
}

// The locale is settled when ICU first looks at the environment, so these look from a process of their own.

int exitCode(bool fulfilled) {
    return fulfilled ? 0 : 1;
}

struct TextInALanguage : testing::Test {
    TextInALanguage() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }
};

TEST_F(TextInALanguage, TurkishKeepsItsDotlessIApart) {
    setenv("LC_ALL", "tr_TR.UTF-8", 1);
    EXPECT_EXIT(std::exit(exitCode(fold("I") == "ı" && fold("ı") != fold("i"))), testing::ExitedWithCode(0), "");
    unsetenv("LC_ALL");
}

TEST_F(TextInALanguage, SwedishPutsItsOwnLettersLast) {
    setenv("LC_ALL", "sv_SE.UTF-8", 1);
    EXPECT_EXIT(std::exit(exitCode(sorted({"ö", "z", "å", "o"}) == Texts{"o", "z", "å", "ö"})),
                testing::ExitedWithCode(0), "");
    unsetenv("LC_ALL");
}

TEST_F(TextInALanguage, TheCLocaleStillSortsForPeople) {
    setenv("LC_ALL", "C", 1);
    EXPECT_EXIT(std::exit(exitCode(sorted({"cherry", "apple", "Banana"}) == Texts{"apple", "Banana", "cherry"} &&
                                   sortKey("HOME") == sortKey("home"))),
                testing::ExitedWithCode(0), "");
    unsetenv("LC_ALL");
}

} // namespace
} // namespace bridge
