#include "tests/bridges/location/location_bridge_test.h"

#include "bridges/location/place_id.h"

#include <cmath>
#include <cstdlib>
#include <limits>

namespace bridge {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PlaceSearch : public LocationBridgeTest {
protected:
    std::vector<PlaceDescriptor> search(SearchPlacesRequest request) {
        return started(bridge->searchPlaces(std::move(request))).take();
    }
    std::string refusal(SearchPlacesRequest request) { return failureOf(bridge->searchPlaces(std::move(request))); }
    void findMany(int count) {
        for (int number = 1; number <= count; ++number) {
            MapItem item;
            item.name = std::to_string(number);
            localSearch.found.push_back(std::move(item));
        }
    }

    const std::string wrongCoordinates = malformed("Coordinates must use latitude -90...90 and longitude -180...180.");
    const std::string halfAPoint =
        malformed("Place search requires both latitude and longitude when either is supplied.");
    static constexpr double infinity = std::numeric_limits<double>::infinity();
};

TEST_F(PlaceSearch, DescribesWhatWasFoundInItsOrder) {
    localSearch.found = {
        {"Central Station", {52.52, 13.405}, "Europaplatz 1, Berlin", "+49 30 1234", "https://example.org/station"},
        {"Bus stop", {52.5, 13.4}, std::nullopt, std::nullopt, std::nullopt}};
    EXPECT_THAT(search({"station", std::nullopt, std::nullopt, 10}),
                ElementsAre(PlaceDescriptor{"52.52,13.405,Central Station", "Central Station", "Europaplatz 1, Berlin",
                                            52.52, 13.405, "+49 30 1234", URL{"https://example.org/station"}},
                            PlaceDescriptor{"52.5,13.4,Bus stop", "Bus stop", "", 52.5, 13.4}));
}

TEST_F(PlaceSearch, SearchesForTheTrimmedQueryWithoutARegion) {
    EXPECT_THAT(search({" \n\t Gare du  Nord \r\n", std::nullopt, std::nullopt, 10}), IsEmpty());
    ASSERT_EQ(localSearch.queries.size(), 1u);
    EXPECT_EQ(localSearch.queries[0].naturalLanguageQuery, "Gare du  Nord");
    EXPECT_FALSE(localSearch.queries[0].region);
}

TEST_F(PlaceSearch, NearAPointHasARegionOfFiftyKilometres) {
    search({"station", 48.85, 2.35, 10});
    ASSERT_EQ(localSearch.queries.size(), 1u);
    const auto& region = localSearch.queries[0].region;
    ASSERT_TRUE(region);
    EXPECT_EQ(region->center, (MapCoordinate{48.85, 2.35}));
    EXPECT_EQ(region->latitudinalMeters, 50'000);
    EXPECT_EQ(region->longitudinalMeters, 50'000);
}

TEST_F(PlaceSearch, NeedsAQuery) {
    for (const auto* query : {"", " ", "\n\r\t", "\u00a0\u2003\u2028"})
        EXPECT_EQ(refusal({query, std::nullopt, std::nullopt, 10}), malformed("Place search query cannot be empty."));
    // Of several faults this is told first.
    EXPECT_EQ(refusal({"", 91.0, std::nullopt, 10}), malformed("Place search query cannot be empty."));
    EXPECT_THAT(localSearch.queries, IsEmpty());
}

TEST_F(PlaceSearch, NeedsBothCoordinatesOrNone) {
    EXPECT_EQ(refusal({"station", 52.52, std::nullopt, 10}), halfAPoint);
    EXPECT_EQ(refusal({"station", std::nullopt, 13.405, 10}), halfAPoint);
    EXPECT_EQ(refusal({"station", 91.0, std::nullopt, 10}), halfAPoint);
    EXPECT_THAT(localSearch.queries, IsEmpty());
}

TEST_F(PlaceSearch, TakesTheEndsOfTheEarth) {
    for (const auto& [latitude, longitude] :
         {std::pair(90.0, -180.0), std::pair(-90.0, 180.0), std::pair(0.0, 0.0), std::pair(-0.0, -0.0)})
        EXPECT_EQ(refusal({"station", latitude, longitude, 10}), "") << latitude << " " << longitude;
}

TEST_F(PlaceSearch, RefusesAPointThatIsNotOnEarth) {
    for (const auto& [latitude, longitude] :
         {std::pair(90.0001, 0.0), std::pair(-90.0001, 0.0), std::pair(0.0, 180.0001), std::pair(0.0, -180.0001),
          std::pair(std::nan(""), 0.0), std::pair(0.0, std::nan("")), std::pair(infinity, 0.0),
          std::pair(0.0, -infinity), std::pair(std::nextafter(90.0, 91.0), 0.0)})
        EXPECT_EQ(refusal({"station", latitude, longitude, 10}), wrongCoordinates) << latitude << " " << longitude;
    EXPECT_THAT(localSearch.queries, IsEmpty());
}

TEST_F(PlaceSearch, AnswersOneToTwentyFivePlaces) {
    findMany(40);
    const auto count = [&](int64_t limit) { return search({"station", std::nullopt, std::nullopt, limit}).size(); };
    EXPECT_EQ(count(0), 1u);
    EXPECT_EQ(count(-5), 1u);
    EXPECT_EQ(count(std::numeric_limits<int64_t>::min()), 1u);
    EXPECT_EQ(count(1), 1u);
    EXPECT_EQ(count(24), 24u);
    EXPECT_EQ(count(25), 25u);
    EXPECT_EQ(count(26), 25u);
    EXPECT_EQ(count(100), 25u);
    EXPECT_EQ(count(std::numeric_limits<int64_t>::max()), 25u);
}

TEST_F(PlaceSearch, TakesTheMostRelevantOnes) {
    findMany(5);
    const auto found = search({"station", std::nullopt, std::nullopt, 2});
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].name, "1");
    EXPECT_EQ(found[1].name, "2");
}

TEST_F(PlaceSearch, CallsAPlaceWithoutANameUnknown) {
    localSearch.found = {{std::nullopt, {52.52, 13.405}, std::nullopt, std::nullopt, std::nullopt},
                         {"", {1.5, 2.5}, std::nullopt, std::nullopt, std::nullopt}};
    const auto found = search({"station", std::nullopt, std::nullopt, 10});
    EXPECT_EQ(found.at(0).name, "Unknown place");
    EXPECT_EQ(found.at(0).id, "52.52,13.405,");
    EXPECT_EQ(found.at(1).name, "");
    EXPECT_EQ(found.at(1).id, "1.5,2.5,");
}

TEST_F(PlaceSearch, LeavesOutAnAddressOnTheWebThatIsNone) {
    localSearch.found = {{"A", {}, std::nullopt, std::nullopt, "not an address"},
                         {"B", {}, std::nullopt, std::nullopt, ""}};
    for (const auto& place : search({"station", std::nullopt, std::nullopt, 10}))
        EXPECT_FALSE(place.url) << place.name;
}

TEST_F(PlaceSearch, FailsAsThePlatformSays) {
    localSearch.failure = "The map server does not answer.";
    EXPECT_EQ(refusal({"station", std::nullopt, std::nullopt, 10}), "Platform: The map server does not answer.");
}

TEST_F(PlaceSearch, NeedsNoPermission) {
    manager.status = 2;
    EXPECT_EQ(refusal({"station", std::nullopt, std::nullopt, 10}), "");
}

TEST_F(PlaceSearch, WaitsForNoOther) {
    localSearch.waits = true;
    auto first = started(bridge->searchPlaces({"one", std::nullopt, std::nullopt, 10}));
    EXPECT_FALSE(first.done());
    localSearch.waits = false;
    EXPECT_EQ(refusal({"two", std::nullopt, std::nullopt, 10}), "");
    localSearch.answered.open();
    EXPECT_EQ(failureOf(first), "");
}

TEST_F(PlaceSearch, OfADroppedRequestIsGivenUp) {
    localSearch.waits = true;
    { auto dropped = started(bridge->searchPlaces({"one", std::nullopt, std::nullopt, 10})); }
    EXPECT_EQ(localSearch.answered.withdrawn(), 1);
}

TEST(PlaceID, HasTheShortestDecimalsThatReadBackTheSame) {
    const auto idAt = [](double latitude, double longitude) {
        return placeID({"x", {latitude, longitude}, std::nullopt, std::nullopt, std::nullopt});
    };
    EXPECT_EQ(idAt(52.52, 13.405), "52.52,13.405,x");
    EXPECT_EQ(idAt(0.1 + 0.2, -179.99999999999997), "0.30000000000000004,-179.99999999999997,x");
    EXPECT_EQ(idAt(52, -13), "52.0,-13.0,x");
    EXPECT_EQ(idAt(0, -0.0), "0.0,-0.0,x");
    EXPECT_EQ(idAt(90, -180), "90.0,-180.0,x");
    EXPECT_EQ(idAt(0.0001, 0.00012), "0.0001,0.00012,x");
    EXPECT_EQ(idAt(0.00001, -0.000012), "1e-05,-1.2e-05,x");
    for (const double number : {51.47739888, 5e-324, 1.0 / 3, -122.03118, 1.7976931348623157e308}) {
        const auto id = idAt(number, 0);
        EXPECT_EQ(strtod(id.c_str(), nullptr), number) << id;
    }
}

} // namespace
} // namespace bridge
