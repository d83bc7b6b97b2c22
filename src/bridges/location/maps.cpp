#include "base/apple_bridge_error.h"
#include "base/text.h"
#include "bridges/location/location_data_bridge.h"
#include "bridges/location/place_id.h"

#include <algorithm>
#include <cmath>

namespace bridge {

namespace {

constexpr double regionMeters = 50'000;

void requireValid(const MapCoordinate& place) {
    // Comparisons with NaN are false, and infinity is beyond either bound.
    if (!(std::abs(place.latitude) <= 90 && std::abs(place.longitude) <= 180))
        throw AppleBridgeError::malformedRequest("Coordinates must use latitude -90...90 and longitude -180...180.");
}

std::optional<MapRegion> regionOf(const SearchPlacesRequest& request) {
    if (request.latitude.has_value() != request.longitude.has_value())
        throw AppleBridgeError::malformedRequest(
            "Place search requires both latitude and longitude when either is supplied.");
    if (!request.latitude) return std::nullopt;
    const MapCoordinate center{*request.latitude, *request.longitude};
    requireValid(center);
    return MapRegion{center, regionMeters, regionMeters};
}

PlaceDescriptor describe(const MapItem& item) {
    PlaceDescriptor place;
    place.id = placeID(item);
    place.name = item.name.value_or("Unknown place");
    place.address = item.title.value_or("");
    place.latitude = item.coordinate.latitude;
    place.longitude = item.coordinate.longitude;
    place.phoneNumber = item.phoneNumber;
    if (item.url && canBeURL(*item.url)) place.url = URL{*item.url};
    return place;
}

RouteDescriptor describe(Route route) {
    std::erase(route.steps, "");
    return {std::move(route.name), route.distance, route.expectedTravelTime, std::move(route.steps)};
}

TransportType transportNamed(const std::string& name) {
    const auto lowered = lowercase(name);
    if (lowered == "walking") return TransportType::walking;
    if (lowered == "transit") return TransportType::transit;
    if (lowered == "cycling") return TransportType::cycling;
    if (lowered == "automobile") return TransportType::automobile;
    throw AppleBridgeError::malformedRequest("Transport must be automobile, walking, transit, or cycling.");
}

} // namespace

Task<std::vector<PlaceDescriptor>> LocationDataBridge::searchPlaces(SearchPlacesRequest request) {
    LocalSearchQuery query;
    query.naturalLanguageQuery = trim(request.query);
    if (query.naturalLanguageQuery.empty())
        throw AppleBridgeError::malformedRequest("Place search query cannot be empty.");
    query.region = regionOf(request);
    auto searching = m_localSearch.search(std::move(query));
    auto items = co_await std::move(searching);
    const auto limit = static_cast<size_t>(std::clamp<int64_t>(request.limit, 1, 25));
    if (items.size() > limit) items.resize(limit);
    std::vector<PlaceDescriptor> places;
    for (const auto& item : items)
        places.push_back(describe(item));
    co_return places;
}

Task<std::vector<RouteDescriptor>> LocationDataBridge::directions(DirectionsRequest request) {
    DirectionsQuery query;
    query.source = {request.originLatitude, request.originLongitude};
    requireValid(query.source);
    query.destination = {request.destinationLatitude, request.destinationLongitude};
    requireValid(query.destination);
    query.transport = transportNamed(request.transport);
    query.alternates = AlternateRoutes::yes;
    auto calculating = m_directions.calculate(query);
    auto calculated = co_await std::move(calculating);
    std::vector<RouteDescriptor> routes;
    for (auto& route : calculated)
        routes.push_back(describe(std::move(route)));
    co_return routes;
}

} // namespace bridge
