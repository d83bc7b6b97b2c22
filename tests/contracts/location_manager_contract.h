#pragma once

// The tests of the contract stand here: one file of a program includes this and names its adapters.

#include "base/event_loop.h"
#include "tests/fakes/recording_location_delegate.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace bridge {

// What the contract needs of one adapter. What is set here before start() holds for the manager's life.
struct LocationManagerSite {
    virtual ~LocationManagerSite() = default;

    // Why the adapter can't run on this machine; its tests are then skipped.
    virtual std::string hindrance() const { return {}; }

    std::optional<int> status = 3;
    enum class User { allows, refuses, cannotBeAsked } user = User::allows;
    std::optional<LocationFix> place; // nothing: the search for it fails

    virtual std::unique_ptr<LocationManager> start(EventLoop& loop) = 0;
    // Lets at least one thing happen.
    virtual void turn(EventLoop& loop) { loop.waitOnce(); }
};

struct LocationManagerKind {
    std::string name;
    std::function<std::unique_ptr<LocationManagerSite>()> make;
};

inline void PrintTo(const LocationManagerKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<LocationManagerKind>& info) {
    return info.param.name;
}

class LocationManagerContract : public testing::TestWithParam<LocationManagerKind> {
protected:
    using User = LocationManagerSite::User;

    void SetUp() override {
        site = GetParam().make();
        if (const auto hindrance = site->hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
        site->place = here;
    }
    void start() {
        manager = site->start(loop);
        manager->setDelegate(&delegate);
    }
    void waitFor(size_t heard) {
        while (delegate.heard() < heard)
            site->turn(loop);
    }

    const LocationFix here{52.52, 13.405, 50, 0, {1786706921}};
    EventLoop loop;
    RecordingDelegate delegate;
    std::unique_ptr<LocationManagerSite> site;
    std::unique_ptr<LocationManager> manager; // goes first
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LocationManagerContract);

TEST_P(LocationManagerContract, SaysWhereThePlaceComesFrom) {
    start();
    EXPECT_NE(manager->description(), "");
}

TEST_P(LocationManagerContract, FindsThePlaceAndSaysSoLater) {
    start();
    manager->requestLocation();
    EXPECT_EQ(delegate.heard(), 0u);
    waitFor(1);
    ASSERT_EQ(delegate.fixes.size(), 1u);
    EXPECT_EQ(delegate.fixes[0].latitude, here.latitude);
    EXPECT_EQ(delegate.fixes[0].longitude, here.longitude);
    EXPECT_GT(delegate.fixes[0].horizontalAccuracy, 0);
    EXPECT_EQ(delegate.fixes[0].altitude, 0);
    EXPECT_GE(delegate.fixes[0].timestamp, here.timestamp);
}

TEST_P(LocationManagerContract, FindsThePlaceAgain) {
    start();
    for (size_t round = 1; round <= 3; ++round) {
        manager->requestLocation();
        waitFor(round);
        EXPECT_EQ(delegate.fixes.size(), round);
    }
}

TEST_P(LocationManagerContract, FindsThePlaceForWhoeverAsksAgainAtOnce) {
    start();
    delegate.then = [&] {
        if (delegate.heard() < 3) manager->requestLocation();
    };
    manager->requestLocation();
    waitFor(3);
    EXPECT_EQ(delegate.fixes.size(), 3u);
}

TEST_P(LocationManagerContract, SaysWhyThereIsNoPlace) {
    site->place = std::nullopt;
    start();
    manager->requestLocation();
    EXPECT_EQ(delegate.heard(), 0u);
    waitFor(1);
    ASSERT_EQ(delegate.failures.size(), 1u);
    EXPECT_NE(delegate.failures[0], "");
}

TEST_P(LocationManagerContract, ForgetsARequestWhenAskedAgain) {
    start();
    manager->requestLocation();
    manager->requestLocation();
    waitFor(1);
    // Whatever the first would have said comes before the answer to a third.
    manager->requestLocation();
    waitFor(2);
    EXPECT_EQ(delegate.heard(), 2u);
}

TEST_P(LocationManagerContract, SaysNothingOfARequestThatWasStopped) {
    start();
    manager->stopUpdatingLocation();
    manager->requestLocation();
    manager->stopUpdatingLocation();
    manager->requestLocation();
    waitFor(1);
    manager->requestLocation();
    waitFor(2);
    EXPECT_EQ(delegate.heard(), 2u);
    EXPECT_EQ(delegate.fixes.size(), 2u);
}

TEST_P(LocationManagerContract, DropsItsAnswersWithNobodyToTell) {
    start();
    manager->requestLocation();
    manager->requestWhenInUseAuthorization();
    manager->setDelegate(nullptr);
    for (int turns = 0; turns < 3; ++turns) {
        loop.post([] {});
        site->turn(loop);
    }
    EXPECT_EQ(delegate.heard(), 0u);
}

TEST_P(LocationManagerContract, CanGoWhileItLooks) {
    start();
    manager->requestLocation();
    manager->requestWhenInUseAuthorization();
    manager.reset();
    loop.post([] {});
    loop.waitOnce();
    EXPECT_EQ(delegate.heard(), 0u);
}

TEST_P(LocationManagerContract, HasTheStatusThatItIsGiven) {
    for (const std::optional<int>& status : {std::optional(0), std::optional(3), std::optional<int>()}) {
        site->status = status;
        start();
        EXPECT_EQ(manager->authorizationStatus(), status);
    }
}

TEST_P(LocationManagerContract, AsksTheUserAndSaysSoLater) {
    for (const auto& [user, status] : {std::pair(User::allows, 3), std::pair(User::refuses, 2)}) {
        site->status = 0;
        site->user = user;
        start();
        const auto before = delegate.heard();
        manager->requestWhenInUseAuthorization();
        EXPECT_EQ(delegate.heard(), before);
        waitFor(before + 1);
        EXPECT_EQ(manager->authorizationStatus(), status);
    }
    EXPECT_EQ(delegate.changes, 2u);
}

TEST_P(LocationManagerContract, SaysThatNobodyHasToBeAsked) {
    start();
    manager->requestWhenInUseAuthorization();
    waitFor(1);
    EXPECT_EQ(delegate.changes, 1u);
    EXPECT_EQ(manager->authorizationStatus(), 3);
}

TEST_P(LocationManagerContract, SaysWhyTheUserCannotBeAsked) {
    site->status = 0;
    site->user = User::cannotBeAsked;
    start();
    manager->requestWhenInUseAuthorization();
    EXPECT_EQ(delegate.heard(), 0u);
    waitFor(1);
    ASSERT_EQ(delegate.askFailures.size(), 1u);
    EXPECT_NE(delegate.askFailures[0], "");
    EXPECT_EQ(manager->authorizationStatus(), 0);
}

} // namespace bridge
