#pragma once

#include <string>

namespace bridge {

// One entry of a folder. The descriptor settles which folder; the path is what a user would restore the item to, and
// may by now lead elsewhere.
struct TrashItem {
    int folder;       // an open directory; stays the caller's
    std::string name; // a single path component in it
    std::string path; // absolute
};

// The user's Trash: recoverable, never an immediate removal. Main thread only.
class Trash {
public:
    virtual ~Trash() = default;

    // Moves the item out of its folder into the Trash under a free name, and records where it came from. A link is
    // moved itself, not what it points to. Throws PlatformError, and leaves the item where it was, when it can't be
    // trashed (also when the entry is gone).
    virtual void moveToTrash(const TrashItem& item) = 0;
};

} // namespace bridge
