#include "base/atomic_file.h"

#include "base/exclusive_rename.h"
#include "base/uuid.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>

namespace bridge {

namespace {

// The file under its temporary name; taken away again unless it reached its place.
class TemporaryFile {
public:
    TemporaryFile(int folder, mode_t mode) : m_folder(folder), m_name(".brindlefox-" + makeUUID() + ".tmp") {
        m_file =
            FileDescriptor(openat(folder, m_name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (!m_file) throw PlatformError::fromErrno("The file could not be created", errno);
        if (fchmod(m_file.get(), mode) != 0) fail("The file's permissions could not be set");
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!m_placed) unlinkat(m_folder, m_name.c_str(), 0);
    }

    void write(std::string_view content) {
        while (!content.empty()) {
            const ssize_t written = ::write(m_file.get(), content.data(), content.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) throw PlatformError::fromErrno("The file could not be written", errno);
            content.remove_prefix(static_cast<size_t>(written));
        }
        if (fsync(m_file.get()) != 0) throw PlatformError::fromErrno("The file could not be saved to disk", errno);
    }

    void place(const std::string& name, IfExists ifExists) {
        int code = 0;
        if (ifExists == IfExists::fail)
            code = renameExclusively(m_folder, m_name, m_folder, name);
        else if (renameat(m_folder, m_name.c_str(), m_folder, name.c_str()) != 0)
            code = errno;
        if (code == EEXIST && ifExists == IfExists::fail) throw FileExistsError("A file of that name exists");
        if (code != 0) throw PlatformError::fromErrno("The file could not be put in its place", code);
        m_placed = true;
    }

    struct stat status() const {
        struct stat status;
        if (fstat(m_file.get(), &status) != 0) throw PlatformError::fromErrno("The file could not be examined", errno);
        return status;
    }

private:
    [[noreturn]] void fail(const char* what) {
        const int code = errno;
        unlinkat(m_folder, m_name.c_str(), 0);
        throw PlatformError::fromErrno(what, code);
    }

    int m_folder;
    std::string m_name;
    FileDescriptor m_file;
    bool m_placed = false;
};

void flush(int folder) {
    // Opened anew: the caller's descriptor may be one that only names the folder. A folder that may be written but not
    // read can't be flushed; its file is in place all the same.
    const FileDescriptor readable(openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!readable && errno == EACCES) return;
    // Some file systems can't flush a folder and say EINVAL; the rename itself is done by then.
    if ((!readable || fsync(readable.get()) != 0) && errno != EINVAL)
        throw PlatformError::fromErrno("The folder could not be saved to disk", errno);
}

} // namespace

struct stat writeFileAtomically(int folder, const std::string& name, std::string_view content, mode_t mode,
                                IfExists ifExists) {
    TemporaryFile file(folder, mode);
    file.write(content);
    file.place(name, ifExists);
    flush(folder);
    return file.status();
}

} // namespace bridge
