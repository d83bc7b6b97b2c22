#include "adapters/libreoffice/storable_text.h"

#include "adapters/libreoffice/protocol.h"
#include "base/text.h"

#include <fmt/format.h>

namespace bridge::office {

namespace {

[[noreturn]] void refuse(unsigned character) {
    throw ScriptError(
        failed, fmt::format("The text has the control character U+{:04X}, which documents can't store.", character));
}

} // namespace

std::string storableText(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    for (size_t index = 0; index < text.size(); ++index) {
        const char letter = text[index];
        const auto code = static_cast<unsigned char>(letter);
        if (code < 0x20 && letter != '\t' && letter != '\n' && letter != '\r') refuse(code);
        // U+FFFE and U+FFFF are no characters.
        if (text.compare(index, 3, "\xEF\xBF\xBE") == 0) refuse(0xFFFE);
        if (text.compare(index, 3, "\xEF\xBF\xBF") == 0) refuse(0xFFFF);
        if (letter == '\r' && index + 1 < text.size() && text[index + 1] == '\n') continue;
        result += letter == '\r' ? '\n' : letter;
    }
    return repairUTF8(result);
}

} // namespace bridge::office
