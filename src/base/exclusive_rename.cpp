#include "base/exclusive_rename.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace bridge {

namespace {

bool canNotLink(int code) {
    return code == EPERM || code == EOPNOTSUPP || code == ENOSYS || code == EMLINK;
}

int renameInSteps(int fromFolder, const char* from, int toFolder, const char* to) {
    struct stat status;
    if (fstatat(fromFolder, from, &status, AT_SYMLINK_NOFOLLOW) != 0) return errno;
    if (!S_ISDIR(status.st_mode)) {
        // A link never replaces what came to stand there meanwhile.
        if (linkat(fromFolder, from, toFolder, to, 0) == 0) {
            if (unlinkat(fromFolder, from, 0) == 0) return 0;
            const int code = errno;
            unlinkat(toFolder, to, 0);
            return code;
        }
        if (!canNotLink(errno)) return errno;
    }
    if (fstatat(toFolder, to, &status, AT_SYMLINK_NOFOLLOW) == 0) return EEXIST;
    if (errno != ENOENT) return errno;
    return renameat(fromFolder, from, toFolder, to) == 0 ? 0 : errno;
}

} // namespace

int renameExclusively(int fromFolder, const std::string& from, int toFolder, const std::string& to) {
    if (renameat2(fromFolder, from.c_str(), toFolder, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    // EINVAL is also a folder's move into itself; the steps below refuse that too.
    if (errno != EINVAL && errno != ENOSYS) return errno;
    return renameInSteps(fromFolder, from.c_str(), toFolder, to.c_str());
}

} // namespace bridge
