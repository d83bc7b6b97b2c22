#pragma once

#include "adapters/xdg/xdg_paths.h"

#include <optional>
#include <string>

namespace bridge {

// The path of a program that can be run: `name` itself when it has a slash, otherwise in the folders of $PATH, as a
// shell looks. Relative folders are passed over.
std::optional<std::string> findProgram(const std::string& name, const XdgPaths::Environment& environment);

} // namespace bridge
