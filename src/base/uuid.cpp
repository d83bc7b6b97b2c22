#include "base/uuid.h"

#include "base/platform_error.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <unistd.h>

namespace bridge {

std::string makeUUID() {
    std::array<uint8_t, 16> bytes{};
    if (getentropy(bytes.data(), bytes.size()) != 0) throw PlatformError::fromErrno("No random numbers", errno);
    bytes[6] = static_cast<uint8_t>((bytes[6] & 0x0f) | 0x40);
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

} // namespace bridge
