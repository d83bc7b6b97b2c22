#include "adapters/gio/gio_trash.h"

#include "adapters/gio/mount_point.h"
#include "adapters/xdg/trash_folder.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace bridge {

namespace {

constexpr int folderFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// Where an open folder is now, whatever path it was opened by.
std::string pathOf(int folder) {
    std::string path(PATH_MAX, '\0');
    const auto link = "/proc/self/fd/" + std::to_string(folder);
    const ssize_t length = readlink(link.c_str(), path.data(), path.size());
    if (length <= 0) throw PlatformError::fromErrno("The item's folder could not be found", errno);
    path.resize(static_cast<size_t>(length));
    return path;
}

bool hasMode(const FileDescriptor& folder, mode_t bits) {
    struct stat status;
    return fstat(folder.get(), &status) == 0 && (status.st_mode & bits) == bits;
}

// On a volume that others can write to, somebody else could have made the folder to gather what we throw away.
bool isOurs(const FileDescriptor& folder) {
    struct stat status;
    return fstat(folder.get(), &status) == 0 && status.st_uid == geteuid();
}

std::optional<FileDescriptor> openSharedTrash(const FileDescriptor& top) {
    const FileDescriptor shared(openat(top.get(), ".Trash", folderFlags));
    if (!shared || !hasMode(shared, S_ISVTX)) return std::nullopt;
    try {
        auto own = openPrivateFolder(shared.get(), std::to_string(getuid()));
        if (isOurs(own)) return own;
    } catch (const PlatformError&) {
        // The standard's second place is left.
    }
    return std::nullopt;
}

FileDescriptor openVolumeTrash(const FileDescriptor& top) {
    if (auto shared = openSharedTrash(top)) return std::move(*shared);
    auto own = openPrivateFolder(top.get(), ".Trash-" + std::to_string(getuid()));
    if (!isOurs(own)) throw PlatformError("The volume's Trash belongs to another user.");
    return own;
}

// The path inside the volume, as its Trash records it.
std::string relativeTo(const std::string& top, const TrashItem& item, const std::string& folder) {
    const auto prefix = top.ends_with('/') ? top : top + '/';
    if (item.path.starts_with(prefix)) return item.path.substr(prefix.size());
    return (folder + '/' + item.name).substr(prefix.size());
}

} // namespace

void GioTrash::moveToTrash(const TrashItem& item) {
    try {
        m_home.moveToTrash(item);
        return;
    } catch (const TrashOnAnotherVolume&) {
        // Then the volume's own, below.
    }
    const auto folder = pathOf(item.folder);
    const auto topPath = mountPointOf(folder);
    const FileDescriptor top(open(topPath.c_str(), folderFlags));
    if (!top) throw PlatformError::fromErrno("The volume could not be opened", errno);
    TrashFolder(openVolumeTrash(top)).put(item, relativeTo(topPath, item, folder));
}

} // namespace bridge
