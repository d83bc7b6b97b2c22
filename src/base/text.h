#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace bridge {

// Text is UTF-8 everywhere. The functions below follow the Unicode standard through ICU; where the user's locale
// counts it is the one of the process. Bytes that are not UTF-8 are taken as U+FFFD.

bool isUTF8(std::string_view text);
// The text with each ill-formed sequence replaced by one U+FFFD.
std::string repairUTF8(std::string_view text);

// Without white space and line breaks (the White_Space property) at both ends.
std::string_view trim(std::string_view text);

// Without differences of case and of accents, for searching: Café, CAFÉ and cafe fold alike.
std::string fold(std::string_view text);

std::string lowercase(std::string_view text);
std::string uppercase(std::string_view text);

// User-perceived characters: extended grapheme clusters. Counts no further than `most`.
size_t graphemeCount(std::string_view text, size_t most = SIZE_MAX);

// A byte string that orders as the text does for the user's locale without regard to case: compare keys, not texts,
// when sorting many. Equal keys mean equal for the user.
std::string sortKey(std::string_view text);

} // namespace bridge
