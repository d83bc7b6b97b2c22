#include "adapters/sqlite/file_identity.h"

#include "base/platform_error.h"

#include <cerrno>

namespace bridge {

std::optional<FileIdentity> identityOf(const std::string& path, const std::string& contents) {
    struct stat status;
    if (stat(path.c_str(), &status) == 0)
        return FileIdentity{status.st_dev, status.st_ino, S_ISREG(status.st_mode), status.st_size == 0};
    if (errno == ENOENT) return std::nullopt;
    throw PlatformError::fromErrno("The file of the " + contents + " can't be found", errno);
}

} // namespace bridge
