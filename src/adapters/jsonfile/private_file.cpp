#include "adapters/jsonfile/private_file.h"

#include "base/atomic_file.h"
#include "base/exclusive_rename.h"
#include "base/file_descriptor.h"
#include "base/make_folders.h"
#include "base/platform_error.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace bridge {

namespace {

FileDescriptor openFolder(const std::string& path) {
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

// Empty when there is no such file.
FileDescriptor openChecked(int folder, const std::string& name, Trust trust) {
    // Without O_NONBLOCK a pipe put in the file's place would hang the program.
    const int links = trust == Trust::oursOnly ? O_NOFOLLOW : 0;
    FileDescriptor file(openat(folder, name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | links));
    if (!file && errno == ENOENT) return file;
    if (!file) throw PlatformError::fromErrno("The file could not be opened", errno);

    struct stat status;
    if (fstat(file.get(), &status) != 0) throw PlatformError::fromErrno("The file could not be examined", errno);
    if (!S_ISREG(status.st_mode)) throw PlatformError("The file could not be opened: it is no regular file.");
    if (trust == Trust::any) return file;
    if (status.st_uid != geteuid()) throw PlatformError("The file belongs to another user.");
    if ((status.st_mode & 077) != 0 && fchmod(file.get(), 0600) != 0)
        throw PlatformError::fromErrno("The file is open to others", errno);
    return file;
}

} // namespace

PrivateFile::PrivateFile(std::string path, Trust trust) : m_trust(trust) {
    const std::filesystem::path whole(std::move(path));
    m_folder = whole.parent_path();
    m_name = whole.filename();
}

std::optional<std::string> PrivateFile::read() const {
    const auto folder = openFolder(m_folder);
    if (!folder && errno == ENOENT) return std::nullopt;
    if (!folder) throw PlatformError::fromErrno("The folder could not be opened", errno);
    const auto file = openChecked(folder.get(), m_name, m_trust);
    if (!file) return std::nullopt;

    std::string content;
    std::array<char, 16384> buffer;
    while (true) {
        const ssize_t count = ::read(file.get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw PlatformError::fromErrno("The file could not be read", errno);
        if (count == 0) return content;
        content.append(buffer.data(), static_cast<size_t>(count));
    }
}

void PrivateFile::write(std::string_view content) const {
    makeFolders(m_folder, "The folder could not be made");
    const auto folder = openFolder(m_folder);
    if (!folder) throw PlatformError::fromErrno("The folder could not be opened", errno);
    if (m_trust == Trust::oursOnly) openChecked(folder.get(), m_name, m_trust);
    writeFileAtomically(folder.get(), m_name, content, 0600, IfExists::replace);
}

void PrivateFile::setAside() const {
    const auto folder = openFolder(m_folder);
    if (!folder) throw PlatformError::fromErrno("The folder could not be opened", errno);
    int code = EEXIST;
    for (int number = 1; code == EEXIST; ++number)
        code = renameExclusively(folder.get(), m_name, folder.get(), m_name + ".damaged-" + std::to_string(number));
    if (code != 0) throw PlatformError::fromErrno("The damaged file could not be set aside", code);
}

} // namespace bridge
