#include "app/import/input_file.h"

#include "base/file_descriptor.h"
#include "base/platform_error.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace bridge {

namespace {

constexpr size_t largest = 256 << 20;

[[noreturn]] void failTooLarge() {
    throw PlatformError("It is larger than 256 MB, more than can be taken at once.");
}

std::string reason(int code) {
    return std::string(std::strerror(code)) + ".";
}

std::string readAll(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0) throw PlatformError(reason(errno));
    if (S_ISDIR(status.st_mode)) throw PlatformError("It is a folder.");
    if (S_ISREG(status.st_mode) && static_cast<size_t>(status.st_size) > largest) failTooLarge();
    std::string content;
    char part[1 << 16];
    for (;;) {
        const ssize_t count = read(descriptor, part, sizeof part);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw PlatformError(reason(errno));
        if (count == 0) return content;
        content.append(part, static_cast<size_t>(count));
        if (content.size() > largest) failTooLarge();
    }
}

} // namespace

std::string readInputFile(const std::string& name) {
    if (name == "-") return readAll(STDIN_FILENO);
    const FileDescriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file) throw PlatformError(reason(errno));
    return readAll(file.get());
}

} // namespace bridge
