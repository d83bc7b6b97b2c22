#pragma once

#include <string>

namespace bridge {

// "1 event", "12 events"; for words whose plural has an s.
inline std::string counted(size_t count, const std::string& one) {
    return std::to_string(count) + " " + one + (count == 1 ? "" : "s");
}

} // namespace bridge
