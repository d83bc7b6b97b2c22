#pragma once

#include <string>

namespace bridge {

// The folder at which the volume that holds `path` (absolute, canonical) is mounted.
std::string mountPointOf(const std::string& path);

} // namespace bridge
