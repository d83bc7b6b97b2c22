#pragma once

#include "adapters/gazetteer/build/geonames.h"

#include <string>

namespace bridge::gazetteer {

struct PlacesInput {
    std::string cities;    // GeoNames' table of cities
    std::string regions;   // JSON: [{"code": "US.MA", "name": "Massachusetts"}, ...]
    std::string divisions; // the same, one level down
};

// Makes the file that Gazetteer reads: the same bytes for the same input and the same libraries. What was at `path`
// stays until the new one is whole, and for good when something fails. Answers with the number of places. Throws
// InputError, and runtime_error when it can't be written.
size_t writePlaces(const PlacesInput& input, const std::string& path);

} // namespace bridge::gazetteer
