#include "bridges/files/file_data_bridge.h"

#include "base/apple_bridge_error.h"
#include "base/platform_error.h"
#include "bridges/files/file_item.h"
#include "bridges/files/item_move.h"
#include "bridges/files/text_file.h"

#include <fcntl.h>
#include <unistd.h>

namespace bridge {

namespace {

// How often a path is resolved anew when links come and go on the way.
constexpr int maximumAttempts = 8;

// `action` resolves its paths and acts on them, and does nothing that could not be done again before a PathChanged.
template <typename Action> auto whilePathsChange(Action action) {
    for (int attempt = 1;; ++attempt) {
        try {
            return action();
        } catch (const PathChanged& change) {
            if (attempt == maximumAttempts) throw AppleBridgeError::unsafePath(change.requested);
        }
    }
}

bool isThere(const OpenRoot& root, const ConfinedPath& path) {
    if (path.isRoot()) return true;
    const auto entry = openParent(root, path);
    return entry && examine(*entry, path.requested).has_value();
}

Overwrite overwriteIf(bool wanted) {
    return wanted ? Overwrite::yes : Overwrite::no;
}

} // namespace

FileDataBridge::FileDataBridge(UserDefaults& defaults, Bookmarks& bookmarks, FolderChooser& chooser, Trash& trash,
                               FolderWalk walk)
    : m_rootList(defaults, bookmarks, roots),
      m_bookmarks(bookmarks),
      m_chooser(chooser),
      m_trash(trash),
      m_walk(walk),
      m_newFileMode(modeOfNewFiles()) {}

Task<std::optional<AuthorizedFileRootDescriptor>> FileDataBridge::chooseFolder() {
    FolderQuestion question{"Choose an iCloud Drive folder for Brindlefox",
                            "Brindlefox can only access folders you explicitly add here.", "Allow Folder"};
    const auto path = co_await m_chooser.choose(std::move(question));
    if (!path) co_return std::nullopt;
    co_return addFolder(*path);
}

std::optional<AuthorizedFileRootDescriptor> FileDataBridge::addFolder(const std::string& path) {
    return m_rootList.add(path);
}

void FileDataBridge::removeRoot(const std::string& id) {
    m_rootList.remove(id);
}

std::set<std::string> FileDataBridge::readOnlyRootIDs() const {
    std::set<std::string> found;
    for (const auto& root : roots.get())
        if (faccessat(AT_FDCWD, root.path.c_str(), W_OK | X_OK, AT_EACCESS) != 0) found.insert(root.id);
    return found;
}

FileDataBridge::Access FileDataBridge::beginAccess(const std::string& rootID) {
    const std::string bookmark = m_rootList.find(rootID).bookmark.value;
    const auto resolved = m_bookmarks.resolve(bookmark);
    auto right = m_bookmarks.startAccessing(bookmark);
    if (resolved.isStale) refreshBookmark(rootID, resolved);
    return {std::move(right), openRoot(resolved.path, resolved.identity, m_walk)};
}

void FileDataBridge::refreshBookmark(const std::string& rootID, const ResolvedBookmark& stale) {
    auto fresh = m_bookmarks.create(stale.path);
    // Made by path: it must not be another folder that the root goes on as.
    if (m_bookmarks.resolve(fresh).identity != stale.identity)
        throw PlatformError("Another folder took the place of the authorized folder.");
    m_rootList.replaceBookmark(rootID, std::move(fresh));
}

bool FileDataBridge::fileExists(const std::string& rootID, const std::string& requested) {
    return withAuthorizedRoot(rootID, [&](const OpenRoot& root) {
        return whilePathsChange(
            [&] { return isThere(root, resolveConfinedPath(root.path, requested, PathMayBeMissing::yes)); });
    });
}

std::string FileDataBridge::confinedURL(const std::string& rootID, const std::string& requested,
                                        PathMayBeMissing mayBeMissing) {
    return withAuthorizedRoot(rootID, [&](const OpenRoot& root) {
        return whilePathsChange([&] {
            const auto path = resolveConfinedPath(root.path, requested, mayBeMissing);
            // Also for what may be missing: no link may stand in the way.
            if (!isThere(root, path) && mayBeMissing == PathMayBeMissing::no)
                throw AppleBridgeError::resourceNotFound(requested);
            return appendToPath(root.path, path.relative());
        });
    });
}

std::string FileDataBridge::makeWayTo(const std::string& rootID, const std::string& requested) {
    return withAuthorizedRoot(rootID, [&](const OpenRoot& root) {
        return whilePathsChange([&] {
            const auto path = resolveConfinedPath(root.path, requested, PathMayBeMissing::yes);
            if (path.isRoot()) throw AppleBridgeError::unsafePath(requested);
            examine(makeParent(root, path), requested);
            return appendToPath(root.path, path.relative());
        });
    });
}

std::vector<FileItemDescriptor> FileDataBridge::listFiles(const ListFilesRequest& request) {
    return withAuthorizedRoot(request.rootID, [&](const OpenRoot& root) {
        return whilePathsChange([&] {
            const auto path = resolveConfinedPath(root.path, request.path, PathMayBeMissing::no);
            const auto folder = openFolder(root, path);
            if (!folder) throw AppleBridgeError::resourceNotFound(request.path);
            return listFolder(folder, path.relative());
        });
    });
}

TextFileContents FileDataBridge::readText(const ReadTextFileRequest& request) {
    const size_t limit = readLimit(request.maximumBytes);
    return withAuthorizedRoot(request.rootID, [&](const OpenRoot& root) {
        return whilePathsChange([&] {
            const auto path = resolveConfinedPath(root.path, request.path, PathMayBeMissing::no);
            if (path.isRoot()) throw PlatformError("The item is a folder, not a file.");
            const auto entry = openParent(root, path);
            if (!entry) throw AppleBridgeError::resourceNotFound(request.path);
            auto content = readTextFile(*entry, request.path, limit);
            const auto bytes = static_cast<int64_t>(content.size());
            return TextFileContents{request.rootID, request.path, std::move(content), bytes};
        });
    });
}

void FileDataBridge::checkLength(const WriteTextFileRequest& request) {
    if (request.content.size() > maximumTextWrite)
        throw AppleBridgeError::malformedRequest("Text-file writes cannot exceed 1,000,000 UTF-8 bytes.");
}

FileItemDescriptor FileDataBridge::writeText(const WriteTextFileRequest& request) {
    checkLength(request);
    return withAuthorizedRoot(request.rootID, [&](const OpenRoot& root) {
        return whilePathsChange([&] {
            const auto path = resolveConfinedPath(root.path, request.path, PathMayBeMissing::yes);
            if (path.isRoot()) throw AppleBridgeError::unsafePath(request.path);
            const auto entry = makeParent(root, path);
            const auto overwrite = overwriteIf(request.overwrite);
            return describeItem(path, writeTextFile(entry, request.path, request.content, overwrite, m_newFileMode));
        });
    });
}

FileItemDescriptor FileDataBridge::createDirectory(const CreateDirectoryRequest& request) {
    return withAuthorizedRoot(request.rootID, [&](const OpenRoot& root) {
        return whilePathsChange([&] {
            const auto path = resolveConfinedPath(root.path, request.path, PathMayBeMissing::yes);
            if (path.isRoot()) throw AppleBridgeError::unsafePath(request.path);
            const auto folder = makeFolder(root, path);
            return describeItem(path, statusOf(folder));
        });
    });
}

FileItemDescriptor FileDataBridge::moveFile(const MoveFileRequest& request) {
    return withAuthorizedRoot(request.rootID, [&](const OpenRoot& root) {
        return whilePathsChange([&] {
            const auto source = resolveConfinedPath(root.path, request.sourcePath, PathMayBeMissing::no);
            const auto destination = resolveConfinedPath(root.path, request.destinationPath, PathMayBeMissing::yes);
            return describeItem(destination,
                                moveItem(root, source, destination, overwriteIf(request.overwrite), m_trash));
        });
    });
}

void FileDataBridge::deleteFile(const DeleteFileRequest& request) {
    withAuthorizedRoot(request.rootID, [&](const OpenRoot& root) {
        whilePathsChange([&] {
            const auto path = resolveConfinedPath(root.path, request.path, PathMayBeMissing::no);
            if (path.isRoot())
                throw AppleBridgeError::operationFailed("An authorized root cannot be deleted through the bridge.");
            trashItem(root, path, m_trash);
        });
    });
}

} // namespace bridge
