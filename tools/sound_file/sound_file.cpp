#include "tools/sound_file/sound_file.h"

#include <cmath>
#include <cstdint>
#include <fstream>
#include <numbers>
#include <stdexcept>

namespace bridge {

namespace {

// The format is RFC 9639; samples are stored as they are, which every decoder reads.
constexpr unsigned rate = 8000;
constexpr unsigned blockSize = 4096;

void append(std::string& bytes, uint64_t value, int count) {
    while (count-- > 0)
        bytes += static_cast<char>(value >> (8 * count));
}

void appendLittleEndian(std::string& bytes, uint64_t value) {
    for (int byte = 0; byte < 4; ++byte)
        bytes += static_cast<char>(value >> (8 * byte));
}

// `bits` wide, with the polynomial's leading bit left out.
unsigned checksum(const std::string& bytes, int bits, unsigned polynomial) {
    unsigned sum = 0;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned>(static_cast<unsigned char>(byte)) << (bits - 8);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum << 1) ^ (sum >> (bits - 1) & 1 ? polynomial : 0);
        sum &= (1U << bits) - 1;
    }
    return sum;
}

std::vector<int16_t> samplesOf(const SoundFile& sound) {
    constexpr double loudness = 2000;
    const size_t each = size_t{rate} * sound.millisecondsEach / 1000;
    std::vector<int16_t> samples;
    for (const double tone : sound.tones)
        for (size_t index = 0; index < each; ++index) {
            // Each tone comes and goes, so that nothing clicks.
            const double shape = std::sin(std::numbers::pi * static_cast<double>(index) / static_cast<double>(each));
            const double wave = std::sin(2 * std::numbers::pi * tone * static_cast<double>(index) / rate);
            samples.push_back(static_cast<int16_t>(std::lround(loudness * shape * wave)));
        }
    // Whole blocks only: a block of another size would need another header.
    samples.resize((samples.size() + blockSize) / blockSize * blockSize);
    return samples;
}

std::string streamInfo(size_t samples) {
    std::string block;
    append(block, blockSize, 2);
    append(block, blockSize, 2);
    append(block, 0, 6); // sizes of the frames: not said
    append(block, uint64_t{rate} << 44 | uint64_t{0} << 41 | uint64_t{15} << 36 | samples, 8);
    return block + std::string(16, '\0'); // no checksum of the whole
}

std::string comments(const SoundFile& sound) {
    std::string block;
    appendLittleEndian(block, 0); // no maker
    appendLittleEndian(block, sound.tags.size());
    for (const auto& [name, value] : sound.tags) {
        appendLittleEndian(block, name.size() + 1 + value.size());
        block += name + '=' + value;
    }
    return block;
}

std::string frame(const std::vector<int16_t>& samples, unsigned number) {
    std::string bytes("\xFF\xF8\xC4\x08", 4); // 4,096 samples, 8 kHz, one channel, 16 bits
    // The number as UTF-8 writes a character; no melody has more than that.
    if (number < 0x80)
        append(bytes, number, 1);
    else
        append(bytes, (0xC0 | number >> 6) << 8 | 0x80 | (number & 0x3F), 2);
    append(bytes, checksum(bytes, 8, 0x07), 1);
    append(bytes, 0x02, 1); // samples as they are
    for (size_t index = size_t{number} * blockSize; index < (size_t{number} + 1) * blockSize; ++index)
        append(bytes, static_cast<uint16_t>(samples[index]), 2);
    append(bytes, checksum(bytes, 16, 0x8005), 2);
    return bytes;
}

std::string metadata(unsigned kind, const std::string& block) {
    std::string bytes;
    append(bytes, uint64_t{kind} << 24 | block.size(), 4);
    return bytes + block;
}

} // namespace

void writeSoundFile(const std::filesystem::path& path, const SoundFile& sound) {
    constexpr unsigned information = 0, lastAndComments = 0x84;
    const auto samples = samplesOf(sound);
    std::ofstream file(path, std::ios::binary);
    file << "fLaC" << metadata(information, streamInfo(samples.size())) << metadata(lastAndComments, comments(sound));
    for (unsigned number = 0; number < samples.size() / blockSize; ++number)
        file << frame(samples, number);
    if (!file.flush()) throw std::runtime_error("A piece of music could not be written: " + path.string());
}

} // namespace bridge
