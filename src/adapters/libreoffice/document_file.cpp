#include "adapters/libreoffice/document_file.h"

#include <array>
#include <string_view>
#include <unistd.h>

namespace bridge::office {

bool looksLikeDocument(int file) {
    using namespace std::string_view_literals;
    // A ZIP archive, which most formats are; the compound files of old; a document of XML alone.
    constexpr std::array beginnings{"PK\x03\x04"sv, "\xD0\xCF\x11\xE0"sv, "<?xml"sv};
    std::array<char, 8> bytes{};
    const auto count = pread(file, bytes.data(), bytes.size(), 0);
    const std::string_view start(bytes.data(), count < 0 ? 0 : static_cast<size_t>(count));
    for (const auto beginning : beginnings)
        if (start.starts_with(beginning)) return true;
    return false;
}

} // namespace bridge::office
