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

FileItemDescriptor describeByName(std::string_view relativePath, std::string_view name) {
    FileItemDescriptor item;
    item.relativePath = repairUTF8(relativePath);
    item.name = repairUTF8(name);
    return item;
}

} // namespace

FileItemDescriptor describeItem(std::string_view relativePath, std::string_view name, const struct stat& status) {
    auto item = describeByName(relativePath, name);
    item.isDirectory = S_ISDIR(status.st_mode);
    if (!item.isDirectory) item.size = status.st_size;
    const Date modified{status.st_mtim.tv_sec};
    if (modified >= earliestDate && modified <= latestDate) item.modifiedAt = modified;
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
        const bool isKnown = fstatat(dirfd(directory.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
        if (!isKnown && errno == ENOENT) continue;
        const auto path = relativePath.empty() ? std::string(name) : appendToPath(relativePath, name);
        // Of a volume that is away, say, the name is all there is to tell, and no reason to hide the others.
        auto item = isKnown ? describeItem(path, name, status) : describeByName(path, name);
        children.push_back({sortKey(name), std::move(item)});
    }
    std::ranges::sort(children, comesBefore);

    std::vector<FileItemDescriptor> items;
    items.reserve(children.size());
    for (auto& child : children)
        items.push_back(std::move(child.item));
    return items;
}

} // namespace bridge
