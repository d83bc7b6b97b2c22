#include "tests/bridges/location/location_bridge_test.h"

#include <cmath>
#include <limits>

namespace bridge {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DirectionsTest : public LocationBridgeTest {
protected:
    std::string refusal(DirectionsRequest request) { return failureOf(bridge->directions(std::move(request))); }
    TransportType transportOf(std::string name) {
        EXPECT_EQ(refusal({52.52, 13.405, 52.5, 13.4, name}), "") << name;
        return mapDirections.queries.back().transport;
    }

    const std::string wrongCoordinates = malformed("Coordinates must use latitude -90...90 and longitude -180...180.");
    const std::string wrongTransport = malformed("Transport must be automobile, walking, transit, or cycling.");
};

TEST_F(DirectionsTest, AreEveryRouteInThePlatformsOrder) {
    mapDirections.routes = {{"Main Street", 1200.5, 300, {"Go north.", "", "Arrive.", ""}}, {"", 1500, 290.25, {}}};
    auto asked = started(bridge->directions({52.52, 13.405, 52.5, 13.4, "walking"}));
    EXPECT_THAT(asked.take(), ElementsAre(RouteDescriptor{"Main Street", 1200.5, 300, {"Go north.", "Arrive."}},
                                          RouteDescriptor{"", 1500, 290.25, {}}));
}

TEST_F(DirectionsTest, AskFromOriginToDestinationWithAlternates) {
    refusal({52.52, 13.405, -33.86, 151.21, "transit"});
    ASSERT_EQ(mapDirections.queries.size(), 1u);
    const auto& query = mapDirections.queries[0];
    EXPECT_EQ(query.source, (MapCoordinate{52.52, 13.405}));
    EXPECT_EQ(query.destination, (MapCoordinate{-33.86, 151.21}));
    EXPECT_EQ(query.transport, TransportType::transit);
    EXPECT_EQ(query.alternates, AlternateRoutes::yes);
}

TEST_F(DirectionsTest, KnowFourKindsOfTransportInAnyCase) {
    EXPECT_EQ(transportOf("walking"), TransportType::walking);
    EXPECT_EQ(transportOf("Walking"), TransportType::walking);
    EXPECT_EQ(transportOf("transit"), TransportType::transit);
    EXPECT_EQ(transportOf("cycling"), TransportType::cycling);
    EXPECT_EQ(transportOf("CYCLING"), TransportType::cycling);
    EXPECT_EQ(transportOf("automobile"), TransportType::automobile);
    EXPECT_EQ(transportOf("aUTOMOBILE"), TransportType::automobile);
}

TEST_F(DirectionsTest, RefuseAnyOther) {
    for (const auto* name : {"bike", "", "walk", "walking ", " cycling", "automobiles", "wälking"})
        EXPECT_EQ(refusal({52.52, 13.405, 52.5, 13.4, name}), wrongTransport) << name;
    EXPECT_THAT(mapDirections.queries, IsEmpty());
}

TEST_F(DirectionsTest, RefuseAPointThatIsNotOnEarth) {
    for (const double wrong : {90.0001, -90.0001, std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(refusal({wrong, 0, 0, 0, "walking"}), wrongCoordinates) << wrong;
        EXPECT_EQ(refusal({0, 0, wrong, 0, "walking"}), wrongCoordinates) << wrong;
        EXPECT_EQ(refusal({0, wrong * 2, 0, 0, "walking"}), wrongCoordinates) << wrong;
        EXPECT_EQ(refusal({0, 0, 0, wrong * 2, "walking"}), wrongCoordinates) << wrong;
    }
    // Before the transport is looked at.
    EXPECT_EQ(refusal({91, 0, 0, 0, "bike"}), wrongCoordinates);
    EXPECT_THAT(mapDirections.queries, IsEmpty());
    EXPECT_EQ(refusal({90, -180, -90, 180, "walking"}), "");
}

TEST_F(DirectionsTest, FailAsThePlatformSays) {
    mapDirections.failure = "There is no way.";
    EXPECT_EQ(refusal({52.52, 13.405, 52.5, 13.4, "walking"}), "Platform: There is no way.");
}

TEST_F(DirectionsTest, NobodyWaitsForAreGivenUp) {
    mapDirections.waits = true;
    { auto dropped = started(bridge->directions({52.52, 13.405, 52.5, 13.4, "walking"})); }
    EXPECT_EQ(mapDirections.answered.withdrawn(), 1);
}

} // namespace
} // namespace bridge
