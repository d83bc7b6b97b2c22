#include "adapters/libreoffice/helper/typing.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace bridge::office {

namespace {

// Longer than any date.
constexpr size_t longestFormatted = 48;

// All that can stand in a date or a time beside digits.
constexpr std::array words = std::to_array<std::string_view>(
    {"january",  "february", "march",    "april",  "may", "june", "july",   "august",  "september",
     "october",  "november", "december", "jan",    "feb", "mar",  "apr",    "jun",     "jul",
     "aug",      "sep",      "sept",     "oct",    "nov", "dec",  "monday", "tuesday", "wednesday",
     "thursday", "friday",   "saturday", "sunday", "mon", "tue",  "wed",    "thu",     "fri",
     "sat",      "sun",      "am",       "pm",     "a",   "p",    "t"});
constexpr std::string_view marks = " .,:/-+%$()'";

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}
bool isLetter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& letter : result)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return result;
}

// Digits with at most one point and an exponent: these have no format, whatever the locale.
bool isPlainNumber(std::string_view text) {
    const auto skipDigits = [&text] {
        const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
        const auto count = static_cast<size_t>(end - text.begin());
        text.remove_prefix(count);
        return count;
    };
    const auto skipOneOf = [&text](std::string_view letters) {
        if (text.empty() || letters.find(text.front()) == letters.npos) return false;
        text.remove_prefix(1);
        return true;
    };
    skipOneOf("+-");
    size_t digits = skipDigits();
    if (skipOneOf(".")) digits += skipDigits();
    if (digits == 0) return false;
    if (!skipOneOf("eE")) return text.empty();
    skipOneOf("+-");
    return skipDigits() > 0 && text.empty();
}

bool mayHaveFormat(std::string_view text) {
    if (text.size() > longestFormatted || std::none_of(text.begin(), text.end(), isDigit)) return false;
    while (!text.empty()) {
        const auto end = std::find_if_not(text.begin(), text.end(), isLetter);
        const auto word = text.substr(0, static_cast<size_t>(end - text.begin()));
        if (!word.empty() && std::find(words.begin(), words.end(), lower(word)) == words.end()) return false;
        text.remove_prefix(word.size());
        if (text.empty()) break;
        if (!isDigit(text.front()) && marks.find(text.front()) == marks.npos) return false;
        text.remove_prefix(1);
    }
    return true;
}

} // namespace

Typing typingOf(std::string_view text) {
    if (text.starts_with('\'')) return Typing::literal;
    // Commas separate arguments in English, and mean something else to those who speak to many cells at once.
    if (text.starts_with('=')) return text.find_first_of(",{") == text.npos ? Typing::plain : Typing::careful;
    if (text.size() <= 5 && (lower(text) == "true" || lower(text) == "false")) return Typing::logical;
    if (isPlainNumber(text)) return Typing::plain;
    return mayHaveFormat(text) ? Typing::careful : Typing::plain;
}

} // namespace bridge::office
