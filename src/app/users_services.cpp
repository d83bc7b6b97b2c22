#include "app/users_services.h"

#include "base/log.h"

namespace bridge {

UsersServices readUsersServices(std::string file) {
    auto settings = readServiceSettings(file);
    for (const auto& [key, fault] : settings.faults)
        log::note(fault);
    return {std::move(file), std::move(settings)};
}

} // namespace bridge
