#include "policy/apple_resource_access_policy.h"

#include "base/apple_bridge_error.h"
#include "tests/fakes/memory_user_defaults.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Policy = AppleResourceAccessPolicy;
using Identifiers = Policy::Identifiers;
using Strings = std::vector<std::string>;

constexpr const char* calendarsKey = "appleBridge.allowedCalendarIDs";
constexpr const char* listsKey = "appleBridge.allowedReminderListIDs";

class AppleResourceAccessPolicyTest : public testing::Test {
protected:
    MemoryUserDefaults defaults;
};

TEST_F(AppleResourceAccessPolicyTest, AllowsNothingAtFirstAndStoresNothing) {
    const Policy policy(defaults);
    EXPECT_EQ(policy.calendarIDs(), Identifiers());
    EXPECT_EQ(policy.reminderListIDs(), Identifiers());
    EXPECT_EQ(defaults.timesSet(), 0);
}

TEST_F(AppleResourceAccessPolicyTest, LoadsEachListFromItsKey) {
    defaults.setStrings(calendarsKey, {"b", "a", "b", ""});
    defaults.setStrings(listsKey, {"gone"});
    const Policy policy(defaults);
    EXPECT_EQ(policy.calendarIDs(), (Identifiers{"", "a", "b"}));
    EXPECT_EQ(policy.reminderListIDs(), Identifiers{"gone"});
    EXPECT_EQ(policy.identifiers(EntityType::event), policy.calendarIDs());
    EXPECT_EQ(policy.identifiers(EntityType::reminder), policy.reminderListIDs());
}

TEST_F(AppleResourceAccessPolicyTest, TakesWhatIsNoArrayOfStringsAsNothing) {
    defaults.setString(calendarsKey, "a");
    defaults.setData(listsKey, "a");
    const Policy policy(defaults);
    EXPECT_EQ(policy.calendarIDs(), Identifiers());
    EXPECT_EQ(policy.reminderListIDs(), Identifiers());
}

TEST_F(AppleResourceAccessPolicyTest, StoresEveryChangeSortedByBytes) {
    Policy policy(defaults);
    for (const auto* identifier : {"b", "a", "B", "\xc3\xa4", "a1", "a"})
        policy.setAllowed(EntityType::event, identifier, true);
    EXPECT_EQ(defaults.strings(calendarsKey), (Strings{"B", "a", "a1", "b", "\xc3\xa4"}));
    EXPECT_EQ(defaults.timesSet(), 6);
    policy.setAllowed(EntityType::event, "a", false);
    policy.setAllowed(EntityType::event, "unknown", false);
    EXPECT_EQ(defaults.strings(calendarsKey), (Strings{"B", "a1", "b", "\xc3\xa4"}));
    policy.replace(EntityType::event, {"z", "y"});
    EXPECT_EQ(defaults.strings(calendarsKey), (Strings{"y", "z"}));
    EXPECT_FALSE(defaults.contains(listsKey));
    EXPECT_EQ(Policy(defaults).calendarIDs(), (Identifiers{"y", "z"}));
}

TEST_F(AppleResourceAccessPolicyTest, KeepsCalendarsAndReminderListsApart) {
    Policy policy(defaults);
    policy.setAllowed(EntityType::reminder, "a", true);
    EXPECT_EQ(policy.calendarIDs(), Identifiers());
    EXPECT_EQ(policy.reminderListIDs(), Identifiers{"a"});
    EXPECT_EQ(defaults.strings(listsKey), Strings{"a"});
    policy.setAllowed(EntityType::event, "a", false);
    EXPECT_EQ(policy.reminderListIDs(), Identifiers{"a"});
    policy.replace(EntityType::reminder, {});
    EXPECT_EQ(defaults.strings(listsKey), Strings());
}

TEST_F(AppleResourceAccessPolicyTest, WritesItsWholeListWhateverIsStored) {
    Policy policy(defaults);
    policy.setAllowed(EntityType::event, "a", true);
    defaults.setStrings(calendarsKey, {"of another program"});
    policy.setAllowed(EntityType::event, "b", true);
    EXPECT_EQ(defaults.strings(calendarsKey), (Strings{"a", "b"}));
}

std::string refusal(const Strings& requested, const Identifiers& allowed) {
    try {
        resolveRequestedIDs(requested, allowed, "Nothing is allowed.");
    } catch (const AppleBridgeError& error) {
        EXPECT_EQ(error.kind(), AppleBridgeError::Case::resourceAccessDenied);
        return error.message();
    }
    return "";
}

TEST(ResolvedIDs, OfAnEmptyAllowListAreRefusedWhateverIsRequested) {
    EXPECT_EQ(refusal({}, {}), "Brindlefox resource access denied: Nothing is allowed.");
    EXPECT_EQ(refusal({"a"}, {}), "Brindlefox resource access denied: Nothing is allowed.");
}

TEST(ResolvedIDs, AreTheWholeAllowListWhenNoneIsRequested) {
    EXPECT_EQ(resolveRequestedIDs({}, {"a", "b"}, ""), (Identifiers{"a", "b"}));
}

TEST(ResolvedIDs, AreTheRequestedOnesEachOnce) {
    EXPECT_EQ(resolveRequestedIDs({"b", "b", "a", "b"}, {"a", "b", "c"}, ""), (Identifiers{"a", "b"}));
}

TEST(ResolvedIDs, AreRefusedForTheFirstThatIsNotAllowed) {
    const std::string refused = "Brindlefox resource access denied: Access is not authorized for resource identifier ";
    EXPECT_EQ(refusal({"a", "y", "x"}, {"a"}), refused + "y.");
    EXPECT_EQ(refusal({"A"}, {"a"}), refused + "A.");
    EXPECT_EQ(refusal({""}, {"a"}), refused + ".");
}

} // namespace
} // namespace bridge
