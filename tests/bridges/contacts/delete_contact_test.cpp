#include "tests/bridges/contacts/contact_bridge_test.h"

namespace bridge {
namespace {

class DeleteContactTest : public ContactBridgeTest {};

TEST_F(DeleteContactTest, RemovesTheOneContact) {
    const auto ada = create({.givenName = "Ada"});
    const auto other = create({.givenName = "Ada"});
    run(bridge.deleteContact(ada));
    const auto left = run(bridge.searchContacts({{}, 10, {}}));
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].id, other);
}

TEST_F(DeleteContactTest, OfAnUnknownContactIsNotFound) {
    const auto ada = create({.givenName = "Ada"});
    run(bridge.deleteContact(ada));
    for (const auto& unknown : {std::string(), std::string("nobody"), ada, std::string("a\0b", 3)})
        EXPECT_EQ(failureOf(bridge.deleteContact(unknown)), "Resource not found: " + unknown);
}

TEST_F(DeleteContactTest, RefusesAContactThatTakesNoChanges) {
    const auto fixed = book.put({.givenName = "Fixed", .isEditable = false});
    const auto before = begin();
    EXPECT_EQ(failureOf(bridge.deleteContact(fixed)), "Operation failed: The contact cannot be deleted.");
    EXPECT_EQ(store.calls, std::vector{Call::contacts});
    EXPECT_EQ(book.state(), before);
}

} // namespace
} // namespace bridge
