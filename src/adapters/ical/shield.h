#pragma once

#include "adapters/ical/content_lines.h"

#include <string>

namespace bridge {

// libical does not give back all that it is given: it strips white space at the ends of texts, takes the escapes out of
// values that it does not know, and of categories, without putting them back, loses a character behind an escape that
// there is not, reads 500 dates of a list at most, and makes something else each time of a line that breaks the
// grammar. So a line goes in with control characters, which no line can have of itself, in the place of what would be
// lost.
std::string shield(const ContentLine& line);

// The same for white space at the ends of a text that is set in the item.
std::string shieldEnds(std::string text);

// The text of a value that comes out, as it was meant.
std::string unshield(std::string text);

// The same for the lines of an item, which have no folds; they get them.
std::string unshieldLines(std::string_view text);

} // namespace bridge
