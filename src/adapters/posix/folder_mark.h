#pragma once

#include "base/record.h"
#include "platform/bookmarks.h"

namespace bridge {

// What tells one folder from every other, also from one that gets its inode number after it is gone. Numbers are
// decimal text: an inode number may be larger than JSON can say exactly.
struct FolderMark {
    std::string device;
    std::string inode;
    std::optional<std::string> birth; // "seconds.nanoseconds"
    std::optional<Bytes> handle;      // the kernel's file handle: its type, then its bytes

    static constexpr auto fields() {
        return std::tuple{required("device", &FolderMark::device), required("inode", &FolderMark::inode),
                          optional("birth", &FolderMark::birth), optional("handle", &FolderMark::handle)};
    }
};
static_assert(listsEveryMember<FolderMark>());

enum class SameFolder {
    no,
    yes,
    afterRemount, // the same, but its volume has another device number
};

SameFolder compare(const FolderMark& then, const FolderMark& now);

struct MarkedFolder {
    FolderMark mark;
    FolderIdentity identity;
};

// Of the entry `name` of an open folder, without following a link there; of the open folder itself when `name` is
// empty. Nothing, with errno, when it can't be examined or is no folder (ENOTDIR).
std::optional<MarkedFolder> markFolder(int folder, const std::string& name);

} // namespace bridge
