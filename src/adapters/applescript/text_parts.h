#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bridge::applescript {

enum class TextPart { character, word, paragraph };

// "character" for "item", too; nullopt for a class of which texts have none.
std::optional<TextPart> textPart(const std::string& className);

// Views into the text: user-perceived characters, words without what is between them, lines without their ends.
std::vector<std::string_view> partsOf(const std::string& text, TextPart part);

} // namespace bridge::applescript
