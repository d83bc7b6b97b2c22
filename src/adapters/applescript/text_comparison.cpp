#include "adapters/applescript/text_comparison.h"

#include "base/text.h"

#include <algorithm>
#include <stdexcept>
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

namespace bridge::applescript {

namespace {

bool isASCII(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

char lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

icu::UnicodeString composed(const icu::UnicodeString& text) {
    UErrorCode code = U_ZERO_ERROR;
    const auto* normalizer = icu::Normalizer2::getNFCInstance(code);
    auto result = U_SUCCESS(code) ? normalizer->normalize(text, code) : icu::UnicodeString();
    if (U_FAILURE(code)) throw std::runtime_error(std::string("Composing characters: ") + u_errorName(code));
    return result;
}

} // namespace

std::string comparable(std::string_view text, Case letterCase) {
    std::string result(text);
    if (isASCII(text)) {
        if (letterCase == Case::ignored) std::transform(result.begin(), result.end(), result.begin(), lower);
        return result;
    }
    // Composed before it is folded, because the folding of some letters depends on it, and after.
    auto units = composed(icu::UnicodeString::fromUTF8(text));
    if (letterCase == Case::ignored) units = composed(units.foldCase());
    result.clear();
    return units.toUTF8String(result);
}

bool isSameText(std::string_view one, std::string_view other, Case letterCase) {
    if (one == other) return true;
    if (!isASCII(one) || !isASCII(other)) return comparable(one, letterCase) == comparable(other, letterCase);
    return letterCase == Case::ignored && std::equal(one.begin(), one.end(), other.begin(), other.end(),
                                                     [](char left, char right) { return lower(left) == lower(right); });
}

int orderOfTexts(std::string_view one, std::string_view other, Case letterCase) {
    if (isSameText(one, other, letterCase)) return 0;
    if (const int order = sortKey(one).compare(sortKey(other)); order != 0) return order;
    return comparable(one, letterCase).compare(comparable(other, letterCase));
}

} // namespace bridge::applescript
