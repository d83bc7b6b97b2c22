#include "tests/bridges/contacts/contact_bridge_test.h"

namespace bridge {
namespace {

// The address book answers when the test lets it.
class InterleavedChanges : public ContactBridgeTest {
protected:
    InterleavedChanges() { slow.hold(); }

    template <typename T> static Task<T> start(Task<T> task) {
        task.start();
        return task;
    }
    Task<ContactDescriptor> startToName(const std::string& nickname) {
        return start(bridge.updateContact({.identifier = ada, .nickname = nickname}));
    }
    Task<ContactDescriptor> startToEmploy(const std::string& jobTitle) {
        return start(bridge.updateContact({.identifier = ada, .jobTitle = jobTitle}));
    }

    GatedContactStore slow{book};
    ContactDataBridge bridge{slow, authorization};
    std::string ada = book.put({.givenName = "Ada"});
    std::string group = book.putGroup("Friends");
};

TEST_F(InterleavedChanges, OfOneContactBothHold) {
    auto first = startToName("Enchantress");
    auto second = startToEmploy("Countess");
    EXPECT_EQ(slow.waiting(), 1u);
    slow.releaseAll();
    EXPECT_EQ(resultOf(first).nickname, "Enchantress");
    EXPECT_EQ(resultOf(second).jobTitle, "Countess");
    EXPECT_EQ(stored(ada).nickname, "Enchantress");
    EXPECT_EQ(stored(ada).jobTitle, "Countess");
}

TEST_F(InterleavedChanges, AnswerWithWhatTheyThemselvesLeft) {
    auto first = startToName("Enchantress");
    auto second = startToName("Countess");
    slow.releaseAll();
    EXPECT_EQ(resultOf(first).nickname, "Enchantress");
    EXPECT_EQ(resultOf(second).nickname, "Countess");
}

TEST_F(InterleavedChanges, OneThatIsDroppedLetsTheNextGoOn) {
    // One step in the middle of it each: looking, writing, looking again.
    for (int steps = 0; steps < 3; ++steps) {
        std::optional first = startToName("Enchantress");
        auto second = startToEmploy("Countess " + std::to_string(steps));
        for (int step = 0; step < steps; ++step)
            slow.releaseOne();
        EXPECT_FALSE(first->done());
        first.reset();
        slow.releaseAll();
        EXPECT_EQ(resultOf(second).jobTitle, "Countess " + std::to_string(steps));
    }
}

TEST_F(InterleavedChanges, OneThatIsDroppedInTheQueueDoesNothing) {
    auto first = startToName("Enchantress");
    std::optional second = startToName("Countess");
    second.reset();
    slow.releaseAll();
    resultOf(first);
    EXPECT_EQ(stored(ada).nickname, "Enchantress");
}

TEST_F(InterleavedChanges, SearchingDoesNotWaitForThem) {
    auto update = startToName("Enchantress");
    auto search = start(bridge.searchContacts({{}, 5, {}}));
    auto groups = start(bridge.listGroups());
    EXPECT_EQ(slow.waiting(), 3u);
    slow.releaseAll();
    EXPECT_EQ(resultOf(search).size(), 1u);
    EXPECT_EQ(resultOf(groups).size(), 1u);
    resultOf(update);
}

TEST_F(InterleavedChanges, FindNoContactThatIsDeletedBefore) {
    auto deletion = start(bridge.deleteContact(ada));
    auto update = startToName("Enchantress");
    auto membership = start(bridge.addMembers({group, {ada}}));
    slow.releaseAll();
    resultOf(deletion);
    EXPECT_EQ(failureIn(update), "Resource not found: " + ada);
    EXPECT_EQ(failureIn(membership), "Resource not found: " + ada);
    EXPECT_TRUE(book.state().contacts.empty());
}

TEST_F(InterleavedChanges, FindNoGroupThatIsDeletedBefore) {
    auto deletion = start(bridge.deleteGroup(group));
    auto membership = start(bridge.addMembers({group, {ada}}));
    auto again = start(bridge.deleteGroup(group));
    slow.releaseAll();
    resultOf(deletion);
    EXPECT_EQ(failureIn(membership), "Resource not found: " + group);
    EXPECT_EQ(failureIn(again), "Resource not found: " + group);
}

} // namespace
} // namespace bridge
