#include "bridges/files/folder_access.h"

#include "base/platform_error.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <linux/openat2.h>
#include <memory>
#include <sys/syscall.h>

namespace bridge {

namespace {

constexpr int folderFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

struct Opened {
    FileDescriptor folder;
    int error = 0; // ELOOP when a link is in the way
};

Opened openWhole(int start, std::span<const std::string> names) {
    open_how how{};
    how.flags = folderFlags;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS | RESOLVE_NO_SYMLINKS;
    const long descriptor = syscall(SYS_openat2, start, joinPath(names).c_str(), &how, sizeof how);
    if (descriptor < 0) return {{}, errno};
    return {FileDescriptor(static_cast<int>(descriptor)), 0};
}

Opened openName(int folder, const std::string& name) {
    FileDescriptor opened(openat(folder, name.c_str(), folderFlags | O_NOFOLLOW));
    if (opened) return {std::move(opened), 0};
    if (errno != ENOTDIR) return {{}, errno};
    // A link, or a file? Whatever is a folder by now was exchanged a moment ago.
    struct stat status;
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return {{}, errno};
    return {{}, S_ISLNK(status.st_mode) || S_ISDIR(status.st_mode) ? ELOOP : ENOTDIR};
}

Opened openByName(int start, std::span<const std::string> names) {
    Opened current;
    for (const auto& name : names) {
        current = openName(current.folder ? current.folder.get() : start, name);
        if (!current.folder) break;
    }
    return current;
}

Opened openNames(const OpenRoot& root, std::span<const std::string> names) {
    if (names.empty()) {
        FileDescriptor same(openat(root.folder.get(), ".", folderFlags));
        const int error = same ? 0 : errno;
        return {std::move(same), error};
    }
    if (root.walk == FolderWalk::whole) {
        auto opened = openWhole(root.folder.get(), names);
        if (opened.error != ENOSYS && opened.error != EPERM) return opened;
    }
    return openByName(root.folder.get(), names);
}

[[noreturn]] void fail(const char* what, int code, const std::string& requested) {
    if (code == ELOOP || code == EXDEV || code == EAGAIN) throw PathChanged{requested};
    throw PlatformError::fromErrno(what, code);
}

FileDescriptor openExisting(const OpenRoot& root, std::span<const std::string> names, const std::string& requested) {
    auto opened = openNames(root, names);
    if (opened.folder || opened.error == ENOENT || opened.error == ENOTDIR) return std::move(opened.folder);
    fail("The folder could not be opened", opened.error, requested);
}

FileDescriptor openOrMake(int folder, const std::string& name, const std::string& requested) {
    auto opened = openName(folder, name);
    if (opened.error == ENOENT) {
        if (mkdirat(folder, name.c_str(), 0777) != 0 && errno != EEXIST)
            throw PlatformError::fromErrno("The folder could not be created", errno);
        opened = openName(folder, name);
    }
    if (!opened.folder) fail("The folder could not be created", opened.error, requested);
    return std::move(opened.folder);
}

FileDescriptor makeFolders(const OpenRoot& root, std::span<const std::string> names, const std::string& requested) {
    auto whole = openExisting(root, names, requested);
    if (whole) return whole;
    auto current = openExisting(root, {}, requested);
    for (const auto& name : names)
        current = openOrMake(current.get(), name, requested);
    return current;
}

} // namespace

OpenRoot openRoot(const std::string& path, const std::optional<FolderIdentity>& identity, FolderWalk walk) {
    const std::unique_ptr<char, decltype(&std::free)> canonical(realpath(path.c_str(), nullptr), &std::free);
    if (!canonical) throw PlatformError::fromErrno("The authorized folder could not be found", errno);
    FileDescriptor folder(open(canonical.get(), folderFlags | O_NOFOLLOW));
    if (!folder) throw PlatformError::fromErrno("The authorized folder could not be opened", errno);
    const auto status = statusOf(folder);
    if (identity && *identity != FolderIdentity{status.st_dev, status.st_ino})
        throw PlatformError("Another folder took the place of the authorized folder.");
    return {canonical.get(), std::move(folder), walk};
}

FileDescriptor openFolder(const OpenRoot& root, const ConfinedPath& path) {
    return openExisting(root, path.names, path.requested);
}

std::optional<FolderEntry> openParent(const OpenRoot& root, const ConfinedPath& path) {
    auto folder = openExisting(root, path.parent(), path.requested);
    if (!folder) return std::nullopt;
    return FolderEntry{std::move(folder), path.name()};
}

FileDescriptor makeFolder(const OpenRoot& root, const ConfinedPath& path) {
    return makeFolders(root, path.names, path.requested);
}

FolderEntry makeParent(const OpenRoot& root, const ConfinedPath& path) {
    return {makeFolders(root, path.parent(), path.requested), path.name()};
}

std::optional<struct stat> examine(const FolderEntry& entry, const std::string& requested) {
    struct stat status;
    if (fstatat(entry.folder.get(), entry.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno == ENOENT || errno == ENAMETOOLONG) return std::nullopt;
        throw PlatformError::fromErrno("The item could not be examined", errno);
    }
    if (S_ISLNK(status.st_mode)) throw PathChanged{requested};
    return status;
}

struct stat statusOf(const FileDescriptor& open) {
    struct stat status;
    if (fstat(open.get(), &status) != 0) throw PlatformError::fromErrno("The item could not be examined", errno);
    return status;
}

} // namespace bridge
