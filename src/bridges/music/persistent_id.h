#pragma once

#include <cstdint>
#include <string>

namespace bridge {

// 16 upper-case hexadecimal digits.
std::string persistentIDText(uint64_t persistentID);

} // namespace bridge
