#include "adapters/xdg/trash_info.h"

#include <algorithm>

namespace bridge {

namespace {

constexpr size_t longestName = 255;

bool isUnreserved(char character) {
    const bool letterOrDigit = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                               (character >= '0' && character <= '9');
    return letterOrDigit || std::string_view("-_.!~*'()/").find(character) != std::string_view::npos;
}

std::string percentEncode(std::string_view bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char character : bytes) {
        if (isUnreserved(character)) {
            text += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        text += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return text;
}

bool continuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

} // namespace

std::string trashInfo(std::string_view origin, time_t deleted) {
    tm local{};
    localtime_r(&deleted, &local);
    char date[32] = "";
    strftime(date, sizeof date, "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + percentEncode(origin) + "\nDeletionDate=" + date + "\n";
}

std::string trashName(std::string_view name, std::string_view mark) {
    const std::string ending = mark.empty() ? "" : "." + std::string(mark);
    size_t length = std::min(name.size(), longestName - std::string_view(".trashinfo").size() - ending.size());
    if (length < name.size())
        while (length > 1 && continuesCharacter(name[length]))
            --length;
    return std::string(name.substr(0, length)) + ending;
}

} // namespace bridge
