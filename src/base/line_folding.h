#pragma once

#include <string>
#include <string_view>

namespace bridge {

// The line in lines of at most 75 bytes with their ends, those after the first beginning with a space, as iCalendar and
// vCard have it (RFC 5545, 3.1; RFC 6350, 3.2). No character of its UTF-8 is cut in two.
std::string folded(std::string_view line);

} // namespace bridge
