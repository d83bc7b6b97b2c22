#pragma once

#include "app/platform.h"

namespace bridge {

// Both heed the platform's authorization, and take the time from its clock.

// The place that the user wrote into this file; without one each request is told how to write it.
std::unique_ptr<LocationManager> openFixedLocation(EventLoop& loop, const Platform& platform,
                                                   const std::string& settingsFile);

// The same where the user wrote one, for that is meant: what the desktop's own service finds only where there is none.
// The log says which.
std::unique_ptr<LocationManager> openUsersLocation(EventLoop& loop, const Platform& platform,
                                                   const std::string& settingsFile);

} // namespace bridge
