#pragma once

#include "base/platform_error.h"
#include "base/task.h"
#include "platform/location_manager.h"

namespace bridge {

// Finds where the device is, once the user has agreed. Main thread only.
class LocationSource {
public:
    virtual ~LocationSource() = default;

    // One fix, good to a hundred metres if it can be had; it may take for ever. Throws PlatformError when there will be
    // none. A dropped task stops whatever looks for the place. One at a time; the source outlives it.
    virtual Task<LocationFix> locate() = 0;

    // As LocationManager::description().
    virtual std::string description() const = 0;
};

} // namespace bridge
