#include "adapters/geoclue/location_properties.h"

#include "base/platform_error.h"

#include <cfloat>
#include <cmath>

namespace bridge {

namespace {

double numberOf(GVariant* properties, const char* name, double otherwise) {
    double number = otherwise;
    g_variant_lookup(properties, name, "d", &number);
    return std::isfinite(number) ? number : otherwise;
}

Date timestampOf(GVariant* properties) {
    guint64 seconds = 0;
    guint64 microseconds = 0;
    g_variant_lookup(properties, "Timestamp", "(tt)", &seconds, &microseconds);
    const auto latest = static_cast<guint64>(latestDate.secondsSince1970);
    return {static_cast<int64_t>(seconds < latest ? seconds : latest)};
}

} // namespace

LocationFix fixFromProperties(GVariant* properties) {
    LocationFix fix;
    fix.latitude = numberOf(properties, "Latitude", NAN);
    fix.longitude = numberOf(properties, "Longitude", NAN);
    if (!(std::abs(fix.latitude) <= 90 && std::abs(fix.longitude) <= 180))
        throw PlatformError("GeoClue found a location that is nowhere on Earth.");
    fix.horizontalAccuracy = numberOf(properties, "Accuracy", -1);
    const double unknownAltitude = -DBL_MAX;
    fix.altitude = numberOf(properties, "Altitude", unknownAltitude);
    if (fix.altitude == unknownAltitude) fix.altitude = 0;
    fix.timestamp = timestampOf(properties);
    return fix;
}

} // namespace bridge
