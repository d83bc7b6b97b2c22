#pragma once

#include "base/file_descriptor.h"
#include "bridges/files/path_confinement.h"
#include "platform/bookmarks.h"

#include <optional>
#include <string>
#include <sys/stat.h>

namespace bridge {

// How folders are opened so that no link is followed on the way. `whole` asks the kernel for the whole path at once and
// falls back to `byName` where the kernel can't (or a sandbox forbids it); `byName` opens one name after another.
enum class FolderWalk { whole, byName };

// A user's folder, open for the length of one operation. Its descriptor settles which folder; the path is for messages
// and for resolving links.
struct OpenRoot {
    std::string path; // canonical
    FileDescriptor folder;
    FolderWalk walk = FolderWalk::whole;
};

// Opens the folder at `path`, whichever way leads there. Throws PlatformError when it isn't the one that `identity`
// says.
OpenRoot openRoot(const std::string& path, const std::optional<FolderIdentity>& identity, FolderWalk walk);

// Something on the way is not what it was when the path was resolved: a link where a folder stood. Resolve it again.
struct PathChanged {
    std::string requested;
};

// An entry of an open folder: all that is done to it is done through this descriptor and this single name.
struct FolderEntry {
    FileDescriptor folder;
    std::string name;
};

// Everything below takes a resolved path, not the root itself unless it says so, and follows no link whatever others do
// with the folders meanwhile. All throw PathChanged when a link stands in the way, PlatformError for other failures.

// The folder at `path`, which may be the root, as a descriptor that only names it (for the ...at() calls). Empty when
// there is none: it is missing, or not a folder.
FileDescriptor openFolder(const OpenRoot& root, const ConfinedPath& path);

// The same for the folder that holds `path`.
std::optional<FolderEntry> openParent(const OpenRoot& root, const ConfinedPath& path);

// Makes what is missing of the folder at `path`, and opens it. `makeParent` does so for the folder that holds `path`.
FileDescriptor makeFolder(const OpenRoot& root, const ConfinedPath& path);
FolderEntry makeParent(const OpenRoot& root, const ConfinedPath& path);

// What the entry is; nothing when it isn't there. `requested` names it in PathChanged.
std::optional<struct stat> examine(const FolderEntry& entry, const std::string& requested);

struct stat statusOf(const FileDescriptor& open);

} // namespace bridge
