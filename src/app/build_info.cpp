#include "app/build_info.h"

namespace bridge {

std::optional<std::string> BuildInfo::shortVersion() const {
    return BRIDGE_VERSION;
}

} // namespace bridge
