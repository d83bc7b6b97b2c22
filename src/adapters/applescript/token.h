#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace bridge::applescript {

enum class TokenKind { word, barredWord, integer, real, text, symbol, lineEnd, end };

// The smallest piece of a script.
struct Token {
    TokenKind kind = TokenKind::end;
    int line = 1;            // in the source, from 1
    std::string text;        // a word in lower case, what a text says, a symbol in ASCII: "<=" for ≤
    std::string_view source; // as it stands there
    int64_t integer = 0;
    double real = 0;

    bool isWord(std::string_view word) const { return kind == TokenKind::word && text == word; }
    bool isSymbol(std::string_view symbol) const { return kind == TokenKind::symbol && text == symbol; }
    // An identifier: a word, or anything between bars.
    bool isName() const { return kind == TokenKind::word || kind == TokenKind::barredWord; }
};

} // namespace bridge::applescript
