#pragma once

#include "base/platform_error.h"
#include "platform/directions.h"

namespace bridge {

// Where the user has named no server that knows the ways.
class NoDirections : public Directions {
public:
    // `fault` is what is wrong with the server that was named, as ServiceSettings::faultOf() says it.
    explicit NoDirections(std::string fault) : m_fault(std::move(fault)) {}

    Task<std::vector<Route>> calculate(DirectionsQuery) override {
        throw PlatformError(
            (m_fault.empty() ? "No directions server is set. "
                             : "No directions server can be used. " + m_fault + ". ") +
            "Name one that speaks Valhalla's HTTP interface as \"directionsServer\" in services.json, such as "
            "\"http://127.0.0.1:8002\", and start Brindlefox Apple Bridge again.");
        co_return std::vector<Route>(); // makes it a coroutine
    }
    std::string description() const override { return "nobody; no directions server is set"; }

private:
    std::string m_fault;
};

} // namespace bridge
