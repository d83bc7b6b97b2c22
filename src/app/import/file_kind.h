#pragma once

#include <optional>
#include <string_view>

namespace bridge {

enum class FileKind { calendar, contacts };

// Told by the first line that begins something of iCalendar or vCard, whatever stands before it; nothing when there is
// none. The text is in UTF-8, or in an encoding that has the letters of ASCII.
std::optional<FileKind> kindOf(std::string_view text);

} // namespace bridge
