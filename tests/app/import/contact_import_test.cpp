#include "tests/app/import/import_site.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

TEST(ContactImport, TakesContactsWithTheirGroups) {
    ImportSite site;
    const auto file = site.takeText(
        "Friends.vcf", cardText("UID:1\r\nFN:Ada\r\nCATEGORIES:Choir,Work\r\n") + cardText("UID:2\r\nFN:Bea\r\n") +
                           "BEGIN:VCARD\r\nVERSION:4.0\r\nKIND:group\r\nFN:Family\r\nMEMBER:2\r\nEND:VCARD\r\n");
    EXPECT_TRUE(file.isWhole());
    EXPECT_EQ(file.kind, FileKind::contacts);
    EXPECT_EQ(file.contacts.added, 2u);
    EXPECT_EQ(file.contacts.known, 0u);
    EXPECT_EQ(file.contacts.groups, 3u);
    const auto groups = site.groups();
    ASSERT_EQ(groups.size(), 3u);
    EXPECT_EQ(groups[0].name, "Choir");
    EXPECT_EQ(site.givenNames(ContactsInGroup{groups[0].identifier}), std::vector<std::string>{"Ada"});
    EXPECT_EQ(groups[2].name, "Family");
    EXPECT_EQ(site.givenNames(ContactsInGroup{groups[2].identifier}), std::vector<std::string>{"Bea"});
}

TEST(ContactImport, OfAFileThatComesAgainAddsNobody) {
    ImportSite site;
    const auto text = cardText("UID:1\r\nFN:Ada\r\n") + cardText("FN:Bea\r\nCATEGORIES:Choir\r\n");
    site.takeText("Friends.vcf", text);
    const auto again = site.takeText("Friends.vcf", text);
    EXPECT_TRUE(again.isWhole());
    EXPECT_EQ(again.kind, FileKind::contacts);
    EXPECT_EQ(again.contacts.added, 0u);
    EXPECT_EQ(again.contacts.known, 2u);
    EXPECT_EQ(again.contacts.groups, 0u);
    EXPECT_EQ(site.contacts().size(), 2u);
}

TEST(ContactImport, NamesContactsThatTheFileKnowsOtherwise) {
    ImportSite site;
    site.takeText("Friends.vcf", cardText("UID:1\r\nFN:Ada\r\n"));
    const auto file = site.takeText("Friends.vcf", cardText("UID:1\r\nFN:Ada\r\nTEL:1\r\n"));
    EXPECT_FALSE(file.isWhole());
    EXPECT_FALSE(file.failure);
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_EQ(file.problems[0].item, "contact “Ada”");
    EXPECT_TRUE(file.problems[0].isLost);
    EXPECT_TRUE(site.contacts().at(0).phoneNumbers.empty());
}

TEST(ContactImport, LeavesOutACardThatIsCutAndSaysSo) {
    ImportSite site;
    const auto file = site.takeText("Friends.vcf", cardText("FN:Ada\r\n") + "BEGIN:VCARD\r\nFN:Bea\r\n");
    EXPECT_FALSE(file.isWhole());
    ASSERT_EQ(file.problems.size(), 1u);
    EXPECT_EQ(file.problems[0].item, "the contact that begins in line 5");
    EXPECT_EQ(site.givenNames(), std::vector<std::string>{"Ada"});
}

TEST(ContactImport, ReadsWhatOldPhonesWrite) {
    ImportSite site;
    const auto file =
        site.takeText("Phone.vcf", "BEGIN:VCARD\r\nVERSION:2.1\r\n"
                                   "N;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BCller;J=C3=B6=\r\nrg;;;\r\n"
                                   "NOTE;CHARSET=ISO-8859-1:Gr\xfc\xdf"
                                   "e\r\nTEL;CELL:1\r\n 23\r\n"
                                   "PHOTO;ENCODING=BASE64;JPEG:\r\n /9j/4AAQ\r\n\r\nEND:VCARD\r\n");
    EXPECT_TRUE(file.isWhole()) << file.problems.size();
    const auto found = site.contacts(ContactsMatchingName{"jorg mull"});
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].givenName, "Jörg");
    EXPECT_EQ(found[0].phoneNumbers, (std::vector<LabeledValue>{{"mobile", "123"}}));
    EXPECT_TRUE(found[0].imageAvailable);
}

TEST(ContactImport, TakesNothingWhenTheStoreIsGone) {
    ImportSite site;
    site.takeText("Friends.vcf", cardText("FN:Ada\r\n"));
    std::filesystem::rename(site.folder / "contacts.db", site.folder / "lost.db");
    const auto file = site.takeText("More.vcf", cardText("FN:Bea\r\n") + cardText("FN:Cleo\r\n"));
    EXPECT_TRUE(file.failure);
    EXPECT_EQ(file.contacts.added, 0u);
    std::filesystem::rename(site.folder / "lost.db", site.folder / "contacts.db");
    EXPECT_EQ(site.givenNames(), std::vector<std::string>{"Ada"});
}

TEST(ContactImport, LeavesCalendarsAlone) {
    ImportSite site;
    site.takeText("Friends.vcf", cardText("FN:Ada\r\n"));
    EXPECT_TRUE(std::filesystem::exists(site.folder / "contacts.db"));
    EXPECT_FALSE(std::filesystem::exists(site.folder / "calendars.db"));
}

} // namespace
} // namespace bridge
