#include "base/uuid.h"

#include "base/platform_error.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <unistd.h>

namespace bridge {

namespace {

using Bytes = std::array<uint8_t, 16>;

std::string written(Bytes bytes, uint8_t version) {
    bytes[6] = static_cast<uint8_t>((bytes[6] & 0x0f) | (version << 4));
    bytes[8] = static_cast<uint8_t>((bytes[8] & 0x3f) | 0x80);

    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (size_t index = 0; index < bytes.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10) text += '-';
        text += digits[bytes[index] >> 4];
        text += digits[bytes[index] & 0x0f];
    }
    return text;
}

} // namespace

std::string makeUUID() {
    Bytes bytes{};
    if (getentropy(bytes.data(), bytes.size()) != 0) throw PlatformError::fromErrno("No random numbers", errno);
    return written(bytes, 4);
}

// FNV-1a with 128 bits.
std::string makeUUIDOf(std::string_view text) {
    __extension__ using Number = unsigned __int128;
    constexpr Number prime = (Number{1} << 88) + 0x13b;
    Number hash = (Number{0x6c62272e07bb0142} << 64) + 0x62b821756295c58d;
    for (const char byte : text)
        hash = (hash ^ static_cast<uint8_t>(byte)) * prime;
    Bytes bytes{};
    for (size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<uint8_t>(hash >> (8 * (bytes.size() - 1 - index)));
    return written(bytes, 8);
}

} // namespace bridge
