#pragma once

#include "base/task.h"

#include <optional>
#include <string>
#include <vector>

namespace bridge {

struct MapCoordinate {
    double latitude = 0;  // degrees, -90...90
    double longitude = 0; // degrees, -180...180
    bool operator==(const MapCoordinate&) const = default;
};

// Favours what is inside it; what is outside is not left out.
struct MapRegion {
    MapCoordinate center;
    double latitudinalMeters = 0;  // from its northern to its southern edge
    double longitudinalMeters = 0; // from its western to its eastern edge
};

struct LocalSearchQuery {
    std::string naturalLanguageQuery; // UTF-8, neither empty nor with white space at its ends
    std::optional<MapRegion> region;
};

struct MapItem {
    std::optional<std::string> name;
    MapCoordinate coordinate;
    std::optional<std::string> title; // its address in one line
    std::optional<std::string> phoneNumber;
    std::optional<std::string> url; // absolute
    bool operator==(const MapItem&) const = default;
};

// Finds places by what people call them: in any script, with or without accents, and "name, region". Main thread.
class LocalSearch {
public:
    virtual ~LocalSearch() = default;

    // What was found, the most relevant first; empty when there is no such place. A search that could not be made
    // throws PlatformError. A dropped task abandons it.
    virtual Task<std::vector<MapItem>> search(LocalSearchQuery query) = 0;

    // What it searches, and whose data that is, for the user.
    virtual std::string description() const = 0;
};

} // namespace bridge
