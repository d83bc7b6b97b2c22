#include "adapters/libreoffice/work_folder.h"

#include "base/make_folders.h"
#include "base/platform_error.h"
#include "base/uuid.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>

namespace bridge::office {

namespace {

constexpr const char* cannotBeMade = "The office program's folder can't be made";

FileDescriptor openFolder(const std::string& path) {
    FileDescriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder) throw PlatformError::fromErrno("The office program's folder can't be opened", errno);
    return folder;
}

void removeAll(const std::string& path) {
    std::error_code none;
    std::filesystem::remove_all(path, none);
}

// Whose lock can be had is not in use.
void sweep(const std::string& parent) {
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(parent, none)) {
        const FileDescriptor folder(open(entry.path().c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (folder && flock(folder.get(), LOCK_EX | LOCK_NB) == 0) removeAll(entry.path());
    }
}

} // namespace

WorkFolder::WorkFolder(const std::string& parent) : m_path(parent + "/" + makeUUID()) {
    makeFolders(parent, cannotBeMade);
    const auto all = openFolder(parent);
    // Until this folder has its lock nobody else may sweep.
    flock(all.get(), LOCK_EX);
    sweep(parent);
    makeFolders(m_path, cannotBeMade);
    m_lock = openFolder(m_path);
    flock(m_lock.get(), LOCK_EX);
    makeFolders(documents(), cannotBeMade);
}

WorkFolder::~WorkFolder() {
    removeAll(m_path);
}

std::string WorkFolder::makeFolder() const {
    const auto name = makeUUID();
    makeFolders(documents() + "/" + name, cannotBeMade);
    return name;
}

FileDescriptor WorkFolder::open(const std::string& folder) const {
    return openFolder(documents() + "/" + folder);
}

void WorkFolder::remove(const std::string& folder) const {
    removeAll(documents() + "/" + folder);
}

} // namespace bridge::office
