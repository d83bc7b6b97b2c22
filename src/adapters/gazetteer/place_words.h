#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bridge::gazetteer {

// The words of a place's name as they are compared: without case, accents and widths, the same in every locale, for
// letters that nobody types (ø, ł, ı) the ones that are typed instead. A word holds nothing but letters, digits and
// the marks of its script, so it can stand in any search expression. An apostrophe ends a word: L'Aquila has two.
std::vector<std::string> placeWords(std::string_view name);

// The whole name as one word: New York and new-york are alike, and so is what was typed without the space.
std::string joined(const std::vector<std::string>& words);

} // namespace bridge::gazetteer
