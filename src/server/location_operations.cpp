#include "bridges/location/location_requests.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"

namespace bridge {

namespace {

constexpr std::array rows{
    later("location.current", BridgeCapability::currentLocation),
    later<SearchPlacesRequest>("maps.places.search", BridgeCapability::placesSearch),
    later<DirectionsRequest>("maps.directions", BridgeCapability::directions),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> locationOperations() {
    return rows;
}

} // namespace bridge
