#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bridge::vcard {

// Lenient: what is no escape stays as it is.
std::string decodeQuotedPrintable(std::string_view text);

struct TidiedBase64 {
    std::string text; // without white space, with its padding
    bool isWhole = true;
};

// Base64 as people wrap and cut it; what is missing at its end stays missing. Nothing when it is none at all.
std::optional<TidiedBase64> tidiedBase64(std::string_view text);

// The media type of a picture or sound by its first bytes; empty when they tell none.
std::string_view mediaTypeOf(std::string_view bytes);

} // namespace bridge::vcard
