#pragma once

#include "base/file_descriptor.h"
#include "base/platform_error.h"
#include "platform/trash.h"

#include <string>

namespace bridge {

// The Trash lies on another volume than the item, and a move would be a copy.
class TrashOnAnotherVolume : public PlatformError {
public:
    TrashOnAnotherVolume() : PlatformError("The item is on another volume than the Trash.") {}
};

// One Trash directory as the freedesktop.org Trash standard 1.0 lays it out: files/NAME and info/NAME.trashinfo.
class TrashFolder {
public:
    // Opens the two folders inside it, and makes them for this user alone where they are missing. Throws PlatformError.
    explicit TrashFolder(const FileDescriptor& trash);

    // Moves the item in under a free name. `origin` is what its info file says it came from: an absolute path, or one
    // relative to the volume. Throws PlatformError and leaves the item and the Trash as they were.
    void put(const TrashItem& item, const std::string& origin) const;

private:
    // False when the name is taken.
    bool putAs(const std::string& name, const TrashItem& item, const std::string& info) const;

    FileDescriptor m_files;
    FileDescriptor m_info;
};

// Opens the folder `name` of an open folder without following a link, and makes it for this user alone (0700) when it
// is missing. Throws PlatformError.
FileDescriptor openPrivateFolder(int parent, const std::string& name);

} // namespace bridge
