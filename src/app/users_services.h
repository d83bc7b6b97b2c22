#pragma once

#include "adapters/jsonfile/service_settings.h"

namespace bridge {

// Which services the user wants, and the file that says so.
struct UsersServices {
    std::string file;
    ServiceSettings settings;
};

// Reads the file; what is wrong with it goes into the log, so once for each platform.
UsersServices readUsersServices(std::string file);

} // namespace bridge
