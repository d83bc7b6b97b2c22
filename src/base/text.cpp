#include "base/text.h"

#include <algorithm>
#include <memory>
#include <simdjson.h>
#include <stdexcept>
#include <unicode/brkiter.h>
#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

namespace bridge {

namespace {

icu::UnicodeString toICU(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

std::string fromICU(const icu::UnicodeString& text) {
    std::string result;
    return text.toUTF8String(result);
}

// ICU fails here only when its data is missing or memory is out: nothing a caller could mend.
void require(UErrorCode code, const char* what) {
    if (U_FAILURE(code)) throw std::runtime_error(std::string(what) + ": " + u_errorName(code));
}

bool isASCII(std::string_view text) {
    for (const char byte : text)
        if (static_cast<unsigned char>(byte) >= 0x80) return false;
    return true;
}

// Turkish and Azeri tell a dotted i from a dotless one, also when folding.
uint32_t foldingOptions() {
    const std::string_view language = icu::Locale::getDefault().getLanguage();
    return language == "tr" || language == "az" ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
}

} // namespace

bool isUTF8(std::string_view text) {
    // Most texts are short names; the vector code takes longer to begin than to look at them.
    constexpr size_t shortText = 32;
    if (text.size() <= shortText && isASCII(text)) return true;
    return simdjson::validate_utf8(text.data(), text.size());
}

std::string repairUTF8(std::string_view text) {
    return fromICU(toICU(text));
}

std::string_view trim(std::string_view text) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
    int32_t start = 0;
    auto end = static_cast<int32_t>(text.size());
    while (start < end) {
        int32_t next = start;
        UChar32 character;
        U8_NEXT(bytes, next, end, character);
        if (character < 0 || !u_isUWhiteSpace(character)) break;
        start = next;
    }
    while (end > start) {
        int32_t previous = end;
        UChar32 character;
        U8_PREV(bytes, start, previous, character);
        if (character < 0 || !u_isUWhiteSpace(character)) break;
        end = previous;
    }
    return text.substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
}

std::string fold(std::string_view text) {
    UErrorCode code = U_ZERO_ERROR;
    const auto* decomposer = icu::Normalizer2::getNFDInstance(code);
    require(code, "Unicode normalization");
    // Case first: folding can bring forth marks of its own (İ becomes i and a dot above).
    auto characters = toICU(text);
    characters.foldCase(foldingOptions());
    const auto decomposed = decomposer->normalize(characters, code);
    require(code, "Unicode normalization");

    icu::UnicodeString folded;
    for (int32_t index = 0; index < decomposed.length(); index = decomposed.moveIndex32(index, 1)) {
        const UChar32 character = decomposed.char32At(index);
        if (u_charType(character) != U_NON_SPACING_MARK) folded.append(character);
    }
    return fromICU(folded);
}

std::string lowercase(std::string_view text) {
    return fromICU(toICU(text).toLower(icu::Locale::getRoot()));
}

std::string uppercase(std::string_view text) {
    return fromICU(toICU(text).toUpper(icu::Locale::getRoot()));
}

size_t graphemeCount(std::string_view text, size_t most) {
    // A carriage return with its line feed is one character, so only ASCII without one counts by bytes.
    if (isASCII(text) && text.find('\r') == std::string_view::npos) return std::min(text.size(), most);
    UErrorCode code = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getDefault(), code));
    require(code, "Unicode text segmentation");
    const auto characters = toICU(text);
    iterator->setText(characters);
    size_t count = 0;
    while (count < most && iterator->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

std::string sortKey(std::string_view text) {
    static const auto collator = [] {
        UErrorCode code = U_ZERO_ERROR;
        // The C locale orders by code point, all capitals first. Nobody reads a list that way.
        const auto& user = icu::Locale::getDefault();
        const auto& locale = std::string_view(user.getVariant()) == "POSIX" ? icu::Locale::getRoot() : user;
        std::unique_ptr<icu::Collator> made(icu::Collator::createInstance(locale, code));
        require(code, "Unicode collation");
        // Accents count, case does not.
        made->setStrength(icu::Collator::SECONDARY);
        return made;
    }();
    const auto characters = toICU(text);
    std::string key(characters.length() * 3 + 16, '\0');
    while (true) {
        const auto size = static_cast<int32_t>(key.size());
        const int32_t needed = collator->getSortKey(characters, reinterpret_cast<uint8_t*>(key.data()), size);
        key.resize(static_cast<size_t>(needed));
        if (needed <= size) return key;
    }
}

} // namespace bridge
