#include "policy/bridge_capability_policy.h"

#include "tests/fakes/memory_user_defaults.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using Capability = BridgeCapability;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Names = std::vector<std::string>;

constexpr auto key = BridgeCapabilityPolicy::defaultsKey;

TEST(CapabilityPolicy, FreshInstallationEnablesNothingAndSaysSo) {
    MemoryUserDefaults defaults;
    const BridgeCapabilityPolicy policy(defaults);
    EXPECT_THAT(policy.enabledCapabilities(), IsEmpty());
    EXPECT_EQ(defaults.strings(key), Names());
}

TEST(CapabilityPolicy, UpgradeFromBeforeTheCatalogueEnablesEverything) {
    for (const auto older : {"appleBridge.allowedCalendarIDs", "appleBridge.allowedReminderListIDs", "authorizedFileRoots.v1"}) {
        MemoryUserDefaults defaults;
        defaults.setStrings(older, {});
        const BridgeCapabilityPolicy policy(defaults);
        EXPECT_EQ(policy.enabledCapabilities().size(), capabilityCount) << older;
        const auto stored = *defaults.strings(key);
        EXPECT_EQ(stored.size(), capabilityCount);
        EXPECT_TRUE(std::is_sorted(stored.begin(), stored.end()));
    }
}

TEST(CapabilityPolicy, ValueOfAnotherKindCountsAsAbsent) {
    MemoryUserDefaults defaults;
    defaults.setString(key, "files.list");
    EXPECT_THAT(BridgeCapabilityPolicy(defaults).enabledCapabilities(), IsEmpty());

    defaults.setString(key, "files.list");
    defaults.setData("authorizedFileRoots.v1", "");
    EXPECT_EQ(BridgeCapabilityPolicy(defaults).enabledCapabilities().size(), capabilityCount);
}

TEST(CapabilityPolicy, StoredSetIsKeptAndOlderVersionsNoLongerMatter) {
    MemoryUserDefaults defaults;
    defaults.setStrings(key, {});
    defaults.setData("authorizedFileRoots.v1", "[]");
    EXPECT_THAT(BridgeCapabilityPolicy(defaults).enabledCapabilities(), IsEmpty());
}

TEST(CapabilityPolicy, CoarseNamesOfOldBecomeTheirFineOnes) {
    MemoryUserDefaults defaults;
    defaults.setStrings(key, {"calendar.read", "files.list", "no such name"});
    EXPECT_THAT(BridgeCapabilityPolicy(defaults).enabledCapabilities(),
                UnorderedElementsAre(Capability::calendarEventsRead, Capability::calendarsRead, Capability::filesList));
    EXPECT_EQ(defaults.strings(key), (Names{"calendar.calendars.read", "calendar.events.read", "files.list"}));

    defaults.setStrings(key, {"reminders.read"});
    EXPECT_THAT(BridgeCapabilityPolicy(defaults).enabledCapabilities(),
                UnorderedElementsAre(Capability::reminderItemsRead, Capability::reminderListsRead));
}

TEST(CapabilityPolicy, StoredOrderNeverDependsOnTheOrderOfEnabling) {
    MemoryUserDefaults defaults;
    BridgeCapabilityPolicy policy(defaults);
    for (const auto capability : {Capability::musicPlayback, Capability::directions, Capability::currentLocation, Capability::pagesRead,
                                  Capability::calendarEventsRead, Capability::calendarsRead})
        policy.setEnabled(capability, true);
    EXPECT_EQ(defaults.strings(key), (Names{"calendar.calendars.read", "calendar.events.read", "iwork.pages.read", "location.current",
                                            "maps.directions", "music.playback"}));
    policy.setEnabled(Capability::directions, false);
    policy.setEnabled(Capability::directions, false);
    EXPECT_FALSE(policy.isEnabled(Capability::directions));
    EXPECT_TRUE(policy.isEnabled(Capability::musicPlayback));
}

TEST(CapabilityPolicy, WholeGroupChangesAtOnceAndAlone) {
    MemoryUserDefaults defaults;
    BridgeCapabilityPolicy policy(defaults);
    policy.setEnabled(Capability::contactsRead, true);
    const int before = defaults.timesSet();
    policy.setGroupEnabled(BridgeCapabilityGroup::files, true);
    EXPECT_EQ(defaults.timesSet(), before + 1);
    EXPECT_EQ(policy.enabledCapabilities().size(), 6u);
    policy.setGroupEnabled(BridgeCapabilityGroup::files, false);
    EXPECT_EQ(defaults.timesSet(), before + 2);
    EXPECT_THAT(policy.enabledCapabilities(), ElementsAre(Capability::contactsRead));
}

TEST(CapabilityPolicy, ReportsTheStateOfEveryCapability) {
    MemoryUserDefaults defaults;
    BridgeCapabilityPolicy policy(defaults);
    policy.setEnabled(Capability::filesRead, true);
    const auto states = policy.capabilityStates();
    EXPECT_EQ(states.size(), capabilityCount);
    EXPECT_TRUE(states.at("files.read"));
    EXPECT_FALSE(states.at("files.list"));
}

TEST(CapabilityPolicy, ListsByGroupAndSectionInCatalogueOrder) {
    EXPECT_THAT(capabilitiesInGroup(BridgeCapabilityGroup::keynote), ElementsAre(Capability::keynoteCreate, Capability::keynoteExport));
    EXPECT_THAT(capabilitiesInSection(BridgeCapabilitySection::fileAccess), ElementsAre(Capability::filesList, Capability::filesRead));
}

} // namespace
} // namespace bridge
