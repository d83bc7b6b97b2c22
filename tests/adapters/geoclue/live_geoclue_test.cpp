#include "adapters/geoclue/geoclue_source.h"
#include "tests/adapters/geoclue/private_geoclue.h"
#include "tests/adapters/geoclue/private_system_bus.h"
#include "tests/adapters/geoclue/satellite_receiver.h"
#include "tests/support/becomes_true.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using Us = PrivateGeoClue::Us;

// A minute of the receiver's sentences has four decimals.
constexpr double precision = 1e-6;

class LiveGeoClue : public testing::Test {
protected:
    void SetUp() override {
        if (const auto hindrance = PrivateGeoClue::hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    }
    void start(Us us = Us::allowed) {
        geoclue.start(us);
        source = loop.runUntilDone(GeoClueSource::open(loop, {}));
        ASSERT_TRUE(source);
    }
    void receiveAt(double latitude, double longitude) {
        receiver.emplace(geoclue.receiverSocket(), latitude, longitude);
    }
    LocationFix locate() { return loop.runUntilDone(source->locate()); }
    std::string failureOf(Task<LocationFix>& task) {
        while (!task.done())
            loop.waitOnce();
        try {
            task.take();
        } catch (const PlatformError& error) {
            return error.what();
        }
        return "";
    }
    void waitUntilInUse(bool inUse) {
        EXPECT_TRUE(becomesTrue([&] { return geoclue.isInUse() == inUse; }));
    }

    EventLoop loop;
    PrivateGeoClue geoclue;
    std::optional<SatelliteReceiver> receiver;
    std::unique_ptr<LocationSource> source;
};

TEST_F(LiveGeoClue, FindsThePlace) {
    start();
    geoclue.startAgent();
    receiveAt(-33.86, 151.21);
    const auto fix = locate();
    EXPECT_NEAR(fix.latitude, -33.86, precision);
    EXPECT_NEAR(fix.longitude, 151.21, precision);
    EXPECT_EQ(fix.altitude, 34.5);
    EXPECT_GE(fix.horizontalAccuracy, 0);
    EXPECT_LE(fix.horizontalAccuracy, 100);
    EXPECT_GT(fix.timestamp.secondsSince1970, 0);
    waitUntilInUse(false);
}

TEST_F(LiveGeoClue, FindsThePlaceAgainWhereItHasMovedTo) {
    start();
    geoclue.startAgent();
    receiveAt(52.52, 13.405);
    EXPECT_NEAR(locate().latitude, 52.52, precision);
    receiver->move(48.85, 2.35);
    // GeoClue may still have the place before in its hands.
    LocationFix fix;
    while (std::abs(fix.latitude - 48.85) > precision)
        fix = locate();
    EXPECT_NEAR(fix.longitude, 2.35, precision);
}

TEST_F(LiveGeoClue, WaitsForASourceUntilNobodyWaitsAnyMore) {
    start();
    geoclue.startAgent();
    {
        auto asked = source->locate();
        asked.start();
        waitUntilInUse(true);
        EXPECT_FALSE(asked.done());
    }
    waitUntilInUse(false);
}

TEST_F(LiveGeoClue, WaitsForAnAgent) {
    start();
    receiveAt(52.52, 13.405);
    auto asked = source->locate();
    asked.start();
    EXPECT_FALSE(asked.done());
    geoclue.startAgent();
    while (!asked.done())
        loop.waitOnce();
    EXPECT_NEAR(asked.take().latitude, 52.52, precision);
}

TEST_F(LiveGeoClue, IsFreeAfterOneThatWaitedForAnAgent) {
    start();
    receiveAt(52.52, 13.405);
    {
        auto dropped = source->locate();
        dropped.start();
    }
    geoclue.startAgent();
    EXPECT_NEAR(locate().latitude, 52.52, precision);
    waitUntilInUse(false);
}

TEST_F(LiveGeoClue, SaysWhereToAllowWhatIsNotAllowed) {
    start(Us::refused);
    geoclue.startAgent();
    receiveAt(52.52, 13.405);
    auto asked = source->locate();
    asked.start();
    EXPECT_THAT(failureOf(asked), testing::AllOf(testing::StartsWith("GeoClue does not let Brindlefox Apple Bridge"),
                                                 testing::HasSubstr("[brindlefox-apple-bridge]")));
}

TEST_F(LiveGeoClue, SaysWhenItIsKilledInTheMiddle) {
    start();
    geoclue.startAgent();
    auto asked = source->locate();
    asked.start();
    waitUntilInUse(true);
    geoclue.end();
    EXPECT_EQ(failureOf(asked), "GeoClue ended before it found the location. Try again.");
}

TEST_F(LiveGeoClue, FindsThePlaceAfterItWasKilled) {
    start();
    geoclue.end();
    geoclue.start(Us::allowed);
    geoclue.startAgent();
    receiveAt(52.52, 13.405);
    EXPECT_NEAR(locate().latitude, 52.52, precision);
}

} // namespace
} // namespace bridge
