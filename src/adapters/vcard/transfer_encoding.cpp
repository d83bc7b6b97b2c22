#include "adapters/vcard/transfer_encoding.h"

#include "base/base64.h"

namespace bridge::vcard {

namespace {

int hexDigit(char byte) {
    if (byte >= '0' && byte <= '9') return byte - '0';
    if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
    if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
    return -1;
}

bool isBase64Digit(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '+' || byte == '/';
}

} // namespace

std::string decodeQuotedPrintable(std::string_view text) {
    std::string bytes;
    for (size_t index = 0; index < text.size(); ++index) {
        const int high = text[index] == '=' && text.size() - index > 2 ? hexDigit(text[index + 1]) : -1;
        const int low = high >= 0 ? hexDigit(text[index + 2]) : -1;
        if (low < 0) {
            bytes += text[index];
            continue;
        }
        bytes += static_cast<char>(high * 16 + low);
        index += 2;
    }
    return bytes;
}

std::optional<TidiedBase64> tidiedBase64(std::string_view text) {
    TidiedBase64 tidied;
    size_t padding = 0;
    for (const char byte : text) {
        if (byte == ' ' || byte == '\t' || byte == '\n') continue;
        if (byte == '=')
            ++padding;
        else if (padding > 0 || !isBase64Digit(byte))
            return std::nullopt;
        else
            tidied.text += byte;
    }
    const size_t rest = tidied.text.size() % 4;
    tidied.isWhole = rest != 1 && (padding == 0 || rest + padding == 4);
    if (rest == 1) tidied.text.pop_back();
    tidied.text.append((4 - tidied.text.size() % 4) % 4, '=');
    if (decodeBase64(tidied.text)) return tidied;
    // The bits after the last byte may be anything where it was cut.
    tidied.text.resize(tidied.text.size() - 4);
    tidied.isWhole = false;
    return tidied;
}

std::string_view mediaTypeOf(std::string_view bytes) {
    if (bytes.starts_with("\xff\xd8\xff")) return "image/jpeg";
    if (bytes.starts_with("\x89PNG")) return "image/png";
    if (bytes.starts_with("GIF8")) return "image/gif";
    if (bytes.starts_with("RIFF") && bytes.substr(0, 12).ends_with("WEBP")) return "image/webp";
    if (bytes.starts_with("RIFF") && bytes.substr(0, 12).ends_with("WAVE")) return "audio/wav";
    return {};
}

} // namespace bridge::vcard
