#pragma once

#include "base/url.h"

namespace bridge {

struct LocationDescriptor {
    double latitude = 0;           // degrees
    double longitude = 0;          // degrees
    double horizontalAccuracy = 0; // metres
    double altitude = 0;           // metres
    Date timestamp;                // of the fix

    static constexpr auto fields() {
        return std::tuple{
            required("latitude", &LocationDescriptor::latitude), required("longitude", &LocationDescriptor::longitude),
            required("horizontalAccuracy", &LocationDescriptor::horizontalAccuracy),
            required("altitude", &LocationDescriptor::altitude), required("timestamp", &LocationDescriptor::timestamp)};
    }
    bool operator==(const LocationDescriptor&) const = default;
};
static_assert(listsEveryMember<LocationDescriptor>());

struct PlaceDescriptor {
    std::string id; // its coordinate and its own name: "52.52,13.405,Central Station"
    std::string name;
    std::string address; // may be empty
    double latitude = 0;
    double longitude = 0;
    std::optional<std::string> phoneNumber = std::nullopt;
    std::optional<URL> url = std::nullopt;

    static constexpr auto fields() {
        return std::tuple{required("id", &PlaceDescriptor::id),
                          required("name", &PlaceDescriptor::name),
                          required("address", &PlaceDescriptor::address),
                          required("latitude", &PlaceDescriptor::latitude),
                          required("longitude", &PlaceDescriptor::longitude),
                          optional("phoneNumber", &PlaceDescriptor::phoneNumber),
                          optional("url", &PlaceDescriptor::url)};
    }
    bool operator==(const PlaceDescriptor&) const = default;
};
static_assert(listsEveryMember<PlaceDescriptor>());

struct RouteDescriptor {
    std::string name; // may be empty
    double distanceMeters = 0;
    double expectedTravelSeconds = 0;
    std::vector<std::string> steps; // what to do, in order; none is empty

    static constexpr auto fields() {
        return std::tuple{required("name", &RouteDescriptor::name),
                          required("distanceMeters", &RouteDescriptor::distanceMeters),
                          required("expectedTravelSeconds", &RouteDescriptor::expectedTravelSeconds),
                          required("steps", &RouteDescriptor::steps)};
    }
    bool operator==(const RouteDescriptor&) const = default;
};
static_assert(listsEveryMember<RouteDescriptor>());

} // namespace bridge
