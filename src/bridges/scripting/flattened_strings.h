#pragma once

#include "platform/script_engine.h"

namespace bridge {

// The texts of a result from first to last, however its lists stand in one another. What has no text is "", and so is
// an empty list.
std::vector<std::string> flattenedStrings(TypedAppleScriptValue value);

} // namespace bridge
