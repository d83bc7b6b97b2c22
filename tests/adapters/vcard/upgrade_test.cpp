#include "adapters/vcard/vcard.h"
#include "adapters/vcard/vcard_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bridge {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string unfolded(std::string text) {
    for (size_t fold = text.find("\r\n "); fold != text.npos; fold = text.find("\r\n ", fold))
        text.erase(fold, 3);
    return text;
}

// The lines of a card of this version as 4.0 has them.
std::string upgradedText(const char* version, const std::string& lines) {
    return unfolded(
        VCard::parse("BEGIN:VCARD\r\nVERSION:" + std::string(version) + "\r\n" + lines + "\r\nEND:VCARD\r\n").text());
}

TEST(Upgrade, NamesTheParametersOfVersion21) {
    const auto text = upgradedText("2.1", "TEL;WORK;VOICE;PREF:123\r\nEMAIL;INTERNET:a@b\r\nURL;WORK:http://a.b/c;d");
    EXPECT_THAT(text, HasSubstr("\r\nTEL;TYPE=work,voice;PREF=1:123\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nEMAIL:a@b\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nURL;TYPE=work:http://a.b/c;d\r\n"));
}

TEST(Upgrade, DecodesQuotedPrintableAndItsSoftLineBreaks) {
    const auto text =
        upgradedText("2.1", "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BC=\r\nller;J=C3=B6rg=3B;;;\r\n"
                            "NOTE;QUOTED-PRINTABLE:one=0D=0Atwo=\r\n three=3Dfour=0A=\r\n\r\nTITLE:x");
    EXPECT_THAT(text, HasSubstr("\r\nN:Müller;Jörg\\;;;;\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nNOTE:one\\ntwo three=four\\n\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nTITLE:x\r\n"));
}

TEST(Upgrade, DecodesCharacterSets) {
    EXPECT_THAT(upgradedText("2.1", "FN;CHARSET=ISO-8859-1:J\xf6rg"), HasSubstr("\r\nFN:Jörg\r\n"));
    EXPECT_THAT(upgradedText("2.1", "FN;CHARSET=SHIFT_JIS;ENCODING=QUOTED-PRINTABLE:=8E=52=93=63"),
                HasSubstr("\r\nFN:山田\r\n"));
    // The second byte of this character is a backslash in ASCII.
    EXPECT_THAT(upgradedText("2.1", "N;CHARSET=SHIFT_JIS:\x95\x5c;x"), HasSubstr("\r\nN:表;x\r\n"));
    EXPECT_THAT(upgradedText("3.0", "FN:J\xf6rg"), HasSubstr("\r\nFN:Jörg\r\n"));
    EXPECT_THAT(upgradedText("2.1", "FN;CHARSET=klingon:J\xc3\xb6rg"), HasSubstr("\r\nFN:Jörg\r\n"));
}

TEST(Upgrade, ReadsFilesInUTF16) {
    const std::string text = "BEGIN:VCARD\nVERSION:3.0\nFN:A\nEND:VCARD\n";
    std::string little = "\xff\xfe";
    std::string big = "\xfe\xff";
    for (const char byte : text) {
        little.append(1, byte).append(1, '\0');
        big.append(1, '\0').append(1, byte);
    }
    for (const auto& bytes : {little, big, "\xef\xbb\xbf" + text}) {
        const auto file = readVCardFile(bytes);
        ASSERT_EQ(file.cards.size(), 1u);
        EXPECT_EQ(file.cards[0].formattedName(), "A");
        EXPECT_TRUE(file.problems.empty());
    }
}

TEST(Upgrade, GuardsWhatWasPlainInVersion21) {
    const auto text =
        upgradedText("2.1", "FN:a,b\\;c\r\nN:x,y;z\\;;;\r\nNOTE:C:\\new, old\r\nCATEGORIES:One,Two;Three");
    EXPECT_THAT(text, HasSubstr("\r\nFN:a\\,b\\;c\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nN:x\\,y;z\\;;;\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nNOTE:C:\\\\new\\, old\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nCATEGORIES:One,Two,Three\r\n"));
}

TEST(Upgrade, GuardsWhatVersion30LeftOpen) {
    const auto text = upgradedText("3.0", "FN:a, b\r\nN:x;y,z;;;\r\nNOTE:\\\"q\\\"\\; n\\N\r\nURL:http\\://a.b");
    EXPECT_THAT(text, HasSubstr("\r\nFN:a\\, b\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nN:x;y,z;;;\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nNOTE:\"q\"\\; n\\n\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nURL:http://a.b\r\n"));
}

TEST(Upgrade, MakesPicturesDataURIs) {
    for (const char* line :
         {"PHOTO;ENCODING=b;TYPE=JPEG:/9j/4AAQ", "PHOTO;ENCODING=BASE64;JPEG:/9j/4A\r\n AQ\r\n",
          "PHOTO;BASE64:\r\n /9j/\r\n 4AAQ\r\n", "PHOTO;ENCODING=BASE64;TYPE=GIF:\r\n/9j/4AAQ\r\n", "PHOTO:/9j/4AAQ"})
        EXPECT_THAT(upgradedText("2.1", line), HasSubstr("\r\nPHOTO:data:image/jpeg;base64,/9j/4AAQ\r\n")) << line;
    EXPECT_THAT(upgradedText("3.0", "LOGO;ENCODING=b;TYPE=TIFF:AAAA"),
                HasSubstr("\r\nLOGO:data:image/tiff;base64,AAAA"));
    EXPECT_THAT(upgradedText("3.0", "KEY;ENCODING=b;TYPE=PGP:AAA"),
                HasSubstr("\r\nKEY:data:application/pgp-keys;base64,AAA=\r\n"));
    EXPECT_THAT(upgradedText("3.0", "PHOTO;VALUE=uri:http://a.b/c.gif"),
                HasSubstr("\r\nPHOTO;VALUE=uri:http://a.b/c.gif"));
    EXPECT_THAT(upgradedText("2.1", "PHOTO;VALUE=URL:http://a.b/c.gif"),
                HasSubstr("\r\nPHOTO;VALUE=uri:http://a.b/c.gif"));
}

