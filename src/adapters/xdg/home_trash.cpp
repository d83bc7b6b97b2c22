#include "adapters/xdg/home_trash.h"

#include "adapters/xdg/trash_folder.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace bridge {

namespace {

// Links on the way are the user's own arrangement of the home folder, and are followed.
FileDescriptor openTrash(const std::string& path) {
    for (size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const auto part = path.substr(0, end);
        if (mkdir(part.c_str(), 0700) != 0 && errno != EEXIST && errno != EROFS && errno != EACCES)
            throw PlatformError::fromErrno("The Trash could not be created", errno);
        if (end == std::string::npos) break;
    }
    FileDescriptor trash(open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!trash) throw PlatformError::fromErrno("The Trash could not be opened", errno);
    return trash;
}

} // namespace

void HomeTrash::moveToTrash(const TrashItem& item) {
    TrashFolder(openTrash(m_directory)).put(item, item.path);
}

} // namespace bridge
