#pragma once

#include "platform/http_client.h"
#include "platform/local_search.h"

namespace bridge::nominatim {

// The places in an answer, in its order. Throws PlatformError, in words for the user, when the server refused, is in
// trouble, or said something that can't be understood. `server` is its address.
std::vector<MapItem> placesIn(const HTTPResponse& response, const std::string& server);

} // namespace bridge::nominatim
