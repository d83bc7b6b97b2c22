#include "bridges/location/location_requests.h"
#include "bridges/location/location_results.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

TEST(LocationRecords, AreWrittenWithSortedKeys) {
    EXPECT_EQ(encodeJSON(LocationDescriptor{52.52, 13.405, 65, 34.5, {1786706921}}),
              R"({"altitude":34.5,"horizontalAccuracy":65,"latitude":52.52,"longitude":13.405,)"
              R"("timestamp":"2026-08-14T11:28:41Z"})");
    EXPECT_EQ(encodeJSON(RouteDescriptor{"A1", 1200.5, 60, {"Turn left."}}),
              R"({"distanceMeters":1200.5,"expectedTravelSeconds":60,"name":"A1","steps":["Turn left."]})");
}

TEST(LocationRecords, LeaveOutWhatAPlaceDoesNotHave) {
    PlaceDescriptor place{"52.52,13.405,", "Unknown place", "", 52.52, 13.405};
    EXPECT_EQ(encodeJSON(place),
              R"({"address":"","id":"52.52,13.405,","latitude":52.52,"longitude":13.405,"name":"Unknown place"})");
    place.phoneNumber = "555-0100";
    place.url = URL{"https://example.org/"};
    EXPECT_EQ(encodeJSON(place),
              R"({"address":"","id":"52.52,13.405,","latitude":52.52,"longitude":13.405,"name":"Unknown place",)"
              R"("phoneNumber":"555-0100","url":"https://example.org/"})");
}

TEST(LocationRecords, OfASearchNeedQueryAndLimit) {
    const auto request = decode<SearchPlacesRequest>(parseJSON(R"({"query":"x","limit":3,"latitude":null})"));
    EXPECT_EQ(request.limit, 3);
    EXPECT_FALSE(request.latitude);
    EXPECT_THROW(decode<SearchPlacesRequest>(parseJSON(R"({"query":"x"})")), DecodingError);
    EXPECT_THROW(decode<SearchPlacesRequest>(parseJSON(R"({"limit":3})")), DecodingError);
    EXPECT_THROW(decode<SearchPlacesRequest>(parseJSON(R"({"query":"x","limit":3,"longitude":"1"})")), DecodingError);
}

TEST(LocationRecords, OfDirectionsNeedAllFive) {
    const std::string all =
        R"({"originLatitude":1,"originLongitude":2,"destinationLatitude":3,"destinationLongitude":4,"transport":"x"})";
    const auto whole = decode<DirectionsRequest>(parseJSON(all));
    EXPECT_EQ(whole.destinationLongitude, 4);
    for (const auto* name :
         {"originLatitude", "originLongitude", "destinationLatitude", "destinationLongitude", "transport"}) {
        auto without = *parseJSON(all).object();
        without.erase(without.find(std::string(name)));
        EXPECT_THROW(decode<DirectionsRequest>(JSONValue{without}), DecodingError) << name;
    }
}

} // namespace
} // namespace bridge
