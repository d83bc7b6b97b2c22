#include "tests/bridges/location/location_bridge_test.h"

namespace bridge {
namespace {

using namespace std::chrono_literals;

class CurrentLocation : public LocationBridgeTest {
protected:
    Task<LocationDescriptor> request() { return started(bridge->currentLocation()); }

    const std::string replaced = operationFailed("A newer location request replaced this one.");
    const std::string timedOut = operationFailed("Location did not respond within 15 seconds.");
};

TEST_F(CurrentLocation, IsTheFixThatTheManagerFinds) {
    auto asked = request();
    EXPECT_FALSE(asked.done());
    EXPECT_EQ(manager.locationRequests, 1);
    manager.update({here});
    EXPECT_EQ(asked.take(), (LocationDescriptor{52.52, 13.405, 12.5, 34, {1786706921}}));
    EXPECT_EQ(alarms.waiting(), 0u);
}

TEST_F(CurrentLocation, IsTheLastOfSeveralFixes) {
    auto asked = request();
    manager.update({there, here});
    EXPECT_EQ(asked.take().latitude, here.latitude);
}

TEST_F(CurrentLocation, GoesOnWaitingWhenThereIsNoFixAmongThem) {
    auto asked = request();
    manager.update({});
    EXPECT_FALSE(asked.done());
    EXPECT_EQ(alarms.waiting(), 1u);
    manager.update({here});
    EXPECT_TRUE(asked.done());
}

TEST_F(CurrentLocation, NeedsToBeAllowedAlwaysAndAsksNobody) {
    for (const std::optional<int>& status : {std::optional(0), std::optional(1), std::optional(2), std::optional(4),
                                             std::optional(5), std::optional(-1), std::optional<int>()}) {
        manager.status = status;
        EXPECT_EQ(failureOf(bridge->currentLocation()), "Full access to Location has not been granted.");
    }
    EXPECT_EQ(manager.locationRequests, 0);
    EXPECT_EQ(manager.accessRequests, 0);
}

TEST_F(CurrentLocation, OfADeniedRequestLeavesTheWaitingOneAlone) {
    auto asked = request();
    manager.status = 2;
    EXPECT_EQ(failureOf(bridge->currentLocation()), "Full access to Location has not been granted.");
    EXPECT_FALSE(asked.done());
    manager.update({here});
    EXPECT_EQ(failureOf(asked), "");
}

TEST_F(CurrentLocation, FailsAfterFifteenSecondsAndNotBefore) {
    auto asked = request();
    alarms.advance(14'999ms);
    EXPECT_FALSE(asked.done());
    EXPECT_TRUE(manager.isLooking);
    alarms.advance(1ms);
    EXPECT_EQ(failureOf(asked), timedOut);
    EXPECT_FALSE(manager.isLooking);
}

TEST_F(CurrentLocation, OfAFixAfterTheTimeOutIsIgnored) {
    auto asked = request();
    alarms.advance(15s);
    manager.update({here});
    EXPECT_EQ(failureOf(asked), timedOut);
    auto next = request();
    manager.update({there});
    EXPECT_EQ(next.take().latitude, there.latitude);
}

TEST_F(CurrentLocation, OfAFixThatNobodyAskedForIsDropped) {
    manager.update({here});
    manager.fail("There is no signal.");
    auto asked = request();
    EXPECT_FALSE(asked.done());
    manager.update({there});
    EXPECT_EQ(asked.take().latitude, there.latitude);
}

TEST_F(CurrentLocation, OfTwoRequestsGoesToTheSecond) {
    auto first = request();
    auto second = request();
    EXPECT_EQ(failureOf(first), replaced);
    EXPECT_FALSE(second.done());
    EXPECT_EQ(manager.locationRequests, 2);
    manager.update({here});
    EXPECT_EQ(second.take().latitude, here.latitude);
}

TEST_F(CurrentLocation, HasFifteenSecondsForEachRequest) {
    auto first = request();
    alarms.advance(10s);
    auto second = request();
    EXPECT_EQ(alarms.waiting(), 1u);
    alarms.advance(14s);
    EXPECT_FALSE(second.done());
    alarms.advance(1s);
    EXPECT_EQ(failureOf(second), timedOut);
    EXPECT_EQ(failureOf(first), replaced);
}

TEST_F(CurrentLocation, IsNotFailedByTheLateAlarmOfAReplacedRequest) {
    alarms.ringsSilenced = true;
    auto first = request();
    alarms.advance(10s);
    auto second = request();
    alarms.advance(10s);
    EXPECT_FALSE(second.done());
    EXPECT_TRUE(manager.isLooking);
    manager.update({here});
    EXPECT_EQ(failureOf(second), "");
}

TEST_F(CurrentLocation, IsNotFailedByTheLateAlarmOfAnAnsweredRequest) {
    alarms.ringsSilenced = true;
    auto first = request();
    alarms.advance(10s);
    manager.update({here});
    auto second = request();
    alarms.advance(10s);
    EXPECT_FALSE(second.done());
    alarms.advance(5s);
    EXPECT_EQ(failureOf(second), timedOut);
}

TEST_F(CurrentLocation, FailsAsTheManagerSays) {
    auto asked = request();
    manager.fail("There is no signal.");
    EXPECT_EQ(failureOf(asked), "Platform: There is no signal.");
    EXPECT_EQ(alarms.waiting(), 0u);
}

TEST_F(CurrentLocation, OfADroppedRequestIsNoLongerLookedFor) {
    { auto dropped = request(); }
    EXPECT_FALSE(manager.isLooking);
    EXPECT_EQ(alarms.waiting(), 0u);
    manager.update({here});
    auto next = request();
    EXPECT_FALSE(next.done());
    manager.update({there});
    EXPECT_EQ(next.take().latitude, there.latitude);
}

TEST_F(CurrentLocation, OfANewerRequestSurvivesTheOlderOneBeingDropped) {
    std::optional first(request());
    auto second = request();
    first.reset();
    EXPECT_TRUE(manager.isLooking);
    EXPECT_EQ(alarms.waiting(), 1u);
    manager.update({here});
    EXPECT_EQ(failureOf(second), "");
}

TEST_F(CurrentLocation, OfARequestThatNobodyBeganAsksForNothing) {
    { const auto never = bridge->currentLocation(); }
    EXPECT_EQ(manager.locationRequests, 0);
}

TEST_F(CurrentLocation, CanBeDroppedAfterTheBridge) {
    std::optional asked(request());
    bridge.reset();
    EXPECT_FALSE(manager.hasDelegate());
    EXPECT_FALSE(manager.isLooking);
    EXPECT_FALSE(asked->done());
    asked.reset();
}

TEST_F(CurrentLocation, WithoutABridgeIsNotTimedOut) {
    alarms.ringsSilenced = true;
    auto asked = request();
    bridge.reset();
    alarms.advance(15s);
    EXPECT_FALSE(asked.done());
}

// Asks again as soon as it has failed, from inside whatever made it fail.
Task<LocationDescriptor> askedAgain(LocationDataBridge& bridge) {
    try {
        auto first = bridge.currentLocation();
        auto location = co_await std::move(first);
        co_return location;
    } catch (const AppleBridgeError&) {
    }
    auto second = bridge.currentLocation();
    auto location = co_await std::move(second);
    co_return location;
}

TEST_F(CurrentLocation, GoesToWhoeverAskedLastAlsoFromInsideAFailure) {
    auto persistent = started(askedAgain(*bridge));
    auto second = request();
    EXPECT_EQ(failureOf(second), replaced);
    EXPECT_FALSE(persistent.done());
    EXPECT_EQ(alarms.waiting(), 1u);
    manager.update({here});
    EXPECT_EQ(persistent.take().latitude, here.latitude);
}

TEST_F(CurrentLocation, CanBeAskedForAgainFromInsideATimeOut) {
    auto persistent = started(askedAgain(*bridge));
    alarms.advance(15s);
    EXPECT_FALSE(persistent.done());
    EXPECT_TRUE(manager.isLooking);
    alarms.advance(15s);
    EXPECT_EQ(failureOf(persistent), timedOut);
}

} // namespace
} // namespace bridge
