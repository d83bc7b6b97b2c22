#pragma once

#include <string>
#include <string_view>

namespace bridge::office {

// How a text has to be put into a cell so that it becomes what it would become when typed there.
enum class Typing {
    plain,   // many at once: text, a number, a simple formula
    logical, // TRUE or FALSE
    careful, // one by one, with LibreOffice's own eyes: it may get a format, or its commas are those of English
    literal  // one by one: what follows the apostrophe is text, whatever it looks like
};
Typing typingOf(std::string_view text);

} // namespace bridge::office
