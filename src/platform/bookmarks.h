#pragma once

#include <memory>
#include <string>

namespace bridge {

// A folder found again. `path` is absolute. A stale bookmark still found its folder, but should be made anew.
struct ResolvedBookmark {
    std::string path;
    bool isStale = false;
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
