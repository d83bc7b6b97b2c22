#pragma once

#include <string>
#include <string_view>

namespace bridge {

// The title as it is stored: without white space around it. `label` says whose title it is ("Reminder list"). Throws
// AppleBridgeError malformedRequest when nothing is left or it has more than 1,000 user-perceived characters.
std::string validTitle(std::string_view title, std::string_view label);

} // namespace bridge
