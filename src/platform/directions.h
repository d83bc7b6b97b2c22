#pragma once

#include "platform/local_search.h"

namespace bridge {

enum class TransportType { automobile, walking, transit, cycling };

enum class AlternateRoutes { no, yes };

struct DirectionsQuery {
    MapCoordinate source;
    MapCoordinate destination;
    TransportType transport = TransportType::automobile;
    AlternateRoutes alternates = AlternateRoutes::no;
};

struct Route {
    std::string name;               // of its main streets; empty when none has a name
    double distance = 0;            // metres
    double expectedTravelTime = 0;  // seconds
    std::vector<std::string> steps; // what to do, one sentence each, in order; may hold empty ones
    bool operator==(const Route&) const = default;
};

// Ways from one place to another. Main thread.
class Directions {
public:
    virtual ~Directions() = default;

    // One or more routes, the platform's preferred one first. Throws PlatformError when there is none, when the kind of
    // transport is not served here, or when it could not be calculated. A dropped task abandons it.
    virtual Task<std::vector<Route>> calculate(DirectionsQuery query) = 0;

    // Who calculates and with whose map, for the user, with the attribution that the map's owner asks for.
    virtual std::string description() const = 0;
};

} // namespace bridge
