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

// Also for the superuser, who may write everywhere.
void putFolderAt(const std::filesystem::path& file) {
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
}

TEST_F(Switches, HoldWhenTheyCanNotBeSavedAndSayThatTheyWontLast) {
    putFolderAt(folder / profile::defaults);
    model().setEnabled(BridgeCapability::filesRead, true);
    EXPECT_EQ(enabled(), std::set{BridgeCapability::filesRead});
    const auto said = model().lastError.get().value_or("");
    EXPECT_TRUE(said.starts_with("The settings could not be saved and hold only until the program ends.")) << said;
    EXPECT_FALSE(model().failedAction());
    run->loop.runUntilDone(model().refreshOnOpening());
    EXPECT_EQ(model().lastError.get(), said);
    run->loop.runUntilDone(model().refresh());
    EXPECT_EQ(model().lastError.get(), said);

    std::filesystem::remove(folder / profile::defaults);
    run->loop.runUntilDone(model().refresh());
    EXPECT_EQ(model().lastError.get(), std::nullopt);
    restart();
    run->start();
    EXPECT_EQ(enabled(), std::set{BridgeCapability::filesRead});
}

TEST_F(Switches, OfCalendarsSayWhenTheyWontLast) {
    run->consent.setStatus(PrivacyService::calendar, 3);
    run->loop.runUntilDone(model().refresh());
    putFolderAt(folder / profile::defaults);
    run->loop.runUntilDone(model().setAllCalendars(true));
    EXPECT_FALSE(model().allowedCalendarIDs.get().empty());
    EXPECT_TRUE(model().lastError.get());
    std::filesystem::remove(folder / profile::defaults);
    run->loop.runUntilDone(model().setAllCalendars(false));
    EXPECT_EQ(model().lastError.get(), std::nullopt);
    EXPECT_EQ(storedDefaults().at("appleBridge.allowedCalendarIDs"), parseJSON("[]"));
}

TEST_F(Switches, SayAtTheStartThatNothingCanBeSaved) {
    EventLoop loop;
    auto platform = openEmbeddedPlatform(loop, folder.file("elsewhere/profile"));
    std::filesystem::create_directories(folder / "elsewhere/profile/defaults.json");
    BridgeCapabilityPolicy policy(*platform.defaults);
    const BridgeModel other(loop, platform, policy);
    EXPECT_TRUE(other.lastError.get());
}

TEST_F(Switches, EveryGroupSaysWhatServesIt) {
    EXPECT_EQ(model().servedBy(Group::calendar), calendars.description());
    EXPECT_EQ(model().servedBy(Group::reminders), calendars.description());
    EXPECT_EQ(model().servedBy(Group::contacts), run->platform.contactStore->description());
    for (const auto group : {Group::music, Group::pages})
        EXPECT_FALSE(model().servedBy(group).empty());
    const auto& platform = run->platform;
    EXPECT_EQ(model().servedBy(Group::locationMaps), "Location: nowhere, and " + folder.file(profile::services) +
                                                         " says none. Places: " + platform.localSearch->description() +
                                                         ". Directions: " + platform.directions->description() + ".");
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
