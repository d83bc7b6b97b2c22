#pragma once

#include "bridges/files/file_records.h"
#include "bridges/files/folder_access.h"

#include <string_view>
#include <sys/stat.h>

namespace bridge {

// How clients see one entry. Names that are not UTF-8 are shown with U+FFFD; such a name can't be asked for again.
FileItemDescriptor describeItem(std::string_view relativePath, std::string_view name, const struct stat& status);
FileItemDescriptor describeItem(const ConfinedPath& path, const struct stat& status);

// The children of an open folder that are not hidden: folders first, then by name as the user's language orders them
// without regard to case. Links are described themselves; what vanishes meanwhile is left out. Throws PlatformError.
std::vector<FileItemDescriptor> listFolder(const FileDescriptor& folder, const std::string& relativePath);

} // namespace bridge
