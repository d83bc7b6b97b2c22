#include "adapters/applescript/text_parts.h"

#include "adapters/applescript/errors.h"

#include <memory>
#include <stdexcept>
#include <unicode/brkiter.h>
#include <unicode/utext.h>

namespace bridge::applescript {

namespace {

struct CloseText {
    void operator()(UText* text) const { utext_close(text); }
};

// More would not fit into a script's memory as values.
constexpr size_t mostParts = 4'000'000;

void require(UErrorCode code) {
    if (U_FAILURE(code)) throw std::runtime_error(std::string("Dividing a text: ") + u_errorName(code));
}

std::vector<std::string_view> divide(const std::string& text, TextPart part) {
    UErrorCode code = U_ZERO_ERROR;
    const auto& locale = icu::Locale::getDefault();
    const std::unique_ptr<icu::BreakIterator> breaks(part == TextPart::word
                                                         ? icu::BreakIterator::createWordInstance(locale, code)
                                                         : icu::BreakIterator::createCharacterInstance(locale, code));
    require(code);
    const std::unique_ptr<UText, CloseText> input(
        utext_openUTF8(nullptr, text.data(), static_cast<int64_t>(text.size()), &code));
    require(code);
    breaks->setText(input.get(), code);
    require(code);
    std::vector<std::string_view> parts;
    int32_t start = breaks->first();
    for (int32_t end = breaks->next(); end != icu::BreakIterator::DONE; start = end, end = breaks->next()) {
        if (part == TextPart::word && breaks->getRuleStatus() < UBRK_WORD_NONE_LIMIT) continue;
        if (parts.size() == mostParts) throw memoryExhausted();
        parts.emplace_back(text.data() + start, static_cast<size_t>(end - start));
    }
    return parts;
}

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> parts;
    while (true) {
        if (parts.size() == mostParts) throw memoryExhausted();
        const size_t end = text.find_first_of("\r\n");
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return parts;
        text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    }
}

} // namespace

std::optional<TextPart> textPart(const std::string& className) {
    if (className == "character" || className == "item" || className == "text") return TextPart::character;
    if (className == "word") return TextPart::word;
    if (className == "paragraph") return TextPart::paragraph;
    return std::nullopt;
}

std::vector<std::string_view> partsOf(const std::string& text, TextPart part) {
    if (text.empty()) return {};
    return part == TextPart::paragraph ? lines(text) : divide(text, part);
}

} // namespace bridge::applescript
