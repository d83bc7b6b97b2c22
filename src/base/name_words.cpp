#include "base/name_words.h"

#include "base/text.h"

#include <algorithm>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf8.h>
#include <unicode/uversion.h>

namespace bridge {

namespace {

enum class Part { none, ofWord, aloneAWord, invisible };

// The default boundaries of Unicode (UAX #29), but for three things. ICU's dictionaries of Chinese, Japanese and Thai
// cut a name and the beginning of that name differently, so they can't be used here; an apostrophe and a full stop end
// a word, so that Brien finds O'Brien; Thai and its relatives, which put a space between names, are kept whole.
Part partOf(UChar32 character) {
    if (!u_isalnum(character) && (U_GET_GC_MASK(character) & U_GC_M_MASK) == 0)
        return u_charType(character) == U_FORMAT_CHAR ? Part::invisible : Part::none;
    UErrorCode code = U_ZERO_ERROR;
    const auto script = uscript_getScript(character, &code);
    return script == USCRIPT_HAN || script == USCRIPT_HIRAGANA ? Part::aloneAWord : Part::ofWord;
}

} // namespace

std::vector<std::string> nameWords(std::string_view text) {
    const auto folded = fold(text);
    const auto length = static_cast<int32_t>(folded.size());
    std::vector<std::string> words;
    bool isOpen = false;
    for (int32_t index = 0; index < length;) {
        const auto start = static_cast<size_t>(index);
        UChar32 character;
        U8_NEXT(folded.data(), index, length, character);
        const auto part = partOf(character);
        // Joiners shape letters in the middle of a word and are not written by everybody.
        if (part == Part::invisible) continue;
        if (part != Part::none) {
            if (!isOpen || part == Part::aloneAWord) words.emplace_back();
            words.back().append(folded, start, static_cast<size_t>(index) - start);
        }
        isOpen = part == Part::ofWord;
    }
    return words;
}

bool wordsBeginWordsOf(const std::vector<std::string>& sought, const std::vector<std::string>& name) {
    std::vector<std::string_view> ordered(name.begin(), name.end());
    std::sort(ordered.begin(), ordered.end());
    return !sought.empty() && std::all_of(sought.begin(), sought.end(), [&](const std::string& beginning) {
        const auto first = std::lower_bound(ordered.begin(), ordered.end(), std::string_view(beginning));
        return first != ordered.end() && first->starts_with(beginning);
    });
}

std::string nameSortKey(std::string_view familyName, std::string_view givenName, std::string_view organizationName) {
    std::string key;
    for (const auto name : {familyName, givenName, organizationName})
        // Each key ends in a zero byte, which no key has inside: a shorter name comes before all that begin with it.
        if (!trim(name).empty()) key += sortKey(name);
    return key;
}

std::string nameRules() {
    UVersionInfo version;
    u_getVersion(version);
    char number[U_MAX_VERSION_STRING_LENGTH];
    u_versionToString(version, number);
    return std::string(icu::Locale::getDefault().getName()) + " " + number;
}

} // namespace bridge
