#include "bridges/calendar/item_title.h"

#include "base/apple_bridge_error.h"
#include "base/text.h"

namespace bridge {

namespace {
constexpr size_t maximumLength = 1000;
}

std::string validTitle(std::string_view title, std::string_view label) {
    const auto trimmed = trim(title);
    if (trimmed.empty()) throw AppleBridgeError::malformedRequest(std::string(label) + " title cannot be empty.");
    // No character is shorter than a byte, so most titles need no counting.
    if (trimmed.size() > maximumLength && graphemeCount(trimmed) > maximumLength)
        throw AppleBridgeError::malformedRequest(std::string(label) + " title cannot exceed 1,000 characters.");
    return std::string(trimmed);
}

} // namespace bridge
