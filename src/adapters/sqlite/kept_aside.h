#pragma once

#include <string>

namespace bridge {

// Gives a database that is no longer open the first free name of "<path>.damaged-<date>", "<path>.damaged-<date>-2" and
// so on, and its journal the name that belongs to it, so that what can be saved of it can be. Nothing is replaced or
// lost. Answers with the new path. Throws PlatformError.
std::string keepAside(const std::string& path, const std::string& date);

} // namespace bridge
