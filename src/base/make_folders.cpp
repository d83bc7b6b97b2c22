#include "base/make_folders.h"

#include "base/platform_error.h"

#include <cerrno>
#include <sys/stat.h>

namespace bridge {

namespace {

// From below: of the folders above one that is there nothing is asked, as they may be closed to us.
int make(const std::filesystem::path& path) {
    if (mkdir(path.c_str(), S_IRWXU) == 0) return 0;
    if (errno != ENOENT || !path.has_relative_path()) return errno;
    if (const int code = make(path.parent_path()); code != 0 && code != EEXIST) return code;
    return mkdir(path.c_str(), S_IRWXU) == 0 ? 0 : errno;
}

bool isFolder(const std::filesystem::path& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

void makeFolders(const std::filesystem::path& path, const std::string& failure) {
    const int code = make(path);
    if (code == 0 || isFolder(path)) return;
    throw PlatformError::fromErrno(failure, code == EEXIST ? ENOTDIR : code);
}

} // namespace bridge
