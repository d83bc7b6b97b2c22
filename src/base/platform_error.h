#pragma once

#include <stdexcept>
#include <string>

namespace bridge {

// A failure in a platform service's own words. It reaches the client unchanged, as an internal error.
class PlatformError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;

    // "<what>: No such file or directory"
    static PlatformError fromErrno(const std::string& what, int code);
};

} // namespace bridge
