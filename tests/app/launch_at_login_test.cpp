#include "tests/app/installation.h"

namespace bridge {
namespace {

using Status = LoginItemStatus;

class LaunchAtLogin : public InstallationTest {
protected:
    LaunchAtLogin() { run->start(); }

    // As the model would have found it.
    void become(Status status) {
        state() = {};
        state().status = status;
        run->loop.runUntilDone(model().refresh());
    }
    MemoryLoginItem::State& state() { return run->loginItem.state(); }
    // Enabled, requires approval, unavailable.
    std::vector<bool> flags() {
        return {model().launchAtLoginEnabled.get(), model().launchAtLoginRequiresApproval.get(),
                model().launchAtLoginUnavailable.get()};
    }
    std::optional<std::string> lastError() { return model().lastError.get(); }

    const std::vector<bool> none{false, false, false}, enabled{true, false, false},
        requiresApproval{false, true, false}, unavailable{false, false, true};
};

TEST_F(LaunchAtLogin, IsShownAsItIs) {
    EXPECT_EQ(flags(), none);
    become(Status::enabled);
    EXPECT_EQ(flags(), enabled);
    become(Status::requiresApproval);
    EXPECT_EQ(flags(), requiresApproval);
    become(Status::notFound);
    EXPECT_EQ(flags(), unavailable);
    become(Status::notRegistered);
    EXPECT_EQ(flags(), none);
}

TEST_F(LaunchAtLogin, IsTurnedOnAndOff) {
    model().setLaunchAtLogin(true);
    EXPECT_EQ(flags(), enabled);
    model().setLaunchAtLogin(false);
    EXPECT_EQ(flags(), none);
    EXPECT_EQ(state().registrations, 1);
    EXPECT_EQ(state().removals, 1);
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(LaunchAtLogin, ThatIsOnIsNotRegisteredAgain) {
    become(Status::enabled);
    model().setLaunchAtLogin(true);
    EXPECT_EQ(state().registrations, 0);
    EXPECT_EQ(flags(), enabled);
}

TEST_F(LaunchAtLogin, ThatIsOffIsLeftAloneAndSoIsTheLastError) {
    run->privacySettings.fails = true;
    model().openPrivacySettings();
    model().setLaunchAtLogin(false);
    EXPECT_EQ(state().removals, 0);
    EXPECT_EQ(lastError(), "There is no such page here.");
    EXPECT_EQ(flags(), none);
}

TEST_F(LaunchAtLogin, ThatWaitsForApprovalOpensTheSettingsAndDoesNotRegister) {
    become(Status::requiresApproval);
    model().setLaunchAtLogin(true);
    EXPECT_EQ(state().pages, 1);
    EXPECT_EQ(state().registrations, 0);
    EXPECT_EQ(flags(), requiresApproval);
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(LaunchAtLogin, ThatWaitsForApprovalCanBeTurnedOff) {
    become(Status::requiresApproval);
    model().setLaunchAtLogin(false);
    EXPECT_EQ(state().removals, 1);
    EXPECT_EQ(flags(), none);
}

TEST_F(LaunchAtLogin, SaysWhenThereIsNowhereToApprove) {
    become(Status::requiresApproval);
    state().hasPage = false;
    model().setLaunchAtLogin(true);
    EXPECT_EQ(lastError(), "Could not update Launch at Login: There is no page for login items.");
    EXPECT_EQ(flags(), requiresApproval);
}

TEST_F(LaunchAtLogin, SaysWhenItCanNotBeChanged) {
    state().refusesChanges = true;
    model().setLaunchAtLogin(true);
    EXPECT_EQ(lastError(), "Could not update Launch at Login: The login items can't be changed.");
    EXPECT_EQ(flags(), none);
    become(Status::enabled);
    EXPECT_EQ(lastError(), std::nullopt);
    state().refusesChanges = true;
    model().setLaunchAtLogin(false);
    EXPECT_EQ(lastError(), "Could not update Launch at Login: The login items can't be changed.");
    EXPECT_EQ(flags(), enabled);
}

TEST_F(LaunchAtLogin, ThatCanNotBeUsedSaysSo) {
    become(Status::notFound);
    model().setLaunchAtLogin(true);
    EXPECT_EQ(lastError(), "Could not update Launch at Login: The login items can't be changed.");
    EXPECT_EQ(flags(), unavailable);
}

TEST_F(LaunchAtLogin, FollowsWhatTheUserDidElsewhere) {
    model().setLaunchAtLogin(true);
    state().status = Status::requiresApproval;
    EXPECT_EQ(flags(), enabled);
    // Also without a look at it before.
    model().setLaunchAtLogin(true);
    EXPECT_EQ(flags(), requiresApproval);
    EXPECT_EQ(state().pages, 1);
}

TEST_F(LaunchAtLogin, IsNothingForABridgeInAProfileOfItsOwn) {
    EventLoop loop;
    const auto platform = openEmbeddedPlatform(loop, folder.file("another profile"));
    EXPECT_EQ(platform.loginItem->status(), Status::notFound);
    EXPECT_THROW(platform.loginItem->registerItem(), PlatformError);
    EXPECT_THROW(platform.loginItem->openLoginItemsSettings(), PlatformError);
    EXPECT_THROW(platform.privacySettings->open(), PlatformError);
    platform.loginItem->unregisterItem();
}

} // namespace
} // namespace bridge
