#pragma once

#include <optional>
#include <string>
#include <sys/stat.h>

namespace bridge {

// Which file stands at a path, and whether there is anything in it.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool isRegular = false;
    bool isEmpty = true;

    bool isSameFile(const FileIdentity& other) const { return device == other.device && inode == other.inode; }
};

// Nothing when no file is there. Throws PlatformError, with `contents` as in DatabaseError, when that can't be seen.
std::optional<FileIdentity> identityOf(const std::string& path, const std::string& contents);

} // namespace bridge
