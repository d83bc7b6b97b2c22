#pragma once

#include "base/task.h"
#include "bridges/files/file_records.h"
#include "bridges/files/file_root_list.h"
#include "bridges/files/folder_access.h"
#include "platform/folder_chooser.h"
#include "platform/trash.h"

#include <memory>
#include <set>

namespace bridge {

// Files, and only in folders that the user chose. A request names such a root by its id and a place in it by a relative
// path; nothing outside a root is ever read, written, listed, created, moved or trashed, whatever others do with its
// folders and links meanwhile.
//
// Every operation is synchronous and on the main thread, and opens its root for its own length only. Besides what is
// said below each throws AppleBridgeError resourceNotFound for an unknown root or a path that must exist but doesn't,
// unsafePath for a path that is absolute, has a ".." or leads outside, and PlatformError as the platform reports it,
// also when the root's folder can't be found any more.
class FileDataBridge {
public:
    static constexpr std::string_view rootsKey = FileRootList::defaultsKey;

    FileDataBridge(UserDefaults& defaults, Bookmarks& bookmarks, FolderChooser& chooser, Trash& trash,
                   FolderWalk walk = FolderWalk::whole);

    // What the dashboard shows and clients may ask for, in the order of adding. Watch it; only the bridge sets it.
    Published<std::vector<AuthorizedFileRootDescriptor>> roots;

    // Asks the user for a folder and adds it. Nothing when the user cancelled or the folder could not be added.
    Task<std::optional<AuthorizedFileRootDescriptor>> chooseFolder();
    // Adds a folder that the user has chosen already.
    std::optional<AuthorizedFileRootDescriptor> addFolder(const std::string& path);
    // Forgets every folder with the id. Throws AppleBridgeError resourceNotFound when there is none.
    void removeRoot(const std::string& id);
    // Looks anew which of them are there, and where.
    void refreshRoots() { m_rootList.rebuild(); }
    // Those of `roots` in which this user can't change anything.
    std::set<std::string> readOnlyRootIDs() const;

    // Opens the root, calls body(const OpenRoot&) and returns its result; closes it again also when the body throws.
    template <typename Body> auto withAuthorizedRoot(const std::string& rootID, Body body) {
        const auto access = beginAccess(rootID);
        return body(access.root);
    }

    // Whether anything is at the path.
    bool fileExists(const std::string& rootID, const std::string& path);
    // The absolute path, free of links. For handing to another program, which then goes there by itself.
    std::string confinedURL(const std::string& rootID, const std::string& path, PathMayBeMissing mayBeMissing);
    // The same for something new, once the missing folders on the way to it are made.
    std::string makeWayTo(const std::string& rootID, const std::string& path);

    std::vector<AuthorizedFileRootDescriptor> authorizedRoots() const { return roots.get(); }

    // The children that are not hidden, folders first, by name.
    std::vector<FileItemDescriptor> listFiles(const ListFilesRequest& request);
    // At most `maximumBytes` (1 to 1,000,000; 200,000 unless told): a longer file is operationFailed, as is one that
    // is not UTF-8.
    TextFileContents readText(const ReadTextFileRequest& request);
    // Makes missing folders on the way. Content above 1,000,000 bytes is malformedRequest, before anything else is
    // looked at; the root itself is unsafePath.
    FileItemDescriptor writeText(const WriteTextFileRequest& request);
    // That first look alone.
    static void checkLength(const WriteTextFileRequest& request);
    // Also makes missing folders on the way; a folder that exists is fine. The root itself is unsafePath.
    FileItemDescriptor createDirectory(const CreateDirectoryRequest& request);
    // Nothing is undone: an overwritten item stays in the Trash even if the move then fails.
    FileItemDescriptor moveFile(const MoveFileRequest& request);
    // To the user's Trash.
    void deleteFile(const DeleteFileRequest& request);

private:
    struct Access {
        std::shared_ptr<void> right; // before the root, so that it outlives the open folder
        OpenRoot root;
    };
    Access beginAccess(const std::string& rootID);
    void refreshBookmark(const std::string& rootID, const ResolvedBookmark& stale);

    FileRootList m_rootList;
    Bookmarks& m_bookmarks;
    FolderChooser& m_chooser;
    Trash& m_trash;
    FolderWalk m_walk;
    mode_t m_newFileMode;
};

} // namespace bridge
