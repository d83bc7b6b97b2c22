#pragma once

#include "base/platform_error.h"
#include "platform/directions.h"
#include "platform/local_search.h"

namespace bridge {

// Maps that nobody has set a server for.
class UnconfiguredLocalSearch : public LocalSearch {
public:
    Task<std::vector<MapItem>> search(LocalSearchQuery) override {
        throw PlatformError("No service for places is configured.");
        co_return std::vector<MapItem>(); // makes it a coroutine
    }
};

class UnconfiguredDirections : public Directions {
public:
    Task<std::vector<Route>> calculate(DirectionsQuery) override {
        throw PlatformError("No service for directions is configured.");
        co_return std::vector<Route>();
    }
};

} // namespace bridge
