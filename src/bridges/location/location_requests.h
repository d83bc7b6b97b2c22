#pragma once

#include "base/record.h"

namespace bridge {

struct SearchPlacesRequest {
    std::string query;
    std::optional<double> latitude;
    std::optional<double> longitude;
    int64_t limit = 0;

    static constexpr auto fields() {
        return std::tuple{
            required("query", &SearchPlacesRequest::query), optional("latitude", &SearchPlacesRequest::latitude),
            optional("longitude", &SearchPlacesRequest::longitude), required("limit", &SearchPlacesRequest::limit)};
    }
};
static_assert(listsEveryMember<SearchPlacesRequest>());

struct DirectionsRequest {
    double originLatitude = 0;
    double originLongitude = 0;
    double destinationLatitude = 0;
    double destinationLongitude = 0;
    std::string transport;

    static constexpr auto fields() {
        return std::tuple{required("originLatitude", &DirectionsRequest::originLatitude),
                          required("originLongitude", &DirectionsRequest::originLongitude),
                          required("destinationLatitude", &DirectionsRequest::destinationLatitude),
                          required("destinationLongitude", &DirectionsRequest::destinationLongitude),
                          required("transport", &DirectionsRequest::transport)};
    }
};
static_assert(listsEveryMember<DirectionsRequest>());

} // namespace bridge
