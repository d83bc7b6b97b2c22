#include "tests/bridges/contacts/contact_bridge_test.h"

namespace bridge {
namespace {

class ContactGroups : public ContactBridgeTest {
protected:
    std::vector<std::string> names() {
        std::vector<std::string> names;
        for (const auto& group : run(bridge.listGroups()))
            names.push_back(group.name);
        return names;
    }
};

TEST_F(ContactGroups, AreListedByNameWithoutRegardToCase) {
    for (const auto* name : {"Zebras", "Beta", "alpha", "élan", "Elan", "eland", "Alpha 2", "10"})
        book.putGroup(name);
    EXPECT_EQ(names(), (std::vector<std::string>{"10", "alpha", "Alpha 2", "Beta", "Elan", "élan", "eland", "Zebras"}));
}

TEST_F(ContactGroups, OfTheSameNameKeepTheStoresOrder) {
    std::vector<ContactGroupDescriptor> expected;
    for (int count = 0; count < 40; ++count) {
        const std::string name = count % 2 ? "same" : "SAME";
        expected.push_back({book.putGroup(name), name});
    }
    EXPECT_EQ(run(bridge.listGroups()), expected);
}

TEST_F(ContactGroups, AreNoneAtFirst) {
    EXPECT_TRUE(names().empty());
}

TEST_F(ContactGroups, AreMadeWithATrimmedName) {
    const auto made = run(bridge.createGroup({"\n  Friends of \u00a0"}));
    EXPECT_EQ(made.name, "Friends of");
    EXPECT_EQ(run(bridge.listGroups()), std::vector{made});
    EXPECT_EQ(book.state().groups, (std::vector{ContactGroup{made.id, "Friends of"}}));
}

TEST_F(ContactGroups, MayHaveTheSameName) {
    const auto first = run(bridge.createGroup({"Friends"}));
    const auto second = run(bridge.createGroup({"Friends"}));
    EXPECT_NE(first.id, second.id);
    EXPECT_EQ(names().size(), 2u);
}

TEST_F(ContactGroups, AreNotMadeWithoutAName) {
    for (const auto* name : {"", "   ", "\r\n", "\u2003"})
        EXPECT_EQ(failureOf(bridge.createGroup({name})),
                  "Malformed bridge request: Contact group name cannot be empty.");
    EXPECT_TRUE(store.calls.empty());
}

TEST_F(ContactGroups, AreDeletedWithoutTheirMembers) {
    const auto ada = create({.givenName = "Ada"});
    const auto group = book.putGroup("Friends", {ada});
    book.putGroup("Friends");
    run(bridge.deleteGroup(group));
    EXPECT_EQ(names(), std::vector<std::string>{"Friends"});
    EXPECT_EQ(stored(ada).givenName, "Ada");
}

TEST_F(ContactGroups, AreNotFoundByAnotherIdentifier) {
    book.putGroup("Friends");
    const auto ada = create({.givenName = "Ada"});
    const auto before = begin();
    for (const auto& unknown : {std::string(), std::string("Friends"), std::string("GROUP-1"), ada})
        EXPECT_EQ(failureOf(bridge.deleteGroup(unknown)), "Resource not found: " + unknown);
    EXPECT_EQ(book.state(), before);
}

TEST_F(ContactGroups, StayWhenTheStoreRefusesToDeleteThem) {
    const auto group = book.putGroup("Everybody");
    book.fixedGroups.insert(group);
    const auto before = begin();
    EXPECT_EQ(failureOf(bridge.deleteGroup(group)), "platform: The group can't be deleted.");
    EXPECT_EQ(book.state(), before);
}

} // namespace
} // namespace bridge
