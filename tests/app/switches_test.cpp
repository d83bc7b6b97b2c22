#include "tests/app/installation.h"

namespace bridge {
namespace {

using Group = BridgeCapabilityGroup;

class Switches : public InstallationTest {
protected:
    Switches() { run->start(); }
    const std::set<BridgeCapability>& enabled() { return model().enabledCapabilities.get(); }
};

TEST_F(Switches, AreShownAndKeptAtOnce) {
    model().setEnabled(BridgeCapability::filesRead, true);
    EXPECT_EQ(enabled(), std::set{BridgeCapability::filesRead});
    EXPECT_TRUE(run->policy.isEnabled(BridgeCapability::filesRead));
    EXPECT_EQ(storedDefaults().at("appleBridge.enabledCapabilities.v1"), parseJSON(R"(["files.read"])"));
    model().setEnabled(BridgeCapability::filesRead, false);
    EXPECT_TRUE(enabled().empty());
    EXPECT_EQ(storedDefaults().at("appleBridge.enabledCapabilities.v1"), parseJSON("[]"));
}

TEST_F(Switches, OfAGroupAreOneChange) {
    model().setEnabled(BridgeCapability::directions, true);
    std::vector<size_t> counts;
    const auto watch = model().enabledCapabilities.observe(
        [&](const std::set<BridgeCapability>& now) { counts.push_back(now.size()); });
    model().setGroupEnabled(Group::music, true);
    model().setGroupEnabled(Group::music, true);
    model().setGroupEnabled(Group::music, false);
    EXPECT_EQ(counts, (std::vector<size_t>{7, 1}));
    EXPECT_EQ(enabled(), std::set{BridgeCapability::directions});
}

TEST_F(Switches, LeaveTheLastErrorAlone) {
    run->privacySettings.fails = true;
    model().openPrivacySettings();
    model().setEnabled(BridgeCapability::filesRead, true);
    EXPECT_EQ(model().lastError.get(), "There is no such page here.");
}

TEST_F(Switches, EveryGroupSaysWhatServesIt) {
    EXPECT_EQ(model().servedBy(Group::calendar), calendars.description());
    EXPECT_EQ(model().servedBy(Group::reminders), calendars.description());
    EXPECT_EQ(model().servedBy(Group::contacts), run->platform.contactStore->description());
    for (const auto group : {Group::music, Group::pages})
        EXPECT_FALSE(model().servedBy(group).empty());
    EXPECT_EQ(model().servedBy(Group::pages), model().servedBy(Group::numbers));
    EXPECT_EQ(model().servedBy(Group::pages), model().servedBy(Group::keynote));
}

TEST_F(Switches, AServiceThatIsInstalledMeanwhileShowsAtTheNextRefresh) {
    std::string present = "LibreOffice is not installed.";
    run->platform.services[Group::pages] = [&present] { return present; };
    run->loop.runUntilDone(model().refresh());
    EXPECT_EQ(model().servedBy(Group::pages), "LibreOffice is not installed.");
    present = "LibreOffice";
    EXPECT_EQ(model().servedBy(Group::pages), "LibreOffice is not installed.");
    int changes = 0;
    const auto watch = model().services.observe([&](const auto&) { ++changes; });
    run->loop.runUntilDone(model().refresh());
    run->loop.runUntilDone(model().refresh());
    EXPECT_EQ(model().servedBy(Group::pages), "LibreOffice");
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace bridge
