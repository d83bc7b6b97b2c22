#include "adapters/gazetteer/place_words.h"

#include <stdexcept>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

namespace bridge::gazetteer {

namespace {

icu::UnicodeString decomposed(std::string_view text) {
    UErrorCode code = U_ZERO_ERROR;
    const auto* folder = icu::Normalizer2::getNFKCCasefoldInstance(code);
    const auto* decomposer = icu::Normalizer2::getNFDInstance(code);
    if (U_FAILURE(code)) throw std::runtime_error(u_errorName(code));
    const auto characters =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
    auto result = decomposer->normalize(folder->normalize(characters, code), code);
    if (U_FAILURE(code)) throw std::runtime_error(u_errorName(code));
    return result;
}

// Of letters that Unicode does not take apart.
UChar32 typed(UChar32 letter) {
    switch (letter) {
    case U'ø':
        return U'o';
    case U'ł':
        return U'l';
    case U'đ':
    case U'ð':
        return U'd';
    case U'ħ':
        return U'h';
    case U'ı':
        return U'i';
    case U'ŧ':
        return U't';
    default:
        return letter;
    }
}

bool isOfWord(UChar32 character) {
    return u_isalnum(character) || (U_GET_GC_MASK(character) & U_GC_M_MASK) != 0;
}

} // namespace

std::vector<std::string> placeWords(std::string_view name) {
    const auto characters = decomposed(name);
    std::vector<std::string> words;
    bool isOpen = false;
    for (int32_t index = 0; index < characters.length();) {
        const UChar32 character = characters.char32At(index);
        index += U16_LENGTH(character);
        if (u_charType(character) == U_NON_SPACING_MARK) continue;
        const bool belongs = isOfWord(character);
        if (belongs) {
            if (!isOpen) words.emplace_back();
            icu::UnicodeString(typed(character)).toUTF8String(words.back());
        }
        isOpen = belongs;
    }
    return words;
}

std::string joined(const std::vector<std::string>& words) {
    std::string whole;
    for (const auto& word : words)
        whole += word;
    return whole;
}

} // namespace bridge::gazetteer
