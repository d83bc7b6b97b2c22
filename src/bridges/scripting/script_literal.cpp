#include "bridges/scripting/script_literal.h"

namespace bridge {

namespace {

// What stands for the character; 0 where it stands for itself.
char escaped(char character) {
    switch (character) {
    case '\\':
    case '"':
        return character;
    case '\r':
        return 'r';
    case '\n':
        return 'n';
    default:
        return 0;
    }
}

} // namespace

void appendScriptLiteral(std::string& script, std::string_view text) {
    script += '"';
    size_t plain = 0;
    for (size_t index = 0; index < text.size(); ++index) {
        const char letter = escaped(text[index]);
        if (letter == 0) continue;
        script.append(text, plain, index - plain);
        script += '\\';
        script += letter;
        plain = index + 1;
    }
    script.append(text, plain);
    script += '"';
}

std::string scriptLiteral(std::string_view text) {
    std::string literal;
    literal.reserve(text.size() + 2);
    appendScriptLiteral(literal, text);
    return literal;
}

} // namespace bridge
