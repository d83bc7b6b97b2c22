#pragma once

#include "adapters/nominatim/nominatim_search.h"

namespace bridge::nominatim {

// Throws PlatformError when the server's address is none.
HTTPRequest searchRequest(const NominatimServer& server, const LocalSearchQuery& query);

} // namespace bridge::nominatim
