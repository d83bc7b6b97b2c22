#pragma once

#include <string_view>

namespace bridge {

// How every script ends: whatever fails, the document that the script has made or opened is closed without saving, and
// the error goes on.
inline constexpr std::string_view newDocumentEnding =
    "\n    on error errorMessage number errorNumber"
    "\n        if newDocument is not missing value then close newDocument saving no"
    "\n        error errorMessage number errorNumber"
    "\n    end try"
    "\nend tell";

inline constexpr std::string_view targetDocumentEnding =
    "\n    on error errorMessage number errorNumber"
    "\n        if targetDocument is not missing value then close targetDocument saving no"
    "\n        error errorMessage number errorNumber"
    "\n    end try"
    "\nend tell";

} // namespace bridge
