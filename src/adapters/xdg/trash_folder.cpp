#include "adapters/xdg/trash_folder.h"

#include "adapters/xdg/trash_info.h"
#include "base/exclusive_rename.h"
#include "base/uuid.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace bridge {

namespace {

constexpr const char* failed = "The item could not be moved to the Trash";

// Writes the whole file or leaves none.
int writeInfo(int folder, const std::string& name, std::string_view text) {
    const FileDescriptor file(openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!file) return errno;
    while (!text.empty()) {
        const ssize_t written = write(file.get(), text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) {
            const int code = errno;
            unlinkat(folder, name.c_str(), 0);
            return code;
        }
        text.remove_prefix(static_cast<size_t>(written));
    }
    return 0;
}

bool isSingleName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
           name.find('\0') == std::string::npos;
}

} // namespace

FileDescriptor openPrivateFolder(int parent, const std::string& name) {
    if (mkdirat(parent, name.c_str(), 0700) != 0 && errno != EEXIST)
        throw PlatformError::fromErrno("The Trash could not be created", errno);
    FileDescriptor folder(openat(parent, name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder) throw PlatformError::fromErrno("The Trash could not be opened", errno);
    return folder;
}

TrashFolder::TrashFolder(const FileDescriptor& trash)
    : m_files(openPrivateFolder(trash.get(), "files")), m_info(openPrivateFolder(trash.get(), "info")) {}

void TrashFolder::put(const TrashItem& item, const std::string& origin) const {
    if (!isSingleName(item.name)) throw PlatformError("The item's name is not the name of one item.");
    // Before anything is made: a missing item shall leave no trace.
    struct stat status;
    if (fstatat(item.folder, item.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        throw PlatformError::fromErrno(failed, errno);

    const auto info = trashInfo(origin, time(nullptr));
    // A few readable names, then one that nothing has: a thousand items of one name must not try each other's.
    constexpr int readableNames = 20;
    for (int number = 1; number <= readableNames; ++number)
        if (putAs(trashName(item.name, number == 1 ? "" : std::to_string(number)), item, info)) return;
    if (!putAs(trashName(item.name, makeUUID()), item, info)) throw PlatformError::fromErrno(failed, EEXIST);
}

bool TrashFolder::putAs(const std::string& name, const TrashItem& item, const std::string& info) const {
    const auto infoName = name + ".trashinfo";
    if (const int code = writeInfo(m_info.get(), infoName, info); code == EEXIST)
        return false;
    else if (code != 0)
        throw PlatformError::fromErrno(failed, code);

    const int code = renameExclusively(item.folder, item.name, m_files.get(), name);
    if (code == 0) return true;
    unlinkat(m_info.get(), infoName.c_str(), 0);
    if (code == EEXIST) return false;
    if (code == EXDEV) throw TrashOnAnotherVolume();
    throw PlatformError::fromErrno(failed, code);
}

} // namespace bridge
