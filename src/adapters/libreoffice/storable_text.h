#pragma once

#include <string>

namespace bridge::office {

// The text with every line break as one line feed and nothing but UTF-8. Throws ScriptError for a control character
// that no document can store: the file could not be read again.
std::string storableText(const std::string& text);

} // namespace bridge::office
