#pragma once

#include "adapters/applescript/token.h"

#include <vector>

namespace bridge::applescript {

// Cuts a source into tokens without comments and continued line ends; the last one is TokenKind::end. The source
// outlives them. Throws ScriptError: a syntax error, or out of memory for a source of a size that no script has.
class Lexer {
public:
    explicit Lexer(std::string_view source) : m_source(source) {}

    std::vector<Token> tokens();

private:
    // A script of 10,000 statements has a tenth of it.
    static constexpr size_t mostTokens = 1'000'000;

    char peek(size_t ahead = 0) const;
    bool startsWith(std::string_view text) const { return m_source.substr(m_position).starts_with(text); }
    bool skipBlank();
    bool skipComment();
    bool skipContinuation();
    void skipNestedComment();
    void skipLine();
    void passLineEnd();

    Token next();
    Token token(TokenKind kind, size_t start) const;
    Token lineEnd();
    Token text();
    Token barredWord();
    Token number();
    Token word();
    Token symbol();
    char escaped();
    size_t lengthOfWord() const;

    std::string_view m_source;
    size_t m_position = 0;
    int m_line = 1;
};

} // namespace bridge::applescript
