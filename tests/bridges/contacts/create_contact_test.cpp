#include "tests/bridges/contacts/contact_bridge_test.h"

namespace bridge {
namespace {

class CreateContact : public ContactBridgeTest {};

TEST_F(CreateContact, KeepsEverythingAndAnswersWithIt) {
    const auto made = run(bridge.createContact({.givenName = "Grace",
                                                .middleName = "Brewster",
                                                .familyName = "Hopper",
                                                .nickname = " Amazing ",
                                                .organizationName = "Navy",
                                                .jobTitle = "Rear admiral",
                                                .phoneNumbers = {" +1 555 0100", "555-0101"},
                                                .emailAddresses = {"g@example.com"},
                                                .birthday = ContactBirthday{1906, 12, 9}}));
    EXPECT_EQ(stored(made.id), (Contact{.identifier = made.id,
                                        .givenName = "Grace",
                                        .middleName = "Brewster",
                                        .familyName = "Hopper",
                                        .nickname = " Amazing ",
                                        .organizationName = "Navy",
                                        .jobTitle = "Rear admiral",
                                        .phoneNumbers = {{"main", " +1 555 0100"}, {"main", "555-0101"}},
                                        .emailAddresses = {{"work", "g@example.com"}},
                                        .birthday = Birthday{1906, 12, 9}}));
    EXPECT_EQ(made.phoneNumbers, (std::vector<std::string>{" +1 555 0100", "555-0101"}));
    EXPECT_EQ(run(bridge.searchContacts({{}, 10, {}})), std::vector{made});
}

TEST_F(CreateContact, TakesAGivenNameAlone) {
    const auto id = create({.givenName = "Ada"});
    EXPECT_EQ(stored(id), (Contact{.identifier = id, .givenName = "Ada"}));
}

TEST_F(CreateContact, TrimsTheGivenName) {
    EXPECT_EQ(stored(create({.givenName = "\u00a0\n Ada Augusta \t\r\n"})).givenName, "Ada Augusta");
}

TEST_F(CreateContact, RefusesAnEmptyGivenName) {
    const auto before = begin();
    for (const auto* name : {"", " ", "\t\r\n", "\u00a0\u2028\u3000"})
        EXPECT_EQ(failureOf(bridge.createContact({.givenName = name, .familyName = "Lovelace"})),
                  "Malformed bridge request: Contact given name cannot be empty.");
    EXPECT_TRUE(store.calls.empty());
    EXPECT_EQ(book.state(), before);
}

TEST_F(CreateContact, LooksAtTheNameBeforeTheBirthday) {
    const ContactBirthday impossible{2023, 2, 29};
    EXPECT_EQ(failureOf(bridge.createContact({.givenName = " ", .birthday = impossible})),
              "Malformed bridge request: Contact given name cannot be empty.");
    EXPECT_EQ(failureOf(bridge.createContact({.givenName = "Ada", .birthday = impossible})),
              "Malformed bridge request: Contact birthday is not a valid calendar date.");
    EXPECT_TRUE(store.calls.empty());
}

TEST_F(CreateContact, TakesTheTwentyNinthOfFebruaryWithoutAYear) {
    const auto made = run(bridge.createContact({.givenName = "Ada", .birthday = ContactBirthday{{}, 2, 29}}));
    EXPECT_EQ(made.birthday, (ContactBirthday{{}, 2, 29}));
    EXPECT_EQ(stored(made.id).birthday, (Birthday{{}, 2, 29}));
}

TEST_F(CreateContact, MakesAnotherOfTheSameName) {
    EXPECT_NE(create({.givenName = "Ada"}), create({.givenName = "Ada"}));
    EXPECT_EQ(book.state().contacts.size(), 2u);
}

} // namespace
} // namespace bridge
