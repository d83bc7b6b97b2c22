#pragma once

#include <string>
#include <string_view>

namespace bridge {

// The text as a script says it: in quotation marks, with a backslash before each backslash and quotation mark, and
// carriage returns and line feeds as \r and \n. Everything else stands for itself. Whatever a user or a file name
// brings goes into a script through this and in no other way.
std::string scriptLiteral(std::string_view text);

// The same at the end of a script that is being written.
void appendScriptLiteral(std::string& script, std::string_view text);

} // namespace bridge
