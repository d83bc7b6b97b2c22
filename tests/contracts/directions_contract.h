#pragma once

// The tests of the contract stand here: one file of a program includes this and names its adapters.

#include "base/event_loop.h"
#include "base/platform_error.h"
#include "platform/directions.h"

#include <cmath>
#include <functional>
#include <gmock/gmock.h>
#include <memory>

namespace bridge {

// A service for directions, with a map on which the places of PlacesOnTheMap are.
class DirectionsUnderTest {
public:
    virtual ~DirectionsUnderTest() = default;

    // What this machine lacks for it; "" when nothing.
    virtual std::string hindrance() const { return {}; }
    virtual EventLoop& loop() = 0;
    virtual Directions& directions() = 0;
    // Called before each query.
    virtual void expect(const DirectionsQuery&) {}
    virtual void breakDown() = 0;
    virtual void repair() = 0;
};

struct DirectionsKind {
    std::string name;
    std::function<std::unique_ptr<DirectionsUnderTest>()> make;
};

inline void PrintTo(const DirectionsKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<DirectionsKind>& info) {
    return info.param.name;
}

// Nine kilometres of the valley of the Rhine in Liechtenstein, and what lies beyond.
namespace places {
constexpr MapCoordinate vaduz{47.141, 9.5215};
constexpr MapCoordinate balzers{47.0667, 9.502};
constexpr MapCoordinate sea{44, 8.5};
constexpr MapCoordinate sydney{-33.9, 151.2};
constexpr double beeline = 8390; // metres from Vaduz to Balzers
} // namespace places

class DirectionsContract : public testing::TestWithParam<DirectionsKind> {
protected:
    void SetUp() override { ASSERT_EQ(its->hindrance(), ""); }

    static DirectionsQuery query(TransportType transport, AlternateRoutes alternates = AlternateRoutes::yes) {
        return {places::vaduz, places::balzers, transport, alternates};
    }
    std::vector<Route> calculate(DirectionsQuery query) {
        its->expect(query);
        return its->loop().runUntilDone(its->directions().calculate(query));
    }
    std::string failure(DirectionsQuery query) {
        try {
            calculate(query);
            return "";
        } catch (const PlatformError& error) {
            return error.what();
        }
    }
    // Of every route from Vaduz to Balzers: metres, and kilometres an hour.
    void expectPlausible(TransportType transport, double longest, double slowest, double fastest) {
        const auto routes = calculate(query(transport));
        ASSERT_FALSE(routes.empty());
        for (const auto& route : routes) {
            EXPECT_GE(route.distance, places::beeline);
            EXPECT_LE(route.distance, longest);
            const double speed = route.distance / route.expectedTravelTime * 3.6;
            EXPECT_GE(speed, slowest);
            EXPECT_LE(speed, fastest);
            EXPECT_GE(route.steps.size(), 2U);
            EXPECT_NE(route.name, "");
        }
    }

    std::unique_ptr<DirectionsUnderTest> its = GetParam().make();
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DirectionsContract);

TEST_P(DirectionsContract, ByCarAreMetresAndSecondsThatACarTakes) {
    expectPlausible(TransportType::automobile, 14000, 25, 90);
}

TEST_P(DirectionsContract, OnFootAreMetresAndSecondsThatAWalkerTakes) {
    expectPlausible(TransportType::walking, 14000, 3, 7);
}

TEST_P(DirectionsContract, ByBicycleAreMetresAndSecondsThatACyclistTakes) {
    expectPlausible(TransportType::cycling, 14000, 10, 30);
}

TEST_P(DirectionsContract, PreferredRouteComesFirst) {
    const auto routes = calculate(query(TransportType::automobile));
    const auto alone = calculate(query(TransportType::automobile, AlternateRoutes::no));
    ASSERT_EQ(alone.size(), 1U);
    EXPECT_EQ(routes.front(), alone.front());
}

TEST_P(DirectionsContract, AlternatesAreOtherRoutes) {
    const auto routes = calculate(query(TransportType::walking));
    ASSERT_GE(routes.size(), 2U);
    for (size_t index = 1; index < routes.size(); ++index)
        EXPECT_FALSE(routes[index] == routes[0]);
}

TEST_P(DirectionsContract, StepsAreSentencesForThePeopleOnTheWay) {
    const auto steps = calculate(query(TransportType::walking)).front().steps;
    for (const auto& step : steps)
        EXPECT_THAT(step, testing::AnyOf("", testing::HasSubstr(" ")));
}

TEST_P(DirectionsContract, FromAPlaceToItselfAreNoWayAtAll) {
    const auto routes = calculate({places::vaduz, places::vaduz, TransportType::automobile, AlternateRoutes::yes});
    ASSERT_FALSE(routes.empty());
    EXPECT_LE(routes.front().distance, 10);
    EXPECT_LE(routes.front().expectedTravelTime, 10);
}

TEST_P(DirectionsContract, FailWhereThereIsNoWay) {
    EXPECT_NE(failure({places::vaduz, places::sea, TransportType::automobile, AlternateRoutes::yes}), "");
    EXPECT_NE(failure({places::vaduz, places::sydney, TransportType::walking, AlternateRoutes::yes}), "");
}

TEST_P(DirectionsContract, FailWhenTheServiceIsGoneAndAnswerWhenItIsBack) {
    EXPECT_EQ(failure(query(TransportType::cycling)), "");
    its->breakDown();
    EXPECT_NE(failure(query(TransportType::cycling)), "");
    its->repair();
    EXPECT_EQ(failure(query(TransportType::cycling)), "");
}

TEST_P(DirectionsContract, AreAbandonedWithTheirTask) {
    const auto asked = query(TransportType::automobile);
    its->expect(asked);
    {
        auto dropped = its->directions().calculate(asked);
        dropped.start();
        EXPECT_FALSE(dropped.done());
    }
    EXPECT_EQ(failure(asked), "");
}

TEST_P(DirectionsContract, MayBeAskedForSeveralTimesAtOnce) {
    const auto asked = query(TransportType::automobile);
    its->expect(asked);
    auto first = its->directions().calculate(asked);
    auto second = its->directions().calculate(asked);
    first.start();
    second.start();
    while (!first.done() || !second.done())
        its->loop().waitOnce();
    EXPECT_EQ(first.take(), second.take());
}

TEST_P(DirectionsContract, SayWhoseTheyAre) {
    EXPECT_NE(its->directions().description(), "");
}

} // namespace bridge
