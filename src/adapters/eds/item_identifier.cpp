#include "adapters/eds/item_identifier.h"

#include "base/text.h"

#include <vector>

namespace bridge {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";

bool isPlain(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '.' || character == '_';
}

std::string encoded(std::string_view part) {
    std::string text;
    for (const char character : part) {
        const auto byte = static_cast<unsigned char>(character);
        if (isPlain(character))
            text += character;
        else
            text.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
    return text;
}

// Nothing sensible for what encoded() can't have made; parse() finds that out by encoding it again.
std::string decoded(std::string_view text) {
    std::string part;
    for (size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '%' && index + 2 < text.size()) {
            part += static_cast<char>(digits.find(text[index + 1]) << 4 | (digits.find(text[index + 2]) & 15));
            index += 2;
        } else {
            part += text[index];
        }
    }
    return part;
}

// What can be said over the bus.
bool isWord(const std::string& part) {
    return !part.empty() && part.find('\0') == part.npos && isUTF8(part);
}

} // namespace

std::string ItemIdentifier::text() const {
    auto joined = encoded(sourceID) + "/" + encoded(uid);
    if (!recurrenceID.empty()) joined += "/" + encoded(recurrenceID);
    return joined;
}

std::optional<ItemIdentifier> ItemIdentifier::parse(std::string_view text) {
    std::vector<std::string> parts;
    for (size_t start = 0; start != text.npos && parts.size() <= 3;) {
        const auto end = text.find('/', start);
        parts.push_back(decoded(text.substr(start, end == text.npos ? end : end - start)));
        start = end == text.npos ? end : end + 1;
    }
    if (parts.size() != 2 && parts.size() != 3) return std::nullopt;
    for (const auto& part : parts)
        if (!isWord(part)) return std::nullopt;
    ItemIdentifier identifier{parts[0], parts[1], parts.size() == 3 ? parts[2] : std::string()};
    if (identifier.text() != text) return std::nullopt;
    return identifier;
}

} // namespace bridge
