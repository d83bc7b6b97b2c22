#pragma once

#include <string>

namespace bridge {

// A random (version 4) UUID in its canonical form of RFC 9562, in upper case: 36 characters.
std::string makeUUID();

} // namespace bridge
