#include "adapters/libreoffice/user_file.h"

#include "adapters/libreoffice/file_trouble.h"
#include "adapters/libreoffice/protocol.h"
#include "base/atomic_file.h"
#include "base/text.h"

#include <fcntl.h>
#include <fstream>
#include <vector>

namespace bridge::office {

namespace {

// It goes through memory on its way to the user's folder.
constexpr int64_t largestStored = int64_t{512} << 20;

struct Place {
    std::string folder, name;
};

Place placeOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == path.npos || slash + 1 == path.size())
        throw ScriptError(failed, "\"" + repairUTF8(path) + "\" is no path of a file.");
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

FileIdentity identityOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

FileDescriptor openFolderOf(const std::string& path) {
    FileDescriptor folder(open(placeOf(path).folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!folder) throw fileTrouble("The folder of " + quotedName(path) + " can't be opened", errno);
    return folder;
}

// What the process' umask leaves of rw-rw-rw-. To ask the process itself would mean to change it for a moment.
mode_t modeOfNewFiles() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "Umask:" && status >> word) return 0666 & ~static_cast<mode_t>(std::stoul(word, nullptr, 8));
    return 0600;
}

FileIdentity write(const std::string& path, const std::string& content, mode_t mode, IfExists ifExists) {
    const auto folder = openFolderOf(path);
    try {
        return identityOf(writeFileAtomically(folder.get(), placeOf(path).name, content, mode, ifExists));
    } catch (const FileExistsError&) {
        throw fileTrouble(quotedName(path) + " can't be written", EEXIST);
    } catch (const PlatformError& error) {
        throw ScriptError(ioError, quotedName(path) + " can't be written. " + error.what() + ".");
    }
}

template <typename Take> void readAll(int file, const Take& take) {
    std::vector<char> buffer(size_t{1} << 18);
    while (true) {
        const auto count = read(file, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw fileTrouble("A document can't be read", errno);
        if (count == 0) return;
        take(std::string_view(buffer.data(), static_cast<size_t>(count)));
    }
}

void writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw fileTrouble("The document can't be copied", errno);
        bytes.remove_prefix(static_cast<size_t>(count));
    }
}

} // namespace

std::string quotedName(const std::string& path) {
    return "\"" + repairUTF8(path.substr(path.rfind('/') + 1)) + "\"";
}

UserFile openUserFile(const std::string& path, int64_t largest) {
    const auto folder = openFolderOf(path);
    // A pipe in that place must not keep us waiting.
    UserFile opened{FileDescriptor(openat(folder.get(), placeOf(path).name.c_str(),
                                          O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)),
                    {}};
    if (!opened.file && errno == ELOOP)
        throw ScriptError(failed, quotedName(path) + " is a link, and links are not followed.");
    if (!opened.file) throw fileTrouble(quotedName(path) + " can't be opened", errno);
    struct stat status;
    if (fstat(opened.file.get(), &status) != 0) throw fileTrouble(quotedName(path) + " can't be examined", errno);
    if (S_ISDIR(status.st_mode))
        throw ScriptError(failed, quotedName(path) + " is a folder. Documents that consist of a folder can't be "
                                                     "opened here; save it as a single file first.");
    if (!S_ISREG(status.st_mode)) throw ScriptError(failed, quotedName(path) + " is no file.");
    if (status.st_size > largest)
        throw ScriptError(failed, quotedName(path) + " is too large. Documents can have up to " +
                                      std::to_string(largest >> 20) + " MB.");
    opened.identity = identityOf(status);
    return opened;
}

void copyFile(const UserFile& from, int folder, const std::string& name) {
    const FileDescriptor copy(openat(folder, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!copy) throw fileTrouble("The document can't be copied", errno);
    readAll(from.file.get(), [&](std::string_view bytes) { writeAll(copy.get(), bytes); });
}

std::string readStored(int folder, const std::string& name) {
    const FileDescriptor file(openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status;
    if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        throw ScriptError(failed, "LibreOffice has written nothing.");
    if (status.st_size > largestStored) throw ScriptError(failed, "What LibreOffice has written is too large.");
    std::string content;
    content.reserve(static_cast<size_t>(status.st_size));
    readAll(file.get(), [&](std::string_view bytes) { content += bytes; });
    return content;
}

void checkUntouched(const std::string& path, const FileIdentity& identity) {
    const auto folder = openFolderOf(path);
    const auto name = placeOf(path).name;
    if (faccessat(folder.get(), (".~lock." + name + "#").c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0)
        throw ScriptError(failed, quotedName(path) + " is open in another program.");
    struct stat status;
    if (fstatat(folder.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        throw fileTrouble(quotedName(path) + " can't be saved", errno);
    if (identityOf(status) != identity)
        throw ScriptError(failed, quotedName(path) + " was changed by another program since it was opened.");
}

void checkFree(const std::string& path) {
    const auto folder = openFolderOf(path);
    if (faccessat(folder.get(), placeOf(path).name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0)
        throw fileTrouble(quotedName(path) + " can't be written", EEXIST);
}

FileIdentity replaceUserFile(const std::string& path, const FileIdentity& identity, const std::string& content) {
    checkUntouched(path, identity);
    struct stat status;
    if (lstat(path.c_str(), &status) != 0) throw fileTrouble(quotedName(path) + " can't be saved", errno);
    return write(path, content, status.st_mode & 07777, IfExists::replace);
}

FileIdentity writeNewFile(const std::string& path, const std::string& content) {
    return write(path, content, modeOfNewFiles(), IfExists::fail);
}

} // namespace bridge::office
