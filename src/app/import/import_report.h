#pragma once

#include "app/import/imported_file.h"

namespace bridge {

// Without characters that would steer a terminal, or that are not UTF-8.
std::string printable(const std::string& text);

// For the user, with a line end each: what was taken of the file and what wasn't, and why.
std::string describe(const ImportedFile& file);

// All files together, in a line.
std::string summarize(const std::vector<ImportedFile>& files);

} // namespace bridge
