#pragma once

#include "platform/directions.h"

#include <string_view>

namespace bridge::valhalla {

// The routes of a server's answer, its preferred one first. Throws PlatformError when it is not what Valhalla answers,
// and when the user asked for a ride and there is none in it.
std::vector<Route> readRoutes(std::string_view body, TransportType transport);

// Why there are no routes, in words for the user, from an answer that is not 200.
std::string explain(int status, std::string_view body, TransportType transport);

} // namespace bridge::valhalla
