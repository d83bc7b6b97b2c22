#include "tests/bridges/location/location_bridge_test.h"

namespace bridge {
namespace {

using State = BridgePermissionState;

class LocationAccess : public LocationBridgeTest {
protected:
    LocationAccess() { manager.status = 0; }
    Task<State> request() { return started(bridge->requestLocationAccess()); }

    const std::string replaced = operationFailed("A newer location permission request replaced this one.");
};

TEST_F(LocationAccess, IsWhatTheManagersStatusMeans) {
    const std::pair<std::optional<int>, State> expected[] = {
        {0, State::notDetermined}, {1, State::restricted}, {2, State::denied},   {3, State::fullAccess},
        {4, State::unknown},       {5, State::unknown},    {-1, State::unknown}, {std::nullopt, State::unavailable}};
    for (const auto& [status, state] : expected) {
        manager.status = status;
        EXPECT_EQ(bridge->locationPermission(), state) << status.value_or(-100);
    }
}

TEST_F(LocationAccess, IsAskedForAndAnswersWithTheNewState) {
    for (const auto& [status, state] :
         {std::pair(3, State::fullAccess), std::pair(2, State::denied), std::pair(4, State::unknown)}) {
        manager.status = 0;
        auto asked = request();
        EXPECT_FALSE(asked.done());
        manager.changeStatus(status);
        EXPECT_EQ(asked.take(), state);
    }
    EXPECT_EQ(manager.accessRequests, 3);
}

TEST_F(LocationAccess, WaitsWhileTheUserHasNotDecided) {
    auto asked = request();
    manager.changeStatus(0);
    EXPECT_FALSE(asked.done());
    manager.changeStatus(3);
    EXPECT_EQ(asked.take(), State::fullAccess);
}

TEST_F(LocationAccess, WhereThereIsNoServiceIsUnavailable) {
    auto asked = request();
    manager.changeStatus(std::nullopt);
    EXPECT_EQ(asked.take(), State::unavailable);
}

TEST_F(LocationAccess, OfTwoRequestsGoesToTheSecond) {
    auto first = request();
    auto second = request();
    EXPECT_EQ(failureOf(first), replaced);
    EXPECT_FALSE(second.done());
    manager.changeStatus(3);
    EXPECT_EQ(second.take(), State::fullAccess);
}

TEST_F(LocationAccess, ThatChangesUnaskedIsNoAnswerToALaterRequest) {
    manager.changeStatus(3);
    auto asked = request();
    EXPECT_FALSE(asked.done());
    manager.changeStatus(3);
    EXPECT_TRUE(asked.done());
}

TEST_F(LocationAccess, FailsWhenTheUserCannotBeAsked) {
    auto asked = request();
    manager.failToAsk("There is nobody to ask.");
    EXPECT_EQ(failureOf(asked), "Platform: There is nobody to ask.");
    manager.failToAsk("There is nobody to ask.");
}

TEST_F(LocationAccess, AndALocationWaitForThemselves) {
    manager.status = 3;
    auto location = started(bridge->currentLocation());
    auto access = request();
    EXPECT_FALSE(location.done());
    manager.failToAsk("There is nobody to ask.");
    EXPECT_FALSE(location.done());
    EXPECT_EQ(failureOf(access), "Platform: There is nobody to ask.");
    auto again = request();
    manager.fail("There is no signal.");
    EXPECT_EQ(failureOf(location), "Platform: There is no signal.");
    EXPECT_FALSE(again.done());
    manager.changeStatus(3);
    EXPECT_EQ(again.take(), State::fullAccess);
}

TEST_F(LocationAccess, OfADroppedRequestIsNobodysAnyMore) {
    { auto dropped = request(); }
    manager.changeStatus(3);
    auto asked = request();
    EXPECT_FALSE(asked.done());
    manager.changeStatus(2);
    EXPECT_EQ(asked.take(), State::denied);
}

TEST_F(LocationAccess, OfANewerRequestSurvivesTheOlderOneBeingDropped) {
    std::optional first(request());
    auto second = request();
    first.reset();
    manager.changeStatus(3);
    EXPECT_EQ(second.take(), State::fullAccess);
}

TEST_F(LocationAccess, CanBeDroppedAfterTheBridge) {
    std::optional asked(request());
    bridge.reset();
    manager.changeStatus(3);
    EXPECT_FALSE(asked->done());
    asked.reset();
}

} // namespace
} // namespace bridge
