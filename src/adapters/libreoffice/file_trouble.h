#pragma once

#include "platform/script_engine.h"

#include <string>

namespace bridge::office {

constexpr int ioError = -36;

// "<what>: No such file or directory.", with the number that scripts know for it.
ScriptError fileTrouble(const std::string& what, int code);

} // namespace bridge::office
