#pragma once

#include "platform/location_manager.h"

#include <gio/gio.h>

namespace bridge {

// A fix from the properties (a{sv}) of one of GeoClue's locations. Throws PlatformError for one that is nowhere on
// Earth.
LocationFix fixFromProperties(GVariant* properties);

} // namespace bridge
