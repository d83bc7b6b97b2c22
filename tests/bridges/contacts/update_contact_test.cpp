#include "tests/bridges/contacts/contact_bridge_test.h"

namespace bridge {
namespace {

class UpdateContactTest : public ContactBridgeTest {
protected:
    UpdateContactTest() { original.identifier = id = book.put(original); }
    // After the update, with the change that `expect` makes to what was there before.
    template <typename Expect> void expectUpdate(UpdateContactRequest request, Expect expect) {
        auto expected = stored(id);
        expect(expected);
        request.identifier = id;
        EXPECT_EQ(run(bridge.updateContact(std::move(request))), describeContact(expected));
        EXPECT_EQ(stored(id), expected);
    }
    std::string failure(UpdateContactRequest request) {
        request.identifier = id;
        return failureOf(bridge.updateContact(std::move(request)));
    }

    Contact original{.givenName = "Grace",
                     .middleName = "Brewster",
                     .familyName = "Hopper",
                     .nickname = "Amazing",
                     .organizationName = "Navy",
                     .jobTitle = "Rear admiral",
                     .phoneNumbers = {{"home", "555-0100"}, {"mobile", "555-0101"}},
                     .emailAddresses = {{"home", "g@example.com"}},
                     .postalAddresses = {{.street = "1 Main Street", .city = "Arlington"}},
                     .birthday = Birthday{1906, 12, 9},
                     .imageAvailable = true};
    std::string id;
};

TEST_F(UpdateContactTest, LeavesWhatIsNotNamed) {
    expectUpdate({}, [](Contact&) {});
    expectUpdate({.nickname = "Gracie"}, [](Contact& contact) { contact.nickname = "Gracie"; });
}

TEST_F(UpdateContactTest, ReplacesEveryField) {
    expectUpdate({.givenName = "Ada",
                  .middleName = "Augusta",
                  .familyName = "Lovelace",
                  .nickname = "Enchantress",
                  .organizationName = "Analytical Engines",
                  .jobTitle = "Countess",
                  .phoneNumbers = std::vector<std::string>{"1", "2", "3"},
                  .emailAddresses = std::vector<std::string>{"ada@example.com"},
                  .birthday = ContactBirthday{1815, 12, 10}},
                 [](Contact& contact) {
                     contact.givenName = "Ada";
                     contact.middleName = "Augusta";
                     contact.familyName = "Lovelace";
                     contact.nickname = "Enchantress";
                     contact.organizationName = "Analytical Engines";
                     contact.jobTitle = "Countess";
                     contact.phoneNumbers = {{"main", "1"}, {"main", "2"}, {"main", "3"}};
                     contact.emailAddresses = {{"work", "ada@example.com"}};
                     contact.birthday = Birthday{1815, 12, 10};
                 });
}

TEST_F(UpdateContactTest, EmptiesWhatIsEmpty) {
    expectUpdate({.middleName = "", .familyName = "", .nickname = "", .organizationName = "", .jobTitle = ""},
                 [](Contact& contact) {
                     contact.middleName = contact.familyName = contact.nickname = "";
                     contact.organizationName = contact.jobTitle = "";
                 });
    expectUpdate({.phoneNumbers = std::vector<std::string>()}, [](Contact& contact) { contact.phoneNumbers.clear(); });
    expectUpdate({.emailAddresses = std::vector<std::string>()},
                 [](Contact& contact) { contact.emailAddresses.clear(); });
}

TEST_F(UpdateContactTest, KeepsTheGivenNameAsSupplied) {
    expectUpdate({.givenName = "  Grace \n"}, [](Contact& contact) { contact.givenName = "  Grace \n"; });
}

TEST_F(UpdateContactTest, RefusesAnEmptyGivenNameBeforeItLooksAtAnything) {
    for (const auto* name : {"", " ", "\r\n\t", "\u3000"}) {
        EXPECT_EQ(failure({.givenName = name, .birthday = ContactBirthday{{}, 13, 1}}),
                  "Malformed bridge request: Contact given name cannot be empty when supplied.");
        EXPECT_EQ(failureOf(bridge.updateContact({.identifier = "unknown", .givenName = name})),
                  "Malformed bridge request: Contact given name cannot be empty when supplied.");
    }
    EXPECT_TRUE(store.calls.empty());
}

TEST_F(UpdateContactTest, RefusesAnImpossibleBirthdayBeforeItLooksAtAnything) {
    for (const auto* each : {id.c_str(), "unknown"})
        EXPECT_EQ(failureOf(bridge.updateContact(
                      {.identifier = each, .birthday = ContactBirthday{{}, 13, 1}, .clearBirthday = true})),
                  "Malformed bridge request: Contact birthday is not a valid calendar date.");
    EXPECT_TRUE(store.calls.empty());
}

TEST_F(UpdateContactTest, SetsABirthdayWithoutAYear) {
    expectUpdate({.birthday = ContactBirthday{{}, 2, 29}}, [](Contact& contact) {
        contact.birthday = Birthday{{}, 2, 29};
    });
}

TEST_F(UpdateContactTest, ClearsTheBirthdayOnlyWhenTold) {
    expectUpdate({.clearBirthday = false}, [](Contact&) {});
    expectUpdate({.birthday = ContactBirthday{2000, 1, 1}, .clearBirthday = false}, [](Contact& contact) {
        contact.birthday = Birthday{2000, 1, 1};
    });
    expectUpdate({.clearBirthday = true}, [](Contact& contact) { contact.birthday.reset(); });
    expectUpdate({.clearBirthday = true}, [](Contact&) {});
}

TEST_F(UpdateContactTest, ClearsTheBirthdayEvenWhereItAlsoSetsOne) {
    expectUpdate({.birthday = ContactBirthday{2000, 1, 1}, .clearBirthday = true},
                 [](Contact& contact) { contact.birthday.reset(); });
}

TEST_F(UpdateContactTest, OfAnUnknownContactIsNotFound) {
    for (const auto* unknown : {"", "nobody", "Grace"})
        EXPECT_EQ(failureOf(bridge.updateContact({.identifier = unknown, .nickname = "x"})),
                  std::string("Resource not found: ") + unknown);
    EXPECT_EQ(stored(id), original);
}

TEST_F(UpdateContactTest, RefusesAContactThatTakesNoChanges) {
    const auto fixed = book.put({.givenName = "Fixed", .isEditable = false});
    const auto before = begin();
    EXPECT_EQ(failureOf(bridge.updateContact({.identifier = fixed, .nickname = "x"})),
              "Operation failed: The contact cannot be edited.");
    EXPECT_EQ(store.calls, std::vector{Call::contacts});
    EXPECT_EQ(book.state(), before);
}

} // namespace
} // namespace bridge
