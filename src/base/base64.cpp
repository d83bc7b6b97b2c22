#include "base/base64.h"

#include <cstdint>

namespace bridge {

namespace {
constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
}

std::string encodeBase64(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t start = 0; start < bytes.size(); start += 3) {
        const auto group = bytes.substr(start, 3);
        uint32_t bits = 0;
        for (size_t index = 0; index < 3; ++index)
            bits = bits << 8 | (index < group.size() ? static_cast<uint8_t>(group[index]) : 0);
        for (size_t index = 0; index < 4; ++index)
            text += index <= group.size() ? alphabet[bits >> (18 - 6 * index) & 0x3f] : '=';
    }
    return text;
}

std::optional<std::string> decodeBase64(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    const size_t padding = text.ends_with("==") ? 2 : text.ends_with("=") ? 1 : 0;
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    uint32_t bits = 0;
    for (size_t index = 0; index < text.size(); ++index) {
        const auto value = index < text.size() - padding ? alphabet.find(text[index]) : 0;
        if (value == std::string_view::npos) return std::nullopt;
        bits = bits << 6 | static_cast<uint32_t>(value);
        if (index % 4 != 3) continue;
        for (int shift = 16; shift >= 0; shift -= 8)
            bytes += static_cast<char>(bits >> shift & 0xff);
        bits = 0;
    }
    // The last group's unused bits must be zero, or two texts would mean the same bytes.
    for (size_t index = 0; index < padding; ++index)
        if (bytes[bytes.size() - 1 - index] != 0) return std::nullopt;
    bytes.resize(bytes.size() - padding);
    return bytes;
}

} // namespace bridge
