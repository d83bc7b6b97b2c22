#include "adapters/sqlite/kept_aside.h"

#include "base/exclusive_rename.h"
#include "base/platform_error.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>

namespace bridge {

namespace {

// The journal first: alone, a journal would be taken for that of the next database.
constexpr std::array suffixes{"-wal", "-shm", ""};

bool isFree(const std::string& path) {
    struct stat status;
    for (const auto* suffix : suffixes)
        if (lstat((path + suffix).c_str(), &status) == 0) return false;
    return true;
}

std::string freeName(const std::string& wish) {
    auto name = wish;
    for (int number = 2; !isFree(name); ++number)
        name = fmt::format("{}-{}", wish, number);
    return name;
}

} // namespace

std::string keepAside(const std::string& path, const std::string& date) {
    const auto place = freeName(fmt::format("{}.damaged-{}", path, date));
    for (const auto* suffix : suffixes) {
        const int code = renameExclusively(AT_FDCWD, path + suffix, AT_FDCWD, place + suffix);
        if (code != 0 && code != ENOENT)
            throw PlatformError::fromErrno("A damaged file could not be kept under another name", code);
    }
    return place;
}

} // namespace bridge
