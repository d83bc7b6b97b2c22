#pragma once

#include <string>

namespace bridge {

// What Pages is told. The locations are absolute paths.
std::string createPagesScript(const std::string& text, const std::string& location);
// Returns the text of the document's body.
std::string readPagesScript(const std::string& location);

} // namespace bridge
