#pragma once

#include "bridges/files/folder_access.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bridge {

constexpr size_t maximumTextWrite = 1'000'000; // bytes

// How many bytes a read may bring, from what the client asked for: 200,000 unless told, within 1 to 1,000,000.
size_t readLimit(const std::optional<int64_t>& maximumBytes);

// The whole text of the entry. A pipe, socket or device is refused unopened, so that nothing hangs.
// Throws AppleBridgeError (resourceNotFound with `requested`; operationFailed when it is longer than `limit` or not
// UTF-8), PlatformError, PathChanged.
std::string readTextFile(const FolderEntry& entry, const std::string& requested, size_t limit);

enum class Overwrite { no, yes };

// Writes the entry, whole or not at all, and returns the status of what was written. A file that was there keeps its
// permission bits; a new one gets `newFileMode`. Throws AppleBridgeError operationFailed when something is there and
// may not be overwritten, also at the very last moment; PlatformError when it is no file; PathChanged.
struct stat writeTextFile(const FolderEntry& entry, const std::string& requested, std::string_view content,
                          Overwrite overwrite, mode_t newFileMode);

// The permission bits of a new file: those that the process' umask leaves of rw-rw-rw-.
mode_t modeOfNewFiles();

} // namespace bridge
