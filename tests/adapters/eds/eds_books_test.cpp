#include "tests/adapters/eds/eds_contact_test.h"

// Several address books, as the desktop has them.

namespace bridge {
namespace {

using EdsBooksTest = EdsContactTest;

constexpr auto nowhere = "http://127.0.0.1:9/book/";

TEST_F(EdsBooksTest, AreShownAsOne) {
    const auto club = BookNeighbour::addLocalBook("Club");
    put(club, "zoe", "N:Abel;Zoe;;;\r\n");
    put(personal, "ada", "N:Baum;Ada;;;\r\n");
    put(club, "eve", "N:Cohn;Eve;;;\r\n");
    EXPECT_EQ(names(), (Names{"Zoe", "Ada", "Eve"}));
    EXPECT_EQ(names(ContactsMatchingName{"a"}), (Names{"Zoe", "Ada"}));
    const std::vector<std::string> wanted{identifier(club, "eve"), identifier(personal, "ada"),
                                          identifier(personal, "eve"), identifier(club, "zoe")};
    const auto found = wait(store().contacts(wanted));
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].givenName, "Eve");
    EXPECT_EQ(found[1].givenName, "Ada");
    EXPECT_EQ(found[2].givenName, "Zoe");
}

TEST_F(EdsBooksTest, HaveGroupsOfTheirOwn) {
    const auto club = BookNeighbour::addLocalBook("Club");
    const auto list = put(club, "list", "FN:Crew\r\nX-EVOLUTION-LIST:TRUE\r\n");
    const auto group = addGroup("Friends");
    EXPECT_EQ(wait(store().groups()), (std::vector<ContactGroup>{{list, "Crew"}, {group, "Friends"}}));
    const auto ada = add("Ada");
    execute({AddGroupMember{ada, list}});
    EXPECT_EQ(members(list), Names{"Ada"});
    execute({DeleteContactGroup{list}});
    EXPECT_EQ(wait(store().groups()), (std::vector<ContactGroup>{{group, "Friends"}}));
}

TEST_F(EdsBooksTest, TakeNewContactsWhereTheUserWantsThem) {
    EXPECT_EQ(bookOf(add("Ada")), personal);
    const auto club = BookNeighbour::addLocalBook("Club");
    BookNeighbour::setDefault(club);
    EXPECT_EQ(bookOf(add("Bob")), club);
    EXPECT_EQ(bookOf(addGroup("Friends")), club);
    BookNeighbour::setEnabled(club, false);
    EXPECT_EQ(bookOf(add("Cleo")), personal);
}

TEST_F(EdsBooksTest, ThatAreSwitchedOffAreNotShown) {
    const auto club = BookNeighbour::addLocalBook("Club");
    const auto eve = put(club, "eve", "N:;Eve;;;\r\n");
    BookNeighbour::setEnabled(club, false);
    EXPECT_EQ(names(), Names{});
    EXPECT_FALSE(contact(eve));
    EXPECT_NE(failure([&] { execute({DeleteContact{eve}}); }), "");
    BookNeighbour::setEnabled(club, true);
    EXPECT_EQ(names(), Names{"Eve"});
}

TEST_F(EdsBooksTest, ThatAreGoneAreGone) {
    const auto club = BookNeighbour::addLocalBook("Club");
    const auto eve = put(club, "eve", "N:;Eve;;;\r\n");
    BookNeighbour::setDefault(club);
    EXPECT_EQ(names(), Names{"Eve"});
    BookNeighbour::NeighbourRegistry::remove(club);
    EXPECT_EQ(names(), Names{});
    EXPECT_FALSE(contact(eve));
    EXPECT_NE(failure([&] { execute({DeleteContact{eve}}); }), "");
    EXPECT_EQ(bookOf(add("Ada")), personal);
}

TEST_F(EdsBooksTest, AreNotChangedTogether) {
    const auto club = BookNeighbour::addLocalBook("Club");
    const auto eve = put(club, "eve", "N:;Eve;;;\r\n");
    const auto ada = add("Ada");
    EXPECT_EQ(failure([&] {
                  execute({DeleteContact{ada}, DeleteContact{eve}});
              }),
              "The address books “Personal” and “Club” can't be changed together.");
    EXPECT_EQ(names(), (Names{"Ada", "Eve"}));
}

TEST_F(EdsBooksTest, ThatTakeNoChangesSayThat) {
    // One that has never been reached.
    const auto remote = BookNeighbour::addRemoteBook("Company", nowhere);
    EXPECT_TRUE(names().empty());
    BookNeighbour::setDefault(remote);
    EXPECT_EQ(failure([&] { add("Ada"); }), "The address book “Company” is read-only.");
    EXPECT_EQ(failure([&] { addGroup("Friends"); }), "The address book “Company” is read-only.");
}

TEST_F(EdsBooksTest, ThatTakeNoChangesHaveContactsThatTakeNone) {
    const auto remote = BookNeighbour::addRememberedBook(
        "Company", "BEGIN:VCARD\r\nVERSION:3.0\r\nUID:boss\r\nN:;Boss;;;\r\nFN:Boss\r\nEND:VCARD\r\n");
    const auto ada = add("Ada");
    auto boss = contact(identifier(remote, "boss")).value();
    EXPECT_FALSE(boss.isEditable);
    EXPECT_TRUE(contact(ada)->isEditable);
    boss.givenName = "Me";
    EXPECT_EQ(failure([&] { execute({UpdateContact{boss}}); }), "The address book “Company” is read-only.");
    EXPECT_EQ(failure([&] { execute({DeleteContact{boss.identifier}}); }), "The address book “Company” is read-only.");
    const auto group = addGroup("Friends");
    execute({AddGroupMember{boss.identifier, group}});
    EXPECT_EQ(members(group), Names{"Boss"});
}

} // namespace
} // namespace bridge
