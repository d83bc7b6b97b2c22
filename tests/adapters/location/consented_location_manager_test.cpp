#include "adapters/location/consented_location_manager.h"

#include "adapters/jsonfile/consent_file.h"
#include "tests/fakes/recording_location_delegate.h"
#include "tests/fakes/scripted_consent_prompt.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

// Finds the place when the test opens the gate.
class GatedSource : public LocationSource {
public:
    Gate found;
    int searches = 0;
    Task<LocationFix> locate() override {
        ++searches;
        co_await found.opened();
        co_return LocationFix{1, 2, 3, 4, {5}};
    }
    std::string description() const override { return "behind a gate"; }
};

class ConsentedLocationManagerTest : public testing::Test {
protected:
    ConsentedLocationManagerTest() {
        allow(3);
        manager->setDelegate(&delegate);
    }
    void allow(int status) { consent.setStatus(PrivacyService::location, status); }
    // Everything that was posted is done.
    void settle() {
        bool isSettled = false;
        loop.post([&] { isSettled = true; });
        while (!isSettled)
            loop.waitOnce();
    }

    TemporaryFolder folder;
    EventLoop loop;
    ScriptedConsentPrompt prompt;
    ConsentFile consent{folder.file("consent.json"), prompt};
    RecordingDelegate delegate;
    GatedSource* source = new GatedSource;
    std::optional<ConsentedLocationManager> manager{std::in_place, loop, consent,
                                                    std::unique_ptr<LocationSource>(source)};
};

TEST_F(ConsentedLocationManagerTest, LooksForNothingWithoutTheUsersConsent) {
    for (const int status : {0, 1, 2, 4}) {
        allow(status);
        manager->requestLocation();
        settle();
    }
    EXPECT_EQ(delegate.failures.size(), 4u);
    EXPECT_EQ(delegate.failures.at(0), "The user has not allowed Brindlefox Apple Bridge to know the location.");
    EXPECT_EQ(source->searches, 0);
}

TEST_F(ConsentedLocationManagerTest, StopsTheSearchOfAForgottenRequest) {
    manager->requestLocation();
    EXPECT_TRUE(source->found.isAwaited());
    manager->stopUpdatingLocation();
    EXPECT_EQ(source->found.withdrawn(), 1);
    manager->requestLocation();
    manager->requestLocation();
    EXPECT_EQ(source->found.withdrawn(), 2);
    manager.reset();
    settle();
    EXPECT_EQ(delegate.heard(), 0u);
}

TEST_F(ConsentedLocationManagerTest, SaysNothingOfAFixWhoseRequestIsForgottenMeanwhile) {
    manager->requestLocation();
    source->found.open();
    manager->stopUpdatingLocation();
    settle();
    EXPECT_EQ(delegate.heard(), 0u);
    manager->requestLocation();
    source->found.open();
    manager->requestLocation();
    settle();
    EXPECT_EQ(delegate.heard(), 0u);
    source->found.open();
    settle();
    EXPECT_EQ(delegate.fixes.size(), 1u);
}

TEST_F(ConsentedLocationManagerTest, SaysNothingWhenItIsGoneBeforeItCouldSay) {
    manager->requestLocation();
    source->found.open();
    manager.reset();
    settle();
    EXPECT_EQ(delegate.heard(), 0u);
}

TEST_F(ConsentedLocationManagerTest, PutsOneQuestionAtATime) {
    allow(0);
    prompt.waits = true;
    manager->requestWhenInUseAuthorization();
    manager->requestWhenInUseAuthorization();
    settle();
    EXPECT_EQ(prompt.asked.size(), 1u);
    EXPECT_EQ(delegate.heard(), 0u);
    prompt.answered.open();
    settle();
    EXPECT_EQ(delegate.changes, 1u);
    EXPECT_EQ(manager->authorizationStatus(), 3);
}

TEST_F(ConsentedLocationManagerTest, TakesTheQuestionAwayWhenItGoes) {
    allow(0);
    prompt.waits = true;
    manager->requestWhenInUseAuthorization();
    manager.reset();
    EXPECT_EQ(prompt.answered.withdrawn(), 1);
}

} // namespace
} // namespace bridge
