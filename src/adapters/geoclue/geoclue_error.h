#pragma once

#include "base/platform_error.h"

#include <gio/gio.h>

namespace bridge {

// What a failed call means for the user, and what to do about it.
PlatformError geoclueError(const GError& error);

// GeoClue ended while we waited for it.
PlatformError geoclueIsGone();

} // namespace bridge
