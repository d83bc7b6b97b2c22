#include "app/instance_lock.h"

#include "base/log.h"
#include "base/make_folders.h"
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

} // namespace

std::string instanceFolder(const std::string& profile) {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const bool isUsable = runtime && *runtime == '/' && isOursAlone(runtime);
    auto folder = isUsable ? std::string(runtime) + "/brindlefox-apple-bridge" : profile;
    makeFolders(folder, folder);
    if (!isOursAlone(folder)) throw PlatformError(folder + " is not a folder of yours alone.");
    return folder;
}

std::optional<InstanceLock> InstanceLock::take(const std::string& folder) {
    return takeFile(folder + "/lock");
}

std::optional<InstanceLock> InstanceLock::takeOfProfile(const std::string& profile) {
    std::optional<InstanceLock> lock;
    try {
        makeFolders(profile, profile);
        // Not the file above: where there is no runtime folder that one is of this folder, too, and ours already.
        lock = takeFile(profile + "/in-use");
    } catch (const PlatformError& error) {
        log::note(std::string("Nothing keeps another bridge out of this profile. ") + error.what());
        return std::nullopt;
    }
    if (!lock) throw PlatformError("Another Brindlefox Apple Bridge is using " + profile + ". End it first.");
    return lock;
}

std::optional<InstanceLock> InstanceLock::takeFile(const std::string& path) {
    FileDescriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!file) throw PlatformError::fromErrno(path, errno);
    if (flock(file.get(), LOCK_EX | LOCK_NB) == 0) return InstanceLock(std::move(file));
    if (errno != EWOULDBLOCK) throw PlatformError::fromErrno(path, errno);
    return std::nullopt;
}

} // namespace bridge
