#include "adapters/vcard/vcard_file.h"
#include "tests/support/public_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// Files that widespread programs wrote.

namespace bridge {
namespace {

using testing::HasSubstr;
using Values = std::vector<LabeledValue>;

VCardFile exported(const char* name) {
    return readVCardFile(readFile(publicData("vcf") / name));
}

TEST(ClientExports, OfEvolutionComeInWhole) {
    REQUIRE_PUBLIC_DATA("vcf");
    const auto file = exported("John_Doe_EVOLUTION.vcf");
    EXPECT_TRUE(file.problems.empty());
    ASSERT_EQ(file.cards.size(), 1u);
    const auto contact = file.cards[0].describe();
    EXPECT_EQ(file.cards[0].uid(), "477343c8e6bf375a9bac1f96a5000837");
    EXPECT_EQ(contact.givenName, "John");
    EXPECT_EQ(contact.middleName, "Richter, James");
    EXPECT_EQ(contact.familyName, "Doe");
    EXPECT_EQ(contact.nickname, "Johny");
    EXPECT_EQ(contact.organizationName, "IBM");
    EXPECT_EQ(contact.jobTitle, "Money Counter");
    EXPECT_EQ(contact.phoneNumbers, (Values{{"mobile", "905-666-1234"}, {"work", "905-555-1234"}}));
    EXPECT_EQ(contact.emailAddresses, (Values{{"work", "john.doe@ibm.com"}}));
    ASSERT_EQ(contact.postalAddresses.size(), 1u);
    EXPECT_EQ(contact.postalAddresses[0].street, "15 Crescent moon drive\nASB-123");
    EXPECT_EQ(contact.postalAddresses[0].city, "Albaney");
    EXPECT_EQ(contact.postalAddresses[0].state, "New York");
    EXPECT_EQ(contact.postalAddresses[0].postalCode, "12345");
    EXPECT_EQ(contact.postalAddresses[0].country, "United States of America");
    EXPECT_EQ(contact.birthday, (Birthday{1980, 3, 22}));
    EXPECT_FALSE(contact.imageAvailable);
    ASSERT_EQ(file.groups.size(), 1u);
    EXPECT_EQ(file.groups[0].name, "VIP");
    const auto text = file.cards[0].text();
    for (const char* part :
         {"X-EVOLUTION-SPOUSE:Maria", "X-EVOLUTION-ANNIVERSARY:1980-03-22",
          "X-COUCHDB-APPLICATION-ANNOTATIONS:{\"Evolution\"", "X-COUCHDB-UUID=", "ORG:IBM;Accounting;Dungeon"})
        EXPECT_THAT(text, HasSubstr(part));
}

TEST(ClientExports, OfGmailComeInWhole) {
    REQUIRE_PUBLIC_DATA("vcf");
    const auto file = exported("John_Doe_GMAIL.vcf");
    EXPECT_TRUE(file.problems.empty());
    ASSERT_EQ(file.cards.size(), 1u);
    const auto contact = file.cards[0].describe();
    EXPECT_EQ(contact.givenName, "John");
    EXPECT_EQ(contact.middleName, "Richter, James");
    EXPECT_EQ(contact.familyName, "Doe");
    EXPECT_EQ(contact.organizationName, "IBM");
    EXPECT_EQ(contact.jobTitle, "Money Counter");
    EXPECT_EQ(contact.phoneNumbers, (Values{{"mobile", "905-555-1234"}, {"home", "905-666-1234"}}));
    EXPECT_EQ(contact.emailAddresses, (Values{{"home", "john.doe@ibm.com"}}));
    ASSERT_EQ(contact.postalAddresses.size(), 1u);
    EXPECT_EQ(contact.postalAddresses[0].street,
              "Crescent moon drive\n555-asd\nNice Area, Albaney, New York 12345\nUnited States of America");
    EXPECT_EQ(contact.birthday, (Birthday{1980, 3, 22}));
    const auto text = file.cards[0].text();
    for (const char* part :
         {"URL;TYPE=work:http://www.ibm.com", "item1.X-ABDATE:1975-03-01", "item2.X-ABRELATEDNAMES:Jenny",
          "item2.X-ABLabel:_$!<Spouse>!$_", "X-PHONETIC-LAST-NAME:Dow", "FN:Mr. John Richter\\, James Doe Sr."})
        EXPECT_THAT(text, HasSubstr(part));
}

TEST(ClientExports, OfOutlookComeInWhole) {
    REQUIRE_PUBLIC_DATA("vcf");
    const auto file = exported("John_Doe_MS_OUTLOOK.vcf");
    ASSERT_EQ(file.cards.size(), 1u);
    const auto contact = file.cards[0].describe();
    EXPECT_EQ(contact.givenName, "John");
    EXPECT_EQ(contact.middleName, "Richter,James");
    EXPECT_EQ(contact.familyName, "Doe");
    EXPECT_EQ(contact.nickname, "Johny");
    EXPECT_EQ(contact.organizationName, "IBM");
    EXPECT_EQ(contact.jobTitle, "Money Counter");
    EXPECT_EQ(contact.phoneNumbers, (Values{{"work", "(905) 555-1234"}, {"home", "(905) 666-1234"}}));
    EXPECT_EQ(contact.emailAddresses, (Values{{"", "john.doe@ibm.cm"}}));
    ASSERT_EQ(contact.postalAddresses.size(), 2u);
    EXPECT_EQ(contact.postalAddresses[0].street, "Cresent moon drive");
    EXPECT_EQ(contact.postalAddresses[0].city, "Albaney");
    EXPECT_EQ(contact.postalAddresses[1].street, "Silicon Alley 5,");
    EXPECT_EQ(contact.postalAddresses[1].city, "New York");
    EXPECT_EQ(contact.birthday, (Birthday{1980, 3, 22}));
    EXPECT_TRUE(contact.imageAvailable);
    const auto text = file.cards[0].text();
    for (const char* part :
         {"X-MS-IMADDRESS:johny5@aol.com", "PHOTO:data:image/jpeg;base64,/9j/", "ROLE:Counting Money"})
        EXPECT_THAT(text, HasSubstr(part));
}

TEST(ClientExports, OfAndroidComeInWhole) {
    REQUIRE_PUBLIC_DATA("vcf");
    const auto file = exported("John_Doe_ANDROID.vcf");
    // Its picture really lacks a piece.
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_THAT(file.problems[0].reason, HasSubstr("PHOTO has no end"));
    EXPECT_FALSE(file.problems[0].isLost);
    ASSERT_EQ(file.cards.size(), 6u);
    EXPECT_EQ(file.cards[0].describe().emailAddresses, (Values{{"", "john.doe@company.com"}}));
    EXPECT_EQ(file.cards[1].describe().emailAddresses, (Values{{"", "jane.doe@company.com"}}));
    EXPECT_EQ(file.cards[2].describe().familyName, "Ñ Ñ Ñ Ñ ");
    EXPECT_EQ(file.cards[2].describe().phoneNumbers, (Values{{"mobile", "123456789"}}));
    EXPECT_EQ(file.cards[3].describe().phoneNumbers,
              (Values{{"mobile", "123456"}, {"home", "234567"}, {"mobile", "3456789"}, {"home", "45678901"}}));
    const auto pictured = file.cards[4].describe();
    EXPECT_EQ(pictured.familyName, "Ñ Ñ ");
    EXPECT_EQ(pictured.givenName, "Ñ Ñ Ñ ");
    EXPECT_EQ(pictured.phoneNumbers, (Values{{"mobile", "123456"}, {"work", "123456"}, {"work fax", "123456"}}));
    EXPECT_EQ(pictured.emailAddresses.size(), 2u);
    EXPECT_TRUE(pictured.imageAvailable);
    EXPECT_EQ(file.cards[5].describe().phoneNumbers, (Values{{"mobile", "55556666"}}));
    ASSERT_EQ(file.groups.size(), 1u);
    EXPECT_EQ(file.groups[0].name, "My Contacts");
}

TEST(ClientExports, OfListsComeInWhole) {
    REQUIRE_PUBLIC_DATA("vcf");
    const auto file = exported("gmail-list.vcf");
    EXPECT_TRUE(file.problems.empty());
    ASSERT_EQ(file.cards.size(), 3u);
    EXPECT_EQ(file.cards[2].describe().familyName, "White");
    EXPECT_EQ(file.cards[2].describe().emailAddresses, (Values{{"", "dwhite@gmail.com"}}));
}

TEST(ClientExports, OfTheStandardsComeInWhole) {
    REQUIRE_PUBLIC_DATA("vcf");
    const auto old = exported("rfc2426-example.vcf");
    EXPECT_TRUE(old.problems.empty());
    ASSERT_EQ(old.cards.size(), 2u);
    const auto frank = old.cards[0].describe();
    EXPECT_EQ(frank.givenName, "Frank Dawson");
    EXPECT_EQ(frank.organizationName, "Lotus Development Corporation");
    EXPECT_EQ(frank.phoneNumbers, (Values{{"work", "+1-919-676-9515"}, {"work fax", "+1-919-676-9564"}}));
    EXPECT_EQ(frank.emailAddresses, (Values{{"", "Frank_Dawson@Lotus.com"}, {"", "fdawson@earthlink.net"}}));
    ASSERT_EQ(frank.postalAddresses.size(), 1u);
    EXPECT_EQ(frank.postalAddresses[0].street, "6544 Battleford Drive");
    EXPECT_EQ(frank.postalAddresses[0].postalCode, "27613-3502");

    const auto present = exported("rfc6350-example.vcf");
    EXPECT_TRUE(present.problems.empty());
    ASSERT_EQ(present.cards.size(), 1u);
    const auto simon = present.cards[0].describe();
    EXPECT_EQ(simon.givenName, "Simon");
    EXPECT_EQ(simon.familyName, "Perreault");
    EXPECT_EQ(simon.birthday, (Birthday{std::nullopt, 2, 3}));
    EXPECT_EQ(simon.organizationName, "Viagenie");
    EXPECT_EQ(simon.phoneNumbers, (Values{{"work", "+1-418-656-9254;ext=102"}, {"mobile", "+1-418-262-6501"}}));
    EXPECT_EQ(simon.emailAddresses, (Values{{"work", "simon.perreault@viagenie.ca"}}));
    ASSERT_EQ(simon.postalAddresses.size(), 1u);
    EXPECT_EQ(simon.postalAddresses[0].street, "2875 Laurier\nSuite D2-630");
    EXPECT_EQ(simon.postalAddresses[0].city, "Quebec");
}

TEST(ClientExports, SayTheSameOnceStored) {
    REQUIRE_PUBLIC_DATA("vcf");
    size_t seen = 0;
    for (const auto& entry : std::filesystem::directory_iterator(publicData("vcf"))) {
        if (entry.path().extension() != ".vcf") continue;
        for (const auto& card : readVCardFile(readFile(entry.path())).cards) {
            EXPECT_EQ(VCard::parse(card.text()), card);
            EXPECT_EQ(VCard::parse(card.summary().text()).describe(), card.describe());
            ++seen;
        }
    }
    EXPECT_GT(seen, 10u);
}

} // namespace
} // namespace bridge
