#pragma once

#include "platform/bookmarks.h"

namespace bridge {

// Bookmarks by path and identity. A bookmark holds the canonical path of the folder and what tells it from any other:
// device, inode, time of birth and the kernel's file handle, as far as its file system gives them. A folder that is no
// longer at its path is looked for in the folder it was in, so a renamed one is found; one moved elsewhere is not.
// There is nothing to bracket: the program may open what its user may.
class PosixBookmarks : public Bookmarks {
public:
    std::string create(const std::string& path) override;
    ResolvedBookmark resolve(const std::string& bookmark) override;
    std::shared_ptr<void> startAccessing(const std::string& bookmark) override;
};

} // namespace bridge
