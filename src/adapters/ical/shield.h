#pragma once

#include "adapters/ical/content_lines.h"

#include <string>

namespace bridge {

// libical does not give back all that it is given: it strips white space at the ends of texts, takes the escapes out of
// values that it does not know, and of categories, without putting them back, and reads 500 dates of a list at most. So
// a line goes in with control characters, which no line can have of itself, in the place of what would be lost.
std::string shield(const ContentLine& line);

// The same for white space at the ends of a text that is set in the item.
std::string shieldEnds(std::string text);

// What comes out, as it was meant; each character for one.
std::string unshield(std::string text);

} // namespace bridge
