#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace bridge {

// Which folder it is as long as it stands where it stands: the numbers that stat() gives.
struct FolderIdentity {
    uint64_t device = 0;
    uint64_t inode = 0;
    bool operator==(const FolderIdentity&) const = default;
};

// A folder found again. `path` is absolute. A stale bookmark still found its folder, but should be made anew.
// Whoever opens `path` compares `identity`, where there is one: another folder may have taken the place meanwhile.
struct ResolvedBookmark {
    std::string path;
    bool isStale = false;
    std::optional<FolderIdentity> identity = std::nullopt;
};

// Remembers folders across restarts. A bookmark is an opaque run of bytes that names one folder, not one path: when the
// folder was renamed the bookmark finds it (and is stale) or fails; when another folder stands in its place it fails.
// It never silently names another folder. Main thread only; nothing here waits for the user.
class Bookmarks {
public:
    virtual ~Bookmarks() = default;

    // Throws PlatformError when `path` is not a folder that can be opened.
    virtual std::string create(const std::string& path) = 0;

    // Throws PlatformError when the folder is gone, was replaced or can't be reached, or `bookmark` is no bookmark.
    virtual ResolvedBookmark resolve(const std::string& bookmark) = 0;

    // Between the making and the destruction of the returned object the program has the right to use the folder.
    // Nothing is returned where the platform asks for no such bracket or refuses it.
    virtual std::shared_ptr<void> startAccessing(const std::string& bookmark) = 0;
};

} // namespace bridge
