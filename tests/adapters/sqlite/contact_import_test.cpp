#include "adapters/sqlite/sqlite_contact_store.h"
#include "base/event_loop.h"
#include "tests/adapters/sqlite/still_clock.h"
#include "tests/support/public_data.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using testing::HasSubstr;

class ContactImportTest : public testing::Test {
protected:
    std::vector<std::string> names(ContactPredicate predicate = AllContacts{}) {
        std::vector<std::string> found;
        loop.runUntilDone(store.enumerate(std::move(predicate), [&found](const Contact& each) {
            found.push_back(each.givenName);
            return true;
        }));
        return found;
    }
    std::vector<ContactGroup> groups() { return loop.runUntilDone(store.groups()); }
    static std::string card(const std::string& lines) { return "BEGIN:VCARD\nVERSION:3.0\n" + lines + "END:VCARD\n"; }

    TemporaryFolder folder;
    StillClock clock;
    EventLoop loop;
    SqliteContactStore store{folder.file("contacts.db"), clock};
};

TEST_F(ContactImportTest, TakesContactsWithTheirGroups) {
    const auto result = importContacts(store, card("UID:1\nN:;Ada;;;\nCATEGORIES:Friends,Work\n") +
                                                  card("UID:2\nN:;Bob;;;\nCATEGORIES:Friends\n"));
    EXPECT_EQ(result.contactsAdded, 2u);
    EXPECT_EQ(result.contactsKnown, 0u);
    EXPECT_EQ(result.groupsAdded, 2u);
    EXPECT_TRUE(result.problems.empty());
    ASSERT_EQ(groups().size(), 2u);
    EXPECT_EQ(groups()[0].name, "Friends");
    EXPECT_EQ(names(ContactsInGroup{groups()[0].identifier}), (std::vector<std::string>{"Ada", "Bob"}));
    EXPECT_EQ(names(ContactsInGroup{groups()[1].identifier}), std::vector<std::string>{"Ada"});
}

TEST_F(ContactImportTest, LeavesWhatIsHereAsItIs) {
    importContacts(store, card("UID:1\nN:;Ada;;;\nCATEGORIES:Friends\n"));
    const auto result = importContacts(store, card("UID:1\nN:;Adelaide;;;\nCATEGORIES:Friends,Work\n") +
                                                  card("UID:2\nN:;Bob;;;\nCATEGORIES:Friends\n"));
    EXPECT_EQ(result.contactsAdded, 1u);
    EXPECT_EQ(result.contactsKnown, 0u);
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_EQ(result.problems[0].item, "contact “Adelaide”");
    EXPECT_THAT(result.problems[0].reason, HasSubstr("here already"));
    EXPECT_TRUE(result.problems[0].isLost);
    EXPECT_EQ(result.groupsAdded, 1u);
    EXPECT_EQ(names(), (std::vector<std::string>{"Ada", "Bob"}));
    ASSERT_EQ(groups().size(), 2u);
    EXPECT_EQ(names(ContactsInGroup{groups()[0].identifier}), (std::vector<std::string>{"Ada", "Bob"}));
    EXPECT_EQ(names(ContactsInGroup{groups()[1].identifier}), std::vector<std::string>{"Ada"});
}

TEST_F(ContactImportTest, TakesAFileThatComesAgainOnce) {
    const auto file = card("UID:1\nN:;Ada;;;\nCATEGORIES:Friends\nREV:20260101T000000Z\n") +
                      card("UID:1\nN:;Bea;;;\n") + card("N:;Cleo;;;\nTEL:1\n") + card("EMAIL:d@example.com\n");
    EXPECT_EQ(importContacts(store, file).contactsAdded, 4u);
    // As a program writes it that knows the same of them a year later.
    auto later = file;
    later.replace(later.find("2026"), 4, "2027");
    for (const auto& again : {file, later}) {
        const auto result = importContacts(store, again);
        EXPECT_EQ(result.contactsAdded, 0u);
        EXPECT_EQ(result.contactsKnown, 4u);
        EXPECT_EQ(result.groupsAdded, 0u);
    }
    EXPECT_EQ(names().size(), 4u);
}

TEST_F(ContactImportTest, KnowsContactsThatWereChangedHere) {
    const auto file = card("N:;Ada;;;\n");
    importContacts(store, file);
    auto ada = Contact{};
    loop.runUntilDone(store.enumerate(AllContacts{}, [&ada](const Contact& each) {
        ada = each;
        return true;
    }));
    ada.nickname = "Countess";
    std::vector<ContactChange> changes{UpdateContact{ada}};
    loop.runUntilDone(store.execute(std::move(changes)));
    const auto result = importContacts(store, file);
    EXPECT_EQ(result.contactsAdded, 0u);
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_TRUE(result.problems[0].isLost);
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(ContactImportTest, FindsMembersOfGroupsInTheFileAndHere) {
    importContacts(store, card("UID:urn:uuid:03A0E51F-D1AA-4385-8A53-E29025ACD8AF\nN:;Ada;;;\n"));
    const auto result = importContacts(
        store, "BEGIN:VCARD\nVERSION:4.0\nKIND:group\nFN:Crew\nMEMBER:urn:uuid:03a0e51f-d1aa-4385-8a53-e29025acd8af\n"
               "MEMBER:b\nMEMBER:nobody\nEND:VCARD\n" +
                   card("UID:b\nN:;Bob;;;\n"));
    ASSERT_EQ(groups().size(), 1u);
    EXPECT_EQ(groups()[0].name, "Crew");
    EXPECT_EQ(names(ContactsInGroup{groups()[0].identifier}), (std::vector<std::string>{"Ada", "Bob"}));
    EXPECT_EQ(names().size(), 2u);
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_EQ(result.problems[0].item, "group “Crew”");
    EXPECT_THAT(result.problems[0].reason, HasSubstr("1 of its members is neither"));
}

TEST_F(ContactImportTest, ReportsWhatTheFileLacks) {
    const auto result = importContacts(store, card("N:;Ada;;;\n") + "BEGIN:VCARD\nFN:Cut\n");
    EXPECT_EQ(result.contactsAdded, 1u);
    ASSERT_EQ(result.problems.size(), 1u);
    EXPECT_TRUE(result.problems[0].isLost);
}

TEST_F(ContactImportTest, ChangesNothingForWhatIsNoVCard) {
    EXPECT_THROW(importContacts(store, "hello"), PlatformError);
    EXPECT_TRUE(names().empty());
}

TEST_F(ContactImportTest, TakesTheExportsOfManyPrograms) {
    REQUIRE_PUBLIC_DATA("vcf");
    size_t added = 0;
    for (const auto& entry : std::filesystem::directory_iterator(publicData("vcf")))
        if (entry.path().extension() == ".vcf") added += importContacts(store, readFile(entry.path())).contactsAdded;
    EXPECT_EQ(added, 15u);
    EXPECT_EQ(names().size(), added);
    EXPECT_EQ(names(ContactsMatchingName{"doe john"}).size(), 3u);
    EXPECT_EQ(names(ContactsMatchingName{"perr"}), std::vector<std::string>{"Simon"});
}

} // namespace
} // namespace bridge
