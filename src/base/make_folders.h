#pragma once

#include <filesystem>
#include <string>

namespace bridge {

// Makes the folder, and those above it that are missing, for the user alone; links on the way are followed. One that is
// there already stays as it is. Throws PlatformError that begins with `failure`: "The Trash could not be created: ...".
void makeFolders(const std::filesystem::path& path, const std::string& failure);

} // namespace bridge
