#pragma once

#include <filesystem>

namespace bridge::playground {

// A small folder as people have them: texts in several scripts, folders in folders, a hidden file.
void makeSampleDocuments(const std::filesystem::path& folder);

} // namespace bridge::playground
