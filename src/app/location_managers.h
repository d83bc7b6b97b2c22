#pragma once

#include "app/platform.h"
#include "app/users_services.h"

namespace bridge {

// Both heed the platform's authorization, and take the time from its clock.

// The place that the user wrote into the file; without one each request is told how to write it.
std::unique_ptr<LocationManager> openFixedLocation(EventLoop& loop, const Platform& platform,
                                                   const UsersServices& services);

// The same where the user wrote one, for that is meant: what the desktop's own service finds only where there is none.
std::unique_ptr<LocationManager> openUsersLocation(EventLoop& loop, const Platform& platform,
                                                   const UsersServices& services);

} // namespace bridge
