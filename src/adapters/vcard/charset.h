#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bridge::vcard {

// The text in UTF-8; nothing when no such character set is known. Bytes that it does not have become U+FFFD.
std::optional<std::string> decodeCharset(std::string_view bytes, std::string_view charset);

// A whole file without its byte order mark, in UTF-8 where the mark tells another encoding.
std::string withoutByteOrderMark(std::string_view bytes);

} // namespace bridge::vcard
