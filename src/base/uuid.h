#pragma once

#include <string>
#include <string_view>

namespace bridge {

// A random (version 4) UUID in its canonical form of RFC 9562, in upper case: 36 characters.
std::string makeUUID();

// One that is the same for the same text, of version 8. No secret: whoever means to can find another text for it.
std::string makeUUIDOf(std::string_view text);

} // namespace bridge