TEST(Upgrade, WritesDaysAndTimesInTheBasicForm) {
    const auto text = upgradedText("3.0", "BDAY;VALUE=date:1980-03-22\r\nREV:2012-03-05T13:32:54Z\r\n"
                                          "ANNIVERSARY:1999-12-31T10:00:00Z");
    EXPECT_THAT(text, HasSubstr("\r\nBDAY:19800322\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nREV:20120305T133254Z\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nANNIVERSARY:19991231T100000Z\r\n"));
    EXPECT_THAT(upgradedText("3.0", "BDAY;X-APPLE-OMIT-YEAR=1604:1604-03-22"), HasSubstr("\r\nBDAY:--0322\r\n"));
    EXPECT_THAT(upgradedText("3.0", "BDAY:in spring, 1980"), HasSubstr("\r\nBDAY;VALUE=text:in spring\\, 1980\r\n"));
}

TEST(Upgrade, PutsLabelsToTheirAddresses) {
    const auto text = upgradedText("2.1", "LABEL;HOME;ENCODING=QUOTED-PRINTABLE:1 St=0D=0ATown\r\nADR;WORK:;;2;;;;\r\n"
                                          "ADR;HOME:;;1 St;Town;;;\r\nLABEL;DOM:Alone");
    EXPECT_THAT(text, HasSubstr("\r\nADR;TYPE=home;LABEL=\"1 St^nTown\":;;1 St;Town;;;\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nADR;TYPE=work:;;2;;;;\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nADR;TYPE=dom;LABEL=Alone:;;;;;;\r\n"));
    EXPECT_THAT(text, Not(HasSubstr("\r\nLABEL")));
}

TEST(Upgrade, KeepsAnAgent) {
    const auto nested =
        upgradedText("2.1", "FN:Boss\r\nAGENT:\r\nBEGIN:VCARD\r\nVERSION:2.1\r\nFN:Help\r\nEND:VCARD\r\n"
                            "TITLE:x");
    EXPECT_THAT(nested,
                HasSubstr("\r\nRELATED;TYPE=agent;VALUE=text:BEGIN:VCARD\\nVERSION:2.1\\nFN:Help\\nEND:VCARD\r\n"));
    EXPECT_THAT(nested, HasSubstr("\r\nFN:Boss\r\n"));
    EXPECT_THAT(nested, HasSubstr("\r\nTITLE:x\r\n"));
    EXPECT_THAT(upgradedText("3.0", "AGENT:BEGIN:VCARD\\nFN:Susan\\nEND:VCARD"),
                HasSubstr("\r\nRELATED;TYPE=agent;VALUE=text:BEGIN:VCARD\\nFN:Susan\\nEND:VCARD\r\n"));
    EXPECT_THAT(upgradedText("3.0", "AGENT;VALUE=uri:cid:1@b"),
                HasSubstr("\r\nRELATED;VALUE=uri;TYPE=agent:cid:1@b\r\n"));
}

TEST(Upgrade, LeavesWhatNobodyStandardized) {
    const auto text =
        upgradedText("3.0", "X-EVOLUTION-FILE-AS:Doe\\, John\r\nitem1.X-ABLabel:_$!<Spouse>!$_\r\n"
                            "X-THING;ENCODING=b:AAAA\r\nX-EMPTY:\r\nMAILER:pine\r\nX-J:{\"a\": {\"b\":1}}");
    EXPECT_THAT(text, HasSubstr("\r\nX-EVOLUTION-FILE-AS:Doe\\, John\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nitem1.X-ABLabel:_$!<Spouse>!$_\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nX-THING;ENCODING=b:AAAA\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nX-EMPTY:\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nMAILER:pine\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nX-J:{\"a\": {\"b\":1}}\r\n"));
}

TEST(Upgrade, DropsEmptyLinesOfOldVersions) {
    const auto text = upgradedText("2.1", "FN:A\r\nTEL;HOME:\r\nADR;HOME:;;;;;;\r\nEMAIL:");
    EXPECT_THAT(text, Not(HasSubstr("TEL")));
    EXPECT_THAT(text, Not(HasSubstr("ADR")));
    EXPECT_THAT(text, Not(HasSubstr("EMAIL")));
}

TEST(Upgrade, MakesAGeoURI) {
    EXPECT_THAT(upgradedText("3.0", "GEO:37.386;-122.083"), HasSubstr("\r\nGEO:geo:37.386,-122.083\r\n"));
    EXPECT_THAT(upgradedText("2.1", "GEO:37.24,-17.87"), HasSubstr("\r\nGEO:geo:37.24,-17.87\r\n"));
}

TEST(Upgrade, IsDoneOnce) {
    for (const char* lines : {"TEL;PREF;WORK:1\r\nX-B;ENCODING=b:AAAA\r\nPHOTO;ENCODING=b:/9j/4AAQ",
                              "LABEL;HOME:a\\nb\r\nAGENT:BEGIN:VCARD\\nEND:VCARD\r\nBDAY:x\r\nNOTE:a\\,b\\\\n"}) {
        const auto once = VCard::parse("BEGIN:VCARD\r\nVERSION:3.0\r\n" + std::string(lines) + "\r\nEND:VCARD\r\n");
        EXPECT_EQ(VCard::parse(once.text()), once) << lines;
    }
}

} // namespace
} // namespace bridge
