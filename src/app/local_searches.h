#pragma once

#include "base/event_loop.h"
#include "platform/clock.h"
#include "platform/http_client.h"
#include "platform/local_search.h"

#include <memory>
#include <optional>
#include <string>

namespace bridge {

// Who finds places: the Nominatim server at that address, or else the file of places that comes along. All that is
// given must outlive it.
std::unique_ptr<LocalSearch> openLocalSearch(EventLoop& loop, HTTPClient& client, const Clock& clock,
                                             const std::optional<std::string>& placesServer);

} // namespace bridge
