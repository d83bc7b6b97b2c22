#pragma once

#include <string>
#include <string_view>

namespace bridge {

// Where the running program lies, also after it was replaced by a newer version there; empty when that can't be known.
std::string ownProgram();

// Whether a newer version lies there by now, or none: what belongs to the running program may be gone with it.
bool isOwnProgramReplaced();

// Where a program of ours lies that only we start: as installed, seen from the running program, or else as built. It
// may not be there, since some are built only with the libraries that they need.
std::string helperProgram(std::string_view name);

// The same for a part of the program itself that is loaded when it is wanted.
std::string libraryFile(std::string_view name);

// The same for a file that comes along with the program and is only read.
std::string dataFile(std::string_view name);

} // namespace bridge
