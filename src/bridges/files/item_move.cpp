#include "bridges/files/item_move.h"

#include "base/apple_bridge_error.h"
#include "base/exclusive_rename.h"
#include "base/platform_error.h"

#include <cerrno>
#include <fcntl.h>

namespace bridge {

namespace {

struct FoundItem {
    FolderEntry entry;
    struct stat status;
};

std::optional<FoundItem> find(const OpenRoot& root, const ConfinedPath& path) {
    auto entry = openParent(root, path);
    if (!entry) return std::nullopt;
    const auto status = examine(*entry, path.requested);
    if (!status) return std::nullopt;
    return FoundItem{std::move(*entry), *status};
}

FoundItem require(const OpenRoot& root, const ConfinedPath& path) {
    auto found = find(root, path);
    if (!found) throw AppleBridgeError::resourceNotFound(path.requested);
    return std::move(*found);
}

// Two spellings of one name, as on volumes that don't tell upper from lower case. Two links to one file are two items.
bool isSameItem(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && (S_ISDIR(one.st_mode) || one.st_nlink == 1);
}

AppleBridgeError samePlace() {
    return AppleBridgeError::malformedRequest("Source and destination must be different paths.");
}

AppleBridgeError destinationExists() {
    return AppleBridgeError::operationFailed("The destination exists and overwrite is false.");
}

void checkPlaces(const ConfinedPath& source, const ConfinedPath& destination) {
    if (source.isRoot() || destination.isRoot())
        throw AppleBridgeError::operationFailed(
            "An authorized root cannot be moved or overwritten through the bridge.");
    if (source == destination) throw samePlace();
    if (destination.isInside(source))
        throw AppleBridgeError::malformedRequest("A folder cannot be moved inside itself.");
}

void moveToTrash(const OpenRoot& root, const ConfinedPath& path, const FolderEntry& entry, Trash& trash) {
    trash.moveToTrash({entry.folder.get(), entry.name, appendToPath(root.path, path.relative())});
}

} // namespace

struct stat moveItem(const OpenRoot& root, const ConfinedPath& source, const ConfinedPath& destination,
                     Overwrite overwrite, Trash& trash) {
    checkPlaces(source, destination);
    const auto item = require(root, source);
    if (const auto existing = find(root, destination)) {
        if (overwrite == Overwrite::no) throw destinationExists();
        if (isSameItem(item.status, existing->status)) throw samePlace();
        // It would go to the Trash together with the item.
        if (source.isInside(destination))
            throw AppleBridgeError::operationFailed("A folder cannot be replaced by an item inside it.");
        moveToTrash(root, destination, existing->entry, trash);
    }

    const auto place = makeParent(root, destination);
    const int code = renameExclusively(item.entry.folder.get(), item.entry.name, place.folder.get(), place.name);
    if (code == EEXIST && overwrite == Overwrite::no) throw destinationExists();
    if (code != 0) throw PlatformError::fromErrno("The item could not be moved", code);

    struct stat moved;
    if (fstatat(place.folder.get(), place.name.c_str(), &moved, AT_SYMLINK_NOFOLLOW) != 0)
        throw PlatformError::fromErrno("The item could not be examined", errno);
    return moved;
}

void trashItem(const OpenRoot& root, const ConfinedPath& path, Trash& trash) {
    const auto item = require(root, path);
    moveToTrash(root, path, item.entry, trash);
}

} // namespace bridge
