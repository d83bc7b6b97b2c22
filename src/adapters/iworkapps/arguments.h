#pragma once

#include "adapters/iworkapps/language.h"

#include <string>

namespace bridge::iworkapps {

// What scripts hand over, as C++ takes it. Each throws -1700 for what isn't such a thing.

// Line breaks of every kind have become line feeds.
std::string textArgument(const Value& value);
// The absolute path of a POSIX file, or of a text that is one.
std::string pathArgument(const Value& value);
int32_t countArgument(const Value& value);

} // namespace bridge::iworkapps
