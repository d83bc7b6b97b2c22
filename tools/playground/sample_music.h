#pragma once

#include <filesystem>

namespace bridge::playground {

// A few short melodies with titles in many scripts, one of them with quotation marks and one without a title. The
// folder is a new one.
void makeSampleMusic(const std::filesystem::path& folder);

} // namespace bridge::playground
