#include "app/maps.h"

#include "adapters/curl/curl_http_client.h"
#include "app/local_searches.h"
#include "app/open_directions.h"

namespace bridge {

void openMaps(EventLoop& loop, Platform& platform, const ServiceSettings& settings) {
    platform.localSearch.reset(); // before the client that it uses
    platform.directions.reset();
    // Each has its own: an exchange waits for the one before it, and nobody shall wait for another's slow server.
    platform.placesClient = std::make_unique<CurlHTTPClient>(loop);
    platform.directionsClient = std::make_unique<CurlHTTPClient>(loop);
    platform.localSearch = openLocalSearch(loop, *platform.placesClient, *platform.clock, settings.placesServer);
    platform.directions = openDirections(*platform.directionsClient, settings);
}

} // namespace bridge
