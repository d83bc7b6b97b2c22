#include "adapters/vcard/vcard_file.h"

#include "base/platform_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

namespace bridge {
namespace {

using testing::HasSubstr;

std::string card(const std::string& lines) {
    return "BEGIN:VCARD\nVERSION:3.0\n" + lines + "END:VCARD\n";
}

TEST(VCardFile, HoldsCardsOfEveryVersionAndLineEnd) {
    const auto file = readVCardFile("BEGIN:VCARD\r\nVERSION:2.1\r\nFN:A\r\nEND:VCARD\r\n\r\n"
                                    "begin:vcard\nversion:3.0\nfn:B\nend:vcard\n"
                                    "BEGIN:VCARD\rVERSION:4.0\rFN:C\rEND:VCARD");
    ASSERT_EQ(file.cards.size(), 3u);
    EXPECT_EQ(file.cards[0].formattedName(), "A");
    EXPECT_EQ(file.cards[1].formattedName(), "B");
    EXPECT_EQ(file.cards[2].formattedName(), "C");
    EXPECT_TRUE(file.problems.empty());
    EXPECT_TRUE(file.groups.empty());
}

TEST(VCardFile, IsRefusedWhenNothingInItIsVCard) {
    for (const char* bytes : {"", "\n\n", "hello", "BEGIN:VCALENDAR\nEND:VCALENDAR\n", "\xff\xd8\xff", "END:VCARD\n"})
        EXPECT_THROW(readVCardFile(bytes), PlatformError) << bytes;
}

TEST(VCardFile, ReportsACardWithoutAnEnd) {
    const auto cut = readVCardFile(card("FN:A\n") + "BEGIN:VCARD\nFN:B\n");
    ASSERT_EQ(cut.cards.size(), 1u);
    ASSERT_EQ(cut.problems.size(), 1u);
    EXPECT_EQ(cut.problems[0].item, "the contact that begins in line 5");
    EXPECT_TRUE(cut.problems[0].isLost);
    const auto open = readVCardFile("BEGIN:VCARD\nFN:B\n" + card("FN:A\n"));
    ASSERT_EQ(open.cards.size(), 1u);
    EXPECT_EQ(open.cards[0].formattedName(), "A");
    EXPECT_EQ(open.problems.size(), 1u);
}

TEST(VCardFile, ReportsLinesThatAreNoneAndGoesOn) {
    const auto file = readVCardFile("stray\nlines\n" + card("FN:A\nthis is nothing\nTEL:1\n") + "more\n");
    ASSERT_EQ(file.cards.size(), 1u);
    EXPECT_EQ(file.cards[0].describe().phoneNumbers.size(), 1u);
    ASSERT_EQ(file.problems.size(), 3u);
    EXPECT_EQ(file.problems[0].item, "line 1");
    EXPECT_EQ(file.problems[1].item, "line 9");
    EXPECT_EQ(file.problems[2].item, "contact “A”");
    EXPECT_THAT(file.problems[2].reason, HasSubstr("Line 6 "));
    EXPECT_FALSE(file.problems[2].isLost);
}

TEST(VCardFile, ReportsAPictureThatIsNone) {
    const auto file = readVCardFile(card("FN:A\nPHOTO;ENCODING=b:/9j/*AAQ\n"));
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_THAT(file.problems[0].reason, HasSubstr("PHOTO"));
    EXPECT_FALSE(file.cards[0].describe().imageAvailable);
}

TEST(VCardFile, KeepsAndReportsAPictureThatIsCut) {
    for (const char* base64 : {"/9j/4AAQ/", "/9j/4AAQ/===", "/9j/4AAQ=", "/9j/4AAQ/9"}) {
        const auto file = readVCardFile(card("FN:A\nPHOTO;ENCODING=b:" + std::string(base64) + "\n"));
        ASSERT_EQ(file.problems.size(), 1u) << base64;
        EXPECT_TRUE(file.cards[0].describe().imageAvailable);
        EXPECT_THAT(file.cards[0].text(), HasSubstr("PHOTO:data:image/jpeg;base64,/9j/4AAQ\r\n"));
    }
}

TEST(VCardFile, ReportsTextThatIsNotUTF8Once) {
    const auto file = readVCardFile(card("FN:J\xf6rg\nNOTE:\xe4\xe4\n"));
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_EQ(file.problems[0].item, "contact “Jörg”");
    EXPECT_FALSE(file.problems[0].isLost);
}

TEST(VCardFile, TakesEqualCardsOnceAndGivesOthersTheirOwnUID) {
    const auto file = readVCardFile(card("UID:1\nFN:A\n") + card("UID:1\nFN:A\n") + card("UID:1\nFN:B\n"));
    ASSERT_EQ(file.cards.size(), 2u);
    EXPECT_EQ(file.cards[0].uid(), "1");
    EXPECT_NE(file.cards[1].uid(), "1");
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_EQ(file.problems[0].item, "contact “B”");
    EXPECT_FALSE(file.problems[0].isLost);
}

TEST(VCardFile, GivesTheSameUIDsWheneverItIsRead) {
    const auto text = card("FN:A\n") + card("UID:1\nFN:B\n") + card("UID:1\nFN:C\n") + card("UID: \nFN:D\n") +
                      card("FN:A\n") + card("FN:A\nREV:20260101T000000Z\n") + card("UID:1\nFN:C\n");
    const auto first = readVCardFile(text);
    const auto again = readVCardFile(text);
    ASSERT_EQ(first.cards.size(), 4u);
    std::set<std::string> different;
    for (size_t index = 0; index < first.cards.size(); ++index) {
        EXPECT_EQ(again.cards[index].uid(), first.cards[index].uid());
        different.insert(first.cards[index].uid());
    }
    EXPECT_EQ(different.size(), 4u);
}

TEST(VCardFile, MakesGroupsOfCategories) {
    const auto file =
        readVCardFile(card("FN:A\nCATEGORIES:Work,Family\n") + card("FN:B\nCATEGORIES:Family, Family ,\n"));
    ASSERT_EQ(file.groups.size(), 2u);
    EXPECT_EQ(file.groups[0].name, "Family");
    EXPECT_EQ(file.groups[0].members, (std::vector<size_t>{0, 1}));
    EXPECT_EQ(file.groups[1].name, "Work");
    EXPECT_EQ(file.groups[1].members, std::vector<size_t>{0});
}

TEST(VCardFile, KnowsCardsThatAreGroups) {
    const auto file = readVCardFile(
        "BEGIN:VCARD\nVERSION:4.0\nKIND:group\nFN:The Doe family\n"
        "MEMBER:urn:uuid:03a0e51f-d1aa-4385-8a53-e29025acd8af\nMEMBER:mailto:x@example.org\nMEMBER:other\nEND:VCARD\n" +
        card("UID:03A0E51F-D1AA-4385-8A53-E29025ACD8AF\nFN:John Doe\n") +
        card("X-ADDRESSBOOKSERVER-KIND:group\nN:Crew\nFN:Crew\nX-ADDRESSBOOKSERVER-MEMBER:urn:uuid:03a0e51f-d1aa-4385-"
             "8a53-e29025acd8af\n"));
    ASSERT_EQ(file.cards.size(), 1u);
    ASSERT_EQ(file.groups.size(), 2u);
    EXPECT_EQ(file.groups[0].name, "The Doe family");
    EXPECT_EQ(file.groups[0].members, std::vector<size_t>{0});
    EXPECT_EQ(file.groups[0].otherMembers, (std::vector<std::string>{"mailto:x@example.org", "other"}));
    EXPECT_EQ(file.groups[1].name, "Crew");
    EXPECT_EQ(file.groups[1].members, std::vector<size_t>{0});
}

TEST(VCardFile, ReportsGroupsWithoutAName) {
    const auto file = readVCardFile(card("FN:A\n") + card("KIND:group\nFN: \n") + card("KIND:group\nFN: Crew \n"));
    ASSERT_EQ(file.groups.size(), 1u);
    EXPECT_EQ(file.groups[0].name, "Crew");
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_EQ(file.problems[0].item, "contact 2");
    EXPECT_EQ(file.problems[0].reason, "It is a group without a name.");
    EXPECT_TRUE(file.problems[0].isLost);
}

TEST(VCardFile, SurvivesBytesThatMeanHarm) {
    const std::string evil[] = {
        card(std::string(100000, ';') + "\n"),
        card("TEL" + std::string(100000, ';') + ":1\n"),
        card("TEL;X=\"" + std::string(1000, 'a') + "\n"),
        card("N:" + std::string(100000, ';') + "\n"),
        card("N:" + std::string(100001, '\\') + "\n"),
        card("FN;ENCODING=QUOTED-PRINTABLE:=\n=\n=\n=4\n=C3\n"),
        card("FN;CHARSET=" + std::string(1000, 'x') + ":a\n"),
        card("FN;CHARSET=UTF-7:+AAAA\nNOTE;CHARSET=UTF-16:abc\nTITLE;CHARSET=ISO-2022-JP:\x1b$B\n"),
        card("AGENT:\nBEGIN:VCARD\nAGENT:\nBEGIN:VCARD\nEND:VCARD\n"),
        card(".FN:a\nitem1.:b\n:c\n;:d\na.b.c:d\n"),
        card("FN:" + std::string("a\0b", 3) + "\n"),
        card("PHOTO;ENCODING=b:\n" + std::string(1000, 'A') + "\n\n"),
        card("BDAY:--99999999999999999999\nBDAY;X-APPLE-OMIT-YEAR=99999999999:1604-03-22\n"),
    };
    for (const auto& bytes : evil) {
        const auto file = readVCardFile(bytes);
        for (const auto& each : file.cards) {
            const auto again = VCard::parse(each.text());
            EXPECT_EQ(again, each);
            EXPECT_EQ(again.describe(), each.describe());
        }
    }
}

} // namespace
} // namespace bridge
