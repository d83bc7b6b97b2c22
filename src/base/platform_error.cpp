#include "base/platform_error.h"

#include <system_error>

namespace bridge {

PlatformError PlatformError::fromErrno(const std::string& what, int code) {
    return PlatformError(what + ": " + std::generic_category().message(code));
}

} // namespace bridge
