#pragma once

#include "base/platform_error.h"
#include "platform/directions.h"
#include "tests/base/gate.h"

namespace bridge {

// Knows the ways that the test wrote down, whatever is asked, at once or when the gate opens, and remembers the
// queries.
class ScriptedDirections : public Directions {
public:
    std::vector<Route> routes;
    std::optional<std::string> failure;
    bool waits = false;
    Gate answered;
    std::vector<DirectionsQuery> queries;

    Task<std::vector<Route>> calculate(DirectionsQuery query) override {
        queries.push_back(query);
        if (waits) co_await answered.opened();
        if (failure) throw PlatformError(*failure);
        co_return routes;
    }
    std::string description() const override { return "a script"; }
};

} // namespace bridge
