#include "tests/bridges/contacts/contact_bridge_test.h"

namespace bridge {
namespace {

using Identifiers = std::vector<std::string>;

constexpr const char* wrongCount =
    "Malformed bridge request: Contact group changes require between 1 and 100 contact IDs.";
constexpr const char* notUnique = "Malformed bridge request: Contact IDs in a group change must be unique.";

class GroupMembership : public ContactBridgeTest {
protected:
    Identifiers put(int count) {
        Identifiers identifiers;
        for (int index = 0; index < count; ++index)
            identifiers.push_back(book.put({.givenName = "Adam " + std::to_string(index)}));
        return identifiers;
    }
    ContactGroupMembershipResult add(const Identifiers& contacts) { return run(bridge.addMembers({group, contacts})); }
    ContactGroupMembershipResult remove(const Identifiers& contacts) {
        return run(bridge.removeMembers({group, contacts}));
    }
    // Of adding and removing, which check alike and then have changed nothing.
    void expectRefusal(const std::string& groupID, const Identifiers& contacts, const std::string& failure) {
        const auto before = begin();
        EXPECT_EQ(failureOf(bridge.addMembers({groupID, contacts})), failure);
        EXPECT_EQ(failureOf(bridge.removeMembers({groupID, contacts})), failure);
        EXPECT_EQ(book.state(), before);
        EXPECT_THAT(store.calls, testing::Not(testing::Contains(Call::execute)));
    }

    std::string group = book.putGroup("Friends");
};

TEST_F(GroupMembership, IsGivenAndTaken) {
    const auto contacts = put(3);
    const Identifiers some{contacts[2], contacts[0]};
    EXPECT_EQ(add(some), (ContactGroupMembershipResult{group, some, GroupMembershipChange::addMembers}));
    EXPECT_EQ(members(group), some);
    EXPECT_EQ(remove({contacts[2]}),
              (ContactGroupMembershipResult{group, {contacts[2]}, GroupMembershipChange::removeMembers}));
    EXPECT_EQ(members(group), Identifiers{contacts[0]});
    EXPECT_EQ(book.state().contacts.size(), 3u);
}

TEST_F(GroupMembership, OfMembersAndStrangersIsTheStoresAffair) {
    const auto contacts = put(2);
    add({contacts[0]});
    EXPECT_EQ(add(contacts).contactIdentifiers, contacts);
    EXPECT_EQ(members(group), contacts);
    remove({contacts[0]});
    EXPECT_EQ(remove(contacts).contactIdentifiers, contacts);
    EXPECT_TRUE(members(group).empty());
}

TEST_F(GroupMembership, IsChangedForAHundredAtOnce) {
    const auto contacts = put(100);
    begin();
    EXPECT_EQ(add(contacts).contactIdentifiers, contacts);
    EXPECT_EQ(store.calls, (std::vector{Call::groups, Call::contacts, Call::execute}));
    EXPECT_EQ(members(group), contacts);
    remove(contacts);
    EXPECT_TRUE(members(group).empty());
}

TEST_F(GroupMembership, IsRefusedForNobodyAndForMoreThanAHundred) {
    for (const auto& contacts : {Identifiers(), put(101), Identifiers(101, "twice")}) {
        expectRefusal(group, contacts, wrongCount);
        expectRefusal("unknown", contacts, wrongCount);
        EXPECT_TRUE(store.calls.empty());
    }
}

TEST_F(GroupMembership, IsRefusedWhereOneIsNamedTwice) {
    const auto contacts = put(2);
    for (const auto& twice :
         {Identifiers{contacts[0], contacts[1], contacts[0]}, Identifiers{"x", "x"}, Identifiers(100, "")}) {
        expectRefusal(group, twice, notUnique);
        expectRefusal("unknown", twice, notUnique);
        EXPECT_TRUE(store.calls.empty());
    }
}

TEST_F(GroupMembership, TellsIdentifiersApartByEveryByte) {
    expectRefusal(group, {"A", "a", "a "}, "Resource not found: A");
    expectRefusal(group, {"\u00e9", "e\u0301"}, "Resource not found: \u00e9");
}

TEST_F(GroupMembership, NeedsAGroup) {
    const auto contacts = put(1);
    expectRefusal("unknown", contacts, "Resource not found: unknown");
    expectRefusal("unknown", {"nobody"}, "Resource not found: unknown");
    EXPECT_THAT(store.calls, testing::Each(Call::groups));
}

TEST_F(GroupMembership, NamesTheFirstUnknownContactAndChangesNothing) {
    const auto contacts = put(2);
    add(contacts);
    expectRefusal(group, {contacts[0], "nobody", contacts[1], "also nobody"}, "Resource not found: nobody");
    expectRefusal(group, {contacts[1], contacts[0], ""}, "Resource not found: ");
}

TEST_F(GroupMembership, KnowsContactsByAllTheirIdentifiers) {
    const auto contacts = put(2);
    book.alsoKnow(contacts[1], "other");
    EXPECT_EQ(add({contacts[0], contacts[1], "other"}).contactIdentifiers.size(), 3u);
    EXPECT_EQ(members(group), contacts);
    expectRefusal(group, {"other", "nobody"}, "Resource not found: nobody");
}

TEST_F(GroupMembership, IsTheStoresToRefuse) {
    const auto contacts = put(1);
    const auto fixed = book.put({.givenName = "Fixed", .isEditable = false});
    const auto before = begin();
    EXPECT_EQ(failureOf(bridge.addMembers({group, {contacts[0], fixed}})), "platform: The contact takes no changes.");
    EXPECT_EQ(book.state(), before);
}

} // namespace
} // namespace bridge
