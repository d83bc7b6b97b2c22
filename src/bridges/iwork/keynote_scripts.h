#pragma once

#include "bridges/iwork/iwork_requests.h"

namespace bridge {

// What Keynote is told. The location is an absolute path. A slide whose layout has no place for a title or a body goes
// without.
std::string createKeynoteScript(const std::vector<KeynoteSlideInput>& slides, const std::string& location);

} // namespace bridge
