#include "app/open_directions.h"

#include "adapters/valhalla/valhalla_directions.h"
#include "app/no_directions.h"
#include "base/region.h"

namespace bridge {

std::unique_ptr<Directions> openDirections(HTTPClient& client, const ServiceSettings& settings) {
    if (!settings.directionsServer) return std::make_unique<NoDirections>(settings.faultOf("directionsServer"));
    return std::make_unique<ValhallaDirections>(client, *settings.directionsServer, userLanguage());
}

} // namespace bridge
