#include "app/instance_lock.h"

#include "base/platform_error.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace bridge {

namespace {

bool isOursAlone(const std::string& folder) {
    struct stat status {};
    return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
           (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

void makeFolder(const std::string& folder) {
    // What is above a fresh profile may be missing as well.
    for (size_t end = folder.find('/', 1); end != folder.npos; end = folder.find('/', end + 1))
        mkdir(folder.substr(0, end).c_str(), S_IRWXU);
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) throw PlatformError::fromErrno(folder, errno);
    if (!isOursAlone(folder)) throw PlatformError(folder + " is not a folder of yours alone.");
}

} // namespace

std::string instanceFolder(const std::string& profile) {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const bool isUsable = runtime && *runtime == '/' && isOursAlone(runtime);
    auto folder = isUsable ? std::string(runtime) + "/brindlefox-apple-bridge" : profile;
    makeFolder(folder);
    return folder;
}

std::optional<InstanceLock> InstanceLock::take(const std::string& folder) {
    const auto path = folder + "/lock";
    FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file) throw PlatformError::fromErrno(path, errno);
    if (flock(file.get(), LOCK_EX | LOCK_NB) == 0) return InstanceLock(std::move(file));
    if (errno != EWOULDBLOCK) throw PlatformError::fromErrno(path, errno);
    return std::nullopt;
}

} // namespace bridge
