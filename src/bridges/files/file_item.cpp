#include "bridges/files/file_item.h"

#include "base/platform_error.h"
#include "base/text.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>

namespace bridge {

namespace {

// The years that a date on the wire can say.
constexpr int64_t firstSecond = -62135596800;
constexpr int64_t lastSecond = 253402300799;

struct SortedItem {
    std::string key;
    FileItemDescriptor item;
};

// Names only make the order settled where the language sees no difference.
bool comesBefore(const SortedItem& left, const SortedItem& right) {
    if (left.item.isDirectory != right.item.isDirectory) return left.item.isDirectory;
    if (left.key != right.key) return left.key < right.key;
    return left.item.name < right.item.name;
}

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};
using Directory = std::unique_ptr<DIR, CloseDirectory>;

Directory openDirectory(const FileDescriptor& folder) {
    FileDescriptor readable(openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    Directory directory(readable ? fdopendir(readable.get()) : nullptr);
    if (!directory) throw PlatformError::fromErrno("The folder could not be opened", errno);
    readable.release();
    return directory;
}

} // namespace

FileItemDescriptor describeItem(std::string_view relativePath, std::string_view name, const struct stat& status) {
    FileItemDescriptor item;
    item.relativePath = repairUTF8(relativePath);
    item.name = repairUTF8(name);
    item.isDirectory = S_ISDIR(status.st_mode);
    if (!item.isDirectory) item.size = status.st_size;
    const int64_t modified = status.st_mtim.tv_sec;
    if (modified >= firstSecond && modified <= lastSecond) item.modifiedAt = Date{modified};
    return item;
}

FileItemDescriptor describeItem(const ConfinedPath& path, const struct stat& status) {
    return describeItem(path.relative(), path.name(), status);
}

std::vector<FileItemDescriptor> listFolder(const FileDescriptor& folder, const std::string& relativePath) {
    const auto directory = openDirectory(folder);
    std::vector<SortedItem> children;
    while (true) {
        errno = 0;
        const dirent* entry = readdir(directory.get());
        if (!entry && errno != 0) throw PlatformError::fromErrno("The folder could not be read", errno);
        if (!entry) break;
        const std::string_view name = entry->d_name;
        if (name.starts_with('.')) continue;
        struct stat status;
        if (fstatat(dirfd(directory.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno == ENOENT) continue;
            throw PlatformError::fromErrno("The item could not be examined", errno);
        }
        children.push_back(
            {sortKey(name),
             describeItem(relativePath.empty() ? std::string(name) : appendToPath(relativePath, name), name, status)});
    }
    std::ranges::sort(children, comesBefore);

    std::vector<FileItemDescriptor> items;
    items.reserve(children.size());
    for (auto& child : children)
        items.push_back(std::move(child.item));
    return items;
}

} // namespace bridge
