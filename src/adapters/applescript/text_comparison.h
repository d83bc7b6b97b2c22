#pragma once

#include <string>
#include <string_view>

namespace bridge::applescript {

// As the language compares texts: accents always count, case only within "considering case".
enum class Case { ignored, considered };

// What is equal for the language has equal bytes in this form, which is also what "contains" looks into.
std::string comparable(std::string_view text, Case letterCase);

bool isSameText(std::string_view one, std::string_view other, Case letterCase = Case::ignored);

// Below, at or above zero, in the order of the user's locale.
int orderOfTexts(std::string_view one, std::string_view other, Case letterCase);

} // namespace bridge::applescript
