#include "adapters/xdg/home_trash.h"

#include "adapters/xdg/trash_folder.h"
#include "base/make_folders.h"

#include <cerrno>
#include <fcntl.h>

namespace bridge {

namespace {

// Links on the way are the user's own arrangement of the home folder, and are followed.
FileDescriptor openTrash(const std::string& path) {
    makeFolders(path, "The Trash could not be created");
    FileDescriptor trash(open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!trash) throw PlatformError::fromErrno("The Trash could not be opened", errno);
    return trash;
}

} // namespace

void HomeTrash::moveToTrash(const TrashItem& item) {
    TrashFolder(openTrash(m_directory)).put(item, item.path);
}

} // namespace bridge
