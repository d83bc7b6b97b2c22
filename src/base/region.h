#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bridge {

// Regions are told by their two letters of ISO 3166-1.

// The region that goes by this name in the user's language, in English or in its own, or by its code of two or three
// letters; without regard to case, accents and punctuation.
std::optional<std::string> regionNamed(std::string_view name);

// Where the user's language settings say that the user is; empty when they don't.
std::string userRegion();

// The user's language as RFC 5646 writes it, with the region if the settings tell one: "de-CH". English when they tell
// nothing.
std::string userLanguage();

// Whether there are letters in the text, and all of them Latin.
bool isInLatinLetters(std::string_view text);

} // namespace bridge
