#include "adapters/vcard/charset.h"

#include <memory>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>

namespace bridge::vcard {

std::optional<std::string> decodeCharset(std::string_view bytes, std::string_view charset) {
    struct Closer {
        void operator()(UConverter* converter) const { ucnv_close(converter); }
    };
    UErrorCode code = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, Closer> converter(ucnv_open(std::string(charset).c_str(), &code));
    if (U_FAILURE(code) || charset.empty()) return std::nullopt;
    const icu::UnicodeString characters(bytes.data(), static_cast<int32_t>(bytes.size()), converter.get(), code);
    if (U_FAILURE(code)) return std::nullopt;
    std::string text;
    characters.toUTF8String(text);
    return text;
}

std::string withoutByteOrderMark(std::string_view bytes) {
    UErrorCode code = U_ZERO_ERROR;
    int32_t length = 0;
    const char* charset = ucnv_detectUnicodeSignature(bytes.data(), static_cast<int32_t>(bytes.size()), &length, &code);
    if (U_FAILURE(code) || !charset) return std::string(bytes);
    bytes.remove_prefix(static_cast<size_t>(length));
    // The mark of UTF-8 promises nothing about what follows, and each line is looked at by itself.
    if (std::string_view(charset) == "UTF-8") return std::string(bytes);
    return decodeCharset(bytes, charset).value_or(std::string(bytes));
}

} // namespace bridge::vcard
