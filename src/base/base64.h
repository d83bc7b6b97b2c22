#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bridge {

// RFC 4648 section 4, with padding. Decoding refuses anything else: other characters, line breaks, missing padding,
// bits left over.
std::string encodeBase64(std::string_view bytes);
std::optional<std::string> decodeBase64(std::string_view text);

} // namespace bridge
