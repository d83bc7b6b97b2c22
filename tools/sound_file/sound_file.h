#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace bridge {

struct SoundFile {
    std::vector<std::pair<std::string, std::string>> tags; // {"TITLE", "Harvest"}: Vorbis comments, in UTF-8
    std::vector<double> tones;                             // in Hz, one after another; 0 is a rest
    unsigned millisecondsEach = 512;
};

// Writes a FLAC file with a quiet melody. Throws std::runtime_error.
void writeSoundFile(const std::filesystem::path& path, const SoundFile& sound);

} // namespace bridge
