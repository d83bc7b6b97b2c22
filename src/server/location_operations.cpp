#include "bridges/location/location_data_bridge.h"
#include "server/operation_rows.h"
#include "server/operation_tables.h"

namespace bridge {

namespace {

constexpr std::array rows{
    operation<&LocationDataBridge::currentLocation>("location.current", BridgeCapability::currentLocation),
    operation<&LocationDataBridge::searchPlaces>("maps.places.search", BridgeCapability::placesSearch),
    operation<&LocationDataBridge::directions>("maps.directions", BridgeCapability::directions),
};
static_assert(wellFormed(rows));

} // namespace

std::span<const Operation> locationOperations() {
    return rows;
}

} // namespace bridge
