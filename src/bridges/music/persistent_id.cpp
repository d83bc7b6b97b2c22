#include "bridges/music/persistent_id.h"

#include <fmt/format.h>

namespace bridge {

std::string persistentIDText(uint64_t persistentID) {
    return fmt::format("{:016X}", persistentID);
}

} // namespace bridge
