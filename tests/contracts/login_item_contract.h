#pragma once

// The tests of the contract stand here: one file of a program includes this and names its adapters.

#include "platform/login_item.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace bridge {

// What the contract needs of one adapter.
struct LoginItemSite {
    virtual ~LoginItemSite() = default;

    // The item as a new run of the program would see it, of one program each time.
    virtual std::unique_ptr<LoginItem> start() = 0;

    // What the user does elsewhere.
    virtual void switchOffElsewhere() = 0;
    virtual void switchOnElsewhere() = 0;
    // Does it while nothing can be changed. False when this machine can't be made to do so.
    virtual bool whileNothingCanBeChanged(std::function<void()> action) = 0;
    // The platform has no such service, as if it never had.
    virtual void loseService() = 0;
    // Waits until the page that was opened is there to be seen.
    virtual bool showedSettings() = 0;
    virtual void losePage() = 0;
};

struct LoginItemKind {
    std::string name;
    std::function<std::unique_ptr<LoginItemSite>()> make;
};

inline void PrintTo(const LoginItemKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<LoginItemKind>& info) {
    return info.param.name;
}

class LoginItemContract : public testing::TestWithParam<LoginItemKind> {
protected:
    using Status = LoginItemStatus;

    // As a running program sees it, and one that is started now.
    void expect(LoginItemStatus status) {
        EXPECT_EQ(item->status(), status);
        EXPECT_EQ(site->start()->status(), status);
    }

    std::unique_ptr<LoginItemSite> site = GetParam().make();
    std::unique_ptr<LoginItem> item = site->start();
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LoginItemContract);

TEST_P(LoginItemContract, IsNotRegisteredAtFirst) {
    expect(Status::notRegistered);
}

TEST_P(LoginItemContract, IsEnabledOnceRegistered) {
    item->registerItem();
    expect(Status::enabled);
    item->registerItem();
    expect(Status::enabled);
}

TEST_P(LoginItemContract, IsNotRegisteredOnceUnregistered) {
    item->registerItem();
    item->unregisterItem();
    expect(Status::notRegistered);
    item->registerItem();
    expect(Status::enabled);
}

TEST_P(LoginItemContract, UnregisteringWhatIsNotRegisteredIsNoError) {
    item->unregisterItem();
    item->unregisterItem();
    expect(Status::notRegistered);
}

TEST_P(LoginItemContract, RequiresApprovalWhenTheUserSwitchedItOffElsewhere) {
    item->registerItem();
    site->switchOffElsewhere();
    expect(Status::requiresApproval);
    site->switchOnElsewhere();
    expect(Status::enabled);
}

TEST_P(LoginItemContract, DoesNotGoOverWhatTheUserDidElsewhere) {
    item->registerItem();
    site->switchOffElsewhere();
    EXPECT_THROW(item->registerItem(), PlatformError);
    expect(Status::requiresApproval);
}

TEST_P(LoginItemContract, IsForgottenAlsoWhenItWasSwitchedOffElsewhere) {
    item->registerItem();
    site->switchOffElsewhere();
    item->unregisterItem();
    expect(Status::notRegistered);
    item->registerItem();
    expect(Status::enabled);
}

TEST_P(LoginItemContract, AChangeThatFailsChangesNothing) {
    ASSERT_TRUE(site->whileNothingCanBeChanged([&] { EXPECT_THROW(item->registerItem(), PlatformError); }));
    expect(Status::notRegistered);
    item->registerItem();
    expect(Status::enabled);
}

TEST_P(LoginItemContract, ARemovalThatFailsChangesNothing) {
    item->registerItem();
    ASSERT_TRUE(site->whileNothingCanBeChanged([&] { EXPECT_THROW(item->unregisterItem(), PlatformError); }));
    expect(Status::enabled);
}

TEST_P(LoginItemContract, IsNotFoundWithoutTheService) {
    site->loseService();
    expect(Status::notFound);
    EXPECT_THROW(item->registerItem(), PlatformError);
    expect(Status::notFound);
}

TEST_P(LoginItemContract, ShowsWhereItIsSwitchedOn) {
    item->openLoginItemsSettings();
    EXPECT_TRUE(site->showedSettings());
}

TEST_P(LoginItemContract, SaysWhenThereIsNoSuchPlace) {
    site->losePage();
    EXPECT_THROW(item->openLoginItemsSettings(), PlatformError);
}

} // namespace bridge
