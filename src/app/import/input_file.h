#pragma once

#include <string>

namespace bridge {

// Everything in the file, or on standard input for "-". Throws PlatformError, with the reason alone, when it can't be
// read or is larger than 256 MB: what reads it needs many times its size in memory.
std::string readInputFile(const std::string& name);

} // namespace bridge
