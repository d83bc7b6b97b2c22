#include "adapters/vcard/vcard.h"

#include "base/platform_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace bridge {
namespace {

using testing::HasSubstr;
using testing::Not;
using Values = std::vector<LabeledValue>;

VCard card(const std::string& lines) {
    return VCard::parse("BEGIN:VCARD\r\nVERSION:4.0\r\n" + lines + "END:VCARD\r\n");
}

Contact ada() {
    Contact contact;
    contact.givenName = "Ada";
    contact.middleName = "King, of";
    contact.familyName = "Love;lace";
    contact.nickname = "Countess, the";
    contact.organizationName = "Engines; & Sons";
    contact.jobTitle = "Programmer\nfirst";
    contact.phoneNumbers = {{"main", "1"}, {"mobile", "2;3"}, {"my boat", "4"}, {"", "5"}, {"work fax", "6"}};
    contact.emailAddresses = {{"work", "a@b"}, {"home", "c@d"}, {"mobile", "e@f"}};
    contact.birthday = Birthday{1815, 12, 10};
    return contact;
}

TEST(VCardText, HoldsEveryFieldOfAContact) {
    auto contact = ada();
    PostalAddress address;
    address.street = "1 High St\nFloor 2";
    address.subLocality = "Soho";
    address.city = "London; Town";
    address.state = "Greater, London";
    address.postalCode = "W1";
    address.country = "United Kingdom";
    address.isoCountryCode = "gb";
    contact.postalAddresses = {address};
    const auto made = VCard::create(contact);
    EXPECT_EQ(made.describe(), contact);
    const auto read = VCard::parse(made.text());
    EXPECT_EQ(read.describe(), contact);
    EXPECT_EQ(read.uid(), made.uid());
    EXPECT_EQ(read, made);
}

TEST(VCardText, IsVersion4WithAUIDAndAFormattedName) {
    const auto text = VCard::create(ada()).text();
    EXPECT_TRUE(text.starts_with("BEGIN:VCARD\r\nVERSION:4.0\r\n"));
    EXPECT_TRUE(text.ends_with("END:VCARD\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nUID:urn:uuid:"));
    EXPECT_THAT(text, HasSubstr("\r\nFN:Ada King\\, of Love\\;lace\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nBDAY:18151210\r\n"));
    EXPECT_NE(VCard::create(ada()).uid(), VCard::create(ada()).uid());
}

TEST(VCardText, IsFoldedAtSeventyFiveBytesBetweenCharacters) {
    Contact contact;
    for (int count = 0; count < 100; ++count)
        contact.givenName += "ж ";
    const auto text = VCard::create(contact).text();
    for (size_t start = 0; start < text.size();) {
        const size_t end = text.find("\r\n", start);
        EXPECT_LE(end - start, 75u);
        EXPECT_NE(static_cast<unsigned char>(text[end + 2 < text.size() ? end + 2 : 0]) & 0xc0, 0x80);
        start = end + 2;
    }
    EXPECT_EQ(VCard::parse(text).describe(), contact);
}

TEST(VCardText, IsRefusedWhenItIsNotOneWholeCard) {
    for (const char* text : {"", "x", "BEGIN:VCARD\r\n", "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:A\r\n",
                             "BEGIN:VCARD\r\nEND:VCARD\r\nBEGIN:VCARD\r\nEND:VCARD\r\n", "FN:A\r\nEND:VCARD\r\n"})
        EXPECT_THROW(VCard::parse(text), PlatformError) << text;
}

TEST(VCardDescription, HasEveryPartOfAName) {
    const auto contact = card("N:Perreault;Simon,Pierre;Marie,Anne;Dr.;ing. jr,M.Sc.\r\nFN:x\r\n").describe();
    EXPECT_EQ(contact.familyName, "Perreault");
    EXPECT_EQ(contact.givenName, "Simon Pierre");
    EXPECT_EQ(contact.middleName, "Marie Anne");
}

TEST(VCardDescription, TakesTheFormattedNameWhenThereIsNoOther) {
    EXPECT_EQ(card("FN:Frank Dawson\r\nORG:Lotus\r\n").describe().givenName, "Frank Dawson");
    EXPECT_EQ(card("FN:Lotus\r\nORG:Lotus;Notes\r\n").describe().givenName, "");
    EXPECT_EQ(card("FN:a@b\r\nEMAIL:a@b\r\n").describe().givenName, "");
    EXPECT_EQ(card("FN:x\r\nN:;Ada;;;\r\n").describe().givenName, "Ada");
}

TEST(VCardDescription, TellsLabels) {
    const auto contact =
        card("TEL;TYPE=cell:1\r\nTEL;TYPE=\"work,voice\":2\r\nTEL;TYPE=HOME,FAX:3\r\nTEL:4\r\n"
             "item1.TEL:5\r\nitem1.X-ABLabel:Boat\r\nitem2.TEL:6\r\nitem2.X-ABLabel:_$!<HomeFAX>!$_\r\n"
             "TEL;TYPE=MAIN:7\r\nTEL;TYPE=pager:8\r\nTEL;TYPE=work,cell:9\r\nEMAIL;TYPE=home:a@b\r\n")
            .describe();
    EXPECT_EQ(contact.phoneNumbers, (Values{{"mobile", "1"},
                                            {"work", "2"},
                                            {"home fax", "3"},
                                            {"", "4"},
                                            {"Boat", "5"},
                                            {"homefax", "6"},
                                            {"main", "7"},
                                            {"pager", "8"},
                                            {"mobile", "9"}}));
    EXPECT_EQ(contact.emailAddresses, (Values{{"home", "a@b"}}));
}

TEST(VCardDescription, ReadsNumbersAndAddressesThatAreURIs) {
    const auto contact =
        card("TEL;VALUE=uri:tel:+1-418-656-9254;ext=102\r\nEMAIL;VALUE=URI:MAILTO:a%40b%zz\r\n").describe();
    EXPECT_EQ(contact.phoneNumbers[0].value, "+1-418-656-9254;ext=102");
    EXPECT_EQ(contact.emailAddresses[0].value, "a@b%zz");
}

TEST(VCardDescription, ReadsAddressesInEveryForm) {
    const auto addresses = card("ADR:PO 5;Apt 7;1 Main St,Rear;Town;State;123;Land\r\n"
                                "item1.ADR:;;2;;;;\r\nitem1.X-ABADR:ch\r\n"
                                "ADR;CC=FR:;;3;;;;\r\n"
                                "ADR;LABEL=\"One^nTwo\":;;;;;;\r\n"
                                "ADR:;;4;;;;;;;;;;;;Wards;District;;\r\nADR:x\r\nADR:\r\n")
                               .describe()
                               .postalAddresses;
    ASSERT_EQ(addresses.size(), 7u);
    EXPECT_EQ(addresses[0].street, "1 Main St, Rear\nApt 7\nPO 5");
    EXPECT_EQ(addresses[0].country, "Land");
    EXPECT_EQ(addresses[1].isoCountryCode, "ch");
    EXPECT_EQ(addresses[2].isoCountryCode, "FR");
    EXPECT_EQ(addresses[3].street, "One\nTwo");
    EXPECT_EQ(addresses[4].subLocality, "Wards, District");
    EXPECT_EQ(addresses[5].street, "x");
    EXPECT_EQ(addresses[6], PostalAddress());
}

TEST(VCardDescription, ReadsBirthdaysInEveryForm) {
    const auto birthday = [](const char* line) { return card(std::string(line) + "\r\n").describe().birthday; };
    const Birthday day{1980, 3, 22};
    const Birthday yearless{std::nullopt, 3, 22};
    for (const char* line : {"BDAY:19800322", "BDAY:1980-03-22", "BDAY:19800322T101112Z", "BDAY;VALUE=date:1980-03-22",
                             "BDAY:1980-03-22T00:00:00-05:00", "BDAY: 1980-03-22 ", "BDAY;CALSCALE=gregorian:19800322"})
        EXPECT_EQ(birthday(line), day) << line;
    for (const char* line : {"BDAY:--0322", "BDAY:--03-22", "BDAY;X-APPLE-OMIT-YEAR=1604:1604-03-22", "BDAY:00000322"})
        EXPECT_EQ(birthday(line), yearless) << line;
    EXPECT_EQ(birthday("BDAY:--0229"), (Birthday{std::nullopt, 2, 29}));
    EXPECT_EQ(birthday("BDAY:00010101"), (Birthday{1, 1, 1}));
    for (const char* line : {"BDAY:", "BDAY:1980", "BDAY:1980-03", "BDAY:---22", "BDAY;VALUE=text:circa 1800", "BDAY:x",
                             "BDAY:19800230", "BDAY:--0431", "BDAY:19801301", "BDAY:20230229", "BDAY:1980032",
                             "BDAY:198003222", "BDAY:+9800322", "BDAY;CALSCALE=hebrew:57400322"})
        EXPECT_EQ(birthday(line), std::nullopt) << line;
}

TEST(VCardDescription, TellsWhetherThereIsAPicture) {
    EXPECT_TRUE(card("PHOTO:data:image/gif;base64,R0lGODlhAQABAAAAACw=\r\n").describe().imageAvailable);
    EXPECT_TRUE(card("PHOTO;VALUE=uri:https://example.org/a.png\r\n").describe().imageAvailable);
    EXPECT_FALSE(card("PHOTO:\r\nLOGO:data:,x\r\n").describe().imageAvailable);
}

TEST(VCardSummary, DescribesAlikeWithoutThePicture) {
    const auto whole = VCard::parse(
        "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:A B\r\nN:B;A;;;\r\nORG:C\r\nTITLE:D\r\nNICKNAME:E\r\nTEL;TYPE=cell:1\r\n"
        "item1.EMAIL:2\r\nitem1.X-ABLabel:boat\r\nitem2.ADR:;;3;;;;\r\nitem2.X-ABADR:de\r\nBDAY:--0203\r\n"
        "PHOTO:data:image/png;base64," +
        std::string(4000, 'A') + "\r\nNOTE:long\r\nEND:VCARD\r\n");
    const auto summary = whole.summary();
    EXPECT_EQ(summary.describe(), whole.describe());
    EXPECT_EQ(summary.uid(), whole.uid());
    EXPECT_LT(summary.text().size(), 500u);
    EXPECT_THAT(summary.text(), Not(HasSubstr("NOTE")));
}

TEST(VCardChange, WritesWhatDiffersAndLeavesTheRest) {
    auto one = card("UID:u\r\nFN:Chosen Name\r\nN:Doe;John;R;Mr.;Sr.\r\nORG:IBM;Accounting;Dungeon\r\nNICKNAME:J,Jo\r\n"
                    "TEL;PREF=1;X-ID=7;TYPE=home:1\r\nTEL;TYPE=work:2\r\nEMAIL;TYPE=work:a@b\r\n"
                    "ADR;TYPE=home:;;3;;;;\r\nPHOTO:data:image/png;base64,AAAA\r\nX-THING;A=\"b;c\":d,e;f\r\n"
                    "item1.X-ABDATE:1975-03-01\r\nitem1.X-ABLabel:_$!<Anniversary>!$_\r\nBDAY:19800322\r\n");
    const auto before = one.text();
    auto contact = one.describe();
    one.change(contact);
    EXPECT_EQ(one.text(), before);

    contact.jobTitle = "Boss";
    contact.organizationName = "HAL";
    contact.phoneNumbers = {{"work", "2"}, {"home", "9"}, {"home", "1"}};
    contact.postalAddresses.clear();
    contact.imageAvailable = false;
    one.change(contact);
    const auto text = one.text();
    EXPECT_THAT(text, HasSubstr("\r\nTITLE:Boss\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nORG:HAL;Accounting;Dungeon\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nTEL;TYPE=work:2\r\nTEL;TYPE=home:9\r\nTEL;PREF=1;X-ID=7;TYPE=home:1\r\nEMAIL"));
    EXPECT_THAT(text, HasSubstr("\r\nFN:Chosen Name\r\nN:Doe;John;R;Mr.;Sr.\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nNICKNAME:J,Jo\r\n"));
    EXPECT_THAT(text, HasSubstr("\r\nX-THING;A=\"b;c\":d,e;f\r\n"));
    EXPECT_THAT(text, HasSubstr("ADR;TYPE=home:;;3;;;;"));
    EXPECT_THAT(text, HasSubstr("PHOTO:data:image/png;base64,AAAA"));
    EXPECT_THAT(text, HasSubstr("item1.X-ABDATE:1975-03-01\r\nitem1.X-ABLabel:_$!<Anniversary>!$_\r\n"));
}

TEST(VCardChange, ThatChangesNothingLeavesEveryByte) {
    auto unchanged = card("UID:1\r\nFN:John Richter, James Doe\r\nN:Doe;John;Richter\\, James;;\r\n");
    const auto before = unchanged;
    unchanged.change(before.describe());
    EXPECT_EQ(unchanged, before);
}

TEST(VCardChange, RenamesWithTheFormattedName) {
    auto one = card("FN:Chosen\r\nN:Doe;John;R\\, S;Mr.;Sr.\r\n");
    auto contact = one.describe();
    contact.familyName = "Roe";
    one.change(contact);
    EXPECT_THAT(one.text(), HasSubstr("\r\nFN:Mr. John R\\, S Roe Sr.\r\nN:Roe;John;R\\, S;Mr.;Sr.\r\n"));
}

TEST(VCardChange, GivesPartsToANameThatHadNone) {
    auto one = card("FN:Frank Dawson\r\n");
    auto contact = one.describe();
    contact.givenName = "Frank";
    contact.familyName = "Dawson";
    one.change(contact);
    EXPECT_EQ(one.describe(), contact);
    EXPECT_THAT(one.text(), HasSubstr("\r\nN:Dawson;Frank;;;\r\n"));
}

TEST(VCardChange, KeepsANameWithoutPartsWhenOtherThingsChange) {
    auto one = card("FN:Frank Dawson\r\nORG:Lotus\r\n");
    auto contact = one.describe();
    contact.organizationName = "Other";
    one.change(contact);
    EXPECT_EQ(one.describe(), contact);
    EXPECT_EQ(one.describe().givenName, "Frank Dawson");
}

TEST(VCardChange, RenamesAnOrganizationWithItsFormattedName) {
    auto one = card("FN:Lotus\r\nORG:Lotus\r\n");
    auto contact = one.describe();
    contact.organizationName = "IBM";
    one.change(contact);
    EXPECT_EQ(one.describe(), contact);
    contact.organizationName = "";
    one.change(contact);
    EXPECT_EQ(one.describe(), contact);
}

TEST(VCardChange, ClearsEveryField) {
    auto one = VCard::create(ada());
    Contact empty;
    one.change(empty);
    EXPECT_EQ(one.describe(), empty);
    EXPECT_THAT(one.text(), Not(HasSubstr("X-ABLabel")));
    EXPECT_THAT(one.text(), Not(HasSubstr("BDAY")));
    one.change(ada());
    EXPECT_EQ(one.describe(), ada());
}

TEST(VCardChange, RelabelsALineThatKeepsItsValue) {
    auto one = card("item1.TEL;X-ID=1;PREF=1:123\r\nitem1.X-ABLabel:Boat\r\n");
    auto contact = one.describe();
    contact.phoneNumbers = {{"main", "123"}};
    one.change(contact);
    EXPECT_EQ(one.describe(), contact);
    EXPECT_THAT(one.text(), HasSubstr("\r\nTEL;X-ID=1;PREF=1;TYPE=main:123\r\n"));
    EXPECT_THAT(one.text(), Not(HasSubstr("Boat")));
}

TEST(VCardChange, MakesLineEndsOfEveryKindLineFeeds) {
    Contact contact;
    contact.givenName = "a\r\nb\rc\nd";
    EXPECT_EQ(VCard::parse(VCard::create(contact).text()).describe().givenName, "a\nb\nc\nd");
}

TEST(VCardUID, IsComparedWithoutItsScheme) {
    EXPECT_EQ(comparableUID("urn:uuid:03A0E51F-D1AA-4385-8A53-E29025ACD8AF"), "03a0e51f-d1aa-4385-8a53-e29025acd8af");
    EXPECT_EQ(comparableUID("03A0E51F-D1AA-4385-8A53-E29025ACD8AF"), "03a0e51f-d1aa-4385-8a53-e29025acd8af");
    EXPECT_EQ(comparableUID(" Some-UID "), "Some-UID");
}

} // namespace
} // namespace bridge
