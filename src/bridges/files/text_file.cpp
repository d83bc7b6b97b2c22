#include "bridges/files/text_file.h"

#include "base/apple_bridge_error.h"
#include "base/atomic_file.h"
#include "base/text.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <fstream>

namespace bridge {

namespace {

constexpr int64_t defaultReadLimit = 200'000;
constexpr int64_t largestReadLimit = 1'000'000;

void requireFile(const struct stat& status) {
    if (S_ISDIR(status.st_mode)) throw PlatformError("The item is a folder, not a file.");
    if (!S_ISREG(status.st_mode)) throw PlatformError("The item is not a regular file.");
}

FileDescriptor openFile(const FolderEntry& entry, const std::string& requested) {
    const auto before = examine(entry, requested);
    if (!before) throw AppleBridgeError::resourceNotFound(requested);
    requireFile(*before);
    FileDescriptor file(
        openat(entry.folder.get(), entry.name.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    if (!file && errno == ELOOP) throw PathChanged{requested};
    if (!file && errno == ENOENT) throw AppleBridgeError::resourceNotFound(requested);
    if (!file) throw PlatformError::fromErrno("The file could not be opened", errno);
    // Again: something else may have taken the name between the two calls.
    requireFile(statusOf(file));
    return file;
}

// The size is only where to begin: the file may be growing, and some say 0 and have content all the same.
std::string readUpTo(const FileDescriptor& file, size_t most) {
    constexpr size_t step = 64 * 1024;
    const auto expected = static_cast<size_t>(statusOf(file).st_size);
    std::string content(std::min(expected + 1, most), '\0');
    size_t filled = 0;
    while (filled < most) {
        if (filled == content.size()) content.resize(std::min(filled + step, most));
        const ssize_t got = read(file.get(), content.data() + filled, content.size() - filled);
        if (got < 0 && errno != EINTR) throw PlatformError::fromErrno("The file could not be read", errno);
        if (got == 0) break;
        filled += static_cast<size_t>(std::max<ssize_t>(got, 0));
    }
    content.resize(filled);
    return content;
}

AppleBridgeError destinationExists() {
    return AppleBridgeError::operationFailed("The destination exists and overwrite is false.");
}

} // namespace

size_t readLimit(const std::optional<int64_t>& maximumBytes) {
    return static_cast<size_t>(std::clamp<int64_t>(maximumBytes.value_or(defaultReadLimit), 1, largestReadLimit));
}

std::string readTextFile(const FolderEntry& entry, const std::string& requested, size_t limit) {
    const auto file = openFile(entry, requested);
    auto content = readUpTo(file, limit + 1);
    if (content.size() > limit)
        throw AppleBridgeError::operationFailed("File exceeds the " + std::to_string(limit) + "-byte read limit.");
    if (!isUTF8(content)) throw AppleBridgeError::operationFailed("The selected file is not UTF-8 text.");
    return content;
}

struct stat writeTextFile(const FolderEntry& entry, const std::string& requested, std::string_view content,
                          Overwrite overwrite, mode_t newFileMode) {
    const auto existing = examine(entry, requested);
    if (existing && overwrite == Overwrite::no) throw destinationExists();
    if (existing) requireFile(*existing);
    const mode_t mode = existing ? existing->st_mode & 0777 : newFileMode;
    const auto ifExists = overwrite == Overwrite::yes ? IfExists::replace : IfExists::fail;
    try {
        return writeFileAtomically(entry.folder.get(), entry.name, content, mode, ifExists);
    } catch (const FileExistsError&) {
        throw destinationExists();
    }
}

mode_t modeOfNewFiles() {
    // Asking the process would mean setting its umask for a moment, and a file made in that moment would get it.
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "Umask:") {
            unsigned mask = 0;
            if (status >> std::oct >> mask) return 0666 & ~static_cast<mode_t>(mask);
        }
    return 0600;
}

} // namespace bridge
