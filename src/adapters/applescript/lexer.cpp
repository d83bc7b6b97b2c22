#include "adapters/applescript/lexer.h"

#include "adapters/applescript/errors.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace bridge::applescript {

namespace {

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isWordByte(char byte) {
    return isDigit(byte) || byte == '_' || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

std::string lowerWord(std::string_view word) {
    std::string lower(word);
    for (char& byte : lower) {
        if (static_cast<unsigned char>(byte) >= 0x80) return lowercase(word);
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    }
    return lower;
}

// The bytes of the character at the position when it may stand in a word.
size_t wordCharacter(std::string_view source, size_t position) {
    if (static_cast<unsigned char>(source[position]) < 0x80) return isWordByte(source[position]) ? 1 : 0;
    const auto* bytes = reinterpret_cast<const uint8_t*>(source.data());
    auto index = static_cast<int32_t>(position);
    const int32_t start = index;
    UChar32 character = 0;
    U8_NEXT(bytes, index, static_cast<int32_t>(source.size()), character);
    if (character < 0) return 0;
    return u_isalnum(character) ? static_cast<size_t>(index - start) : 0;
}

} // namespace

char Lexer::peek(size_t ahead) const {
    return m_position + ahead < m_source.size() ? m_source[m_position + ahead] : '\0';
}

std::vector<Token> Lexer::tokens() {
    std::vector<Token> result;
    do {
        if (result.size() == mostTokens) throw memoryExhausted();
        result.push_back(next());
    } while (result.back().kind != TokenKind::end);
    return result;
}

Token Lexer::next() {
    while (skipBlank() || skipComment() || skipContinuation()) {
    }
    if (m_position >= m_source.size()) return token(TokenKind::end, m_position);
    const char byte = peek();
    if (byte == '\n' || byte == '\r') return lineEnd();
    if (byte == '"') return text();
    if (byte == '|') return barredWord();
    if (isDigit(byte)) return number();
    return wordCharacter(m_source, m_position) > 0 ? word() : symbol();
}

Token Lexer::token(TokenKind kind, size_t start) const {
    Token made;
    made.kind = kind;
    made.line = m_line;
    made.source = m_source.substr(start, m_position - start);
    return made;
}

Token Lexer::lineEnd() {
    auto made = token(TokenKind::lineEnd, m_position);
    passLineEnd();
    return made;
}

Token Lexer::text() {
    auto made = token(TokenKind::text, m_position);
    const size_t start = m_position++;
    while (peek() != '"') {
        // Everything up to the next byte that means something else.
        const size_t plain = std::min(m_source.find_first_of("\"\\\r\n", m_position), m_source.size());
        made.text.append(m_source, m_position, plain - m_position);
        m_position = plain;
        if (m_position >= m_source.size()) throw syntaxFault(made.line, "Expected “\"” but found end of script.");
        if (peek() == '\\') made.text += escaped();
        if (peek() != '\r' && peek() != '\n') continue;
        const size_t end = m_position;
        passLineEnd();
        made.text.append(m_source, end, m_position - end);
    }
    ++m_position;
    made.source = m_source.substr(start, m_position - start);
    return made;
}

char Lexer::escaped() {
    const char byte = peek(1);
    m_position += 2;
    switch (byte) {
    case '\\':
    case '"':
        return byte;
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        throw syntaxFault(m_line, "Expected “\"” but found unknown token.");
    }
}

Token Lexer::barredWord() {
    const size_t start = m_position + 1;
    const size_t end = m_source.find_first_of("|\r\n", start);
    if (end == std::string_view::npos || m_source[end] != '|' || end == start)
        throw syntaxFault(m_line, "Expected “|” but found end of line.");
    m_position = end + 1;
    auto made = token(TokenKind::barredWord, start - 1);
    made.source = m_source.substr(start, end - start);
    made.text = lowerWord(made.source);
    return made;
}

Token Lexer::number() {
    const size_t start = m_position;
    bool isReal = false;
    while (isDigit(peek()))
        ++m_position;
    if (peek() == '.' && isDigit(peek(1))) {
        isReal = true;
        for (++m_position; isDigit(peek());)
            ++m_position;
    }
    const size_t sign = peek(1) == '+' || peek(1) == '-' ? 2 : 1;
    if ((peek() == 'e' || peek() == 'E') && isDigit(peek(sign))) {
        isReal = true;
        for (m_position += sign; isDigit(peek());)
            ++m_position;
    }
    auto made = token(isReal ? TokenKind::real : TokenKind::integer, start);
    const char* end = made.source.data() + made.source.size();
    if (!isReal && std::from_chars(made.source.data(), end, made.integer).ec == std::errc()) return made;
    made.kind = TokenKind::real;
    if (std::from_chars(made.source.data(), end, made.real).ec != std::errc())
        throw syntaxFault(m_line, "The number is too large.");
    return made;
}

size_t Lexer::lengthOfWord() const {
    size_t length = 0;
    while (const size_t more = m_position + length < m_source.size() ? wordCharacter(m_source, m_position + length) : 0)
        length += more;
    return length;
}

Token Lexer::word() {
    const size_t start = m_position;
    m_position += lengthOfWord();
    const auto read = m_source.substr(start, m_position - start);
    if (read.ends_with('n') && peek() == '\'' && peek(1) == 't') m_position += 2; // isn't, doesn't
    auto made = token(TokenKind::word, start);
    made.text = lowerWord(made.source);
    return made;
}

Token Lexer::symbol() {
    struct Symbol {
        std::string_view written, meant;
    };
    static constexpr std::array<Symbol, 22> symbols{
        {{"<=", "<="}, {">=", ">="}, {"/=", "/="}, {"≤", "<="}, {"≥", ">="}, {"≠", "/="}, {"÷", "/"}, {"×", "*"},
         {"'s", "'s"}, {"&", "&"},   {"+", "+"},   {"-", "-"},  {"*", "*"},  {"/", "/"},  {"^", "^"}, {"=", "="},
         {"<", "<"},   {">", ">"},   {"(", "("},   {")", ")"},  {"{", "{"},  {"}", "}"}}};
    static constexpr std::string_view others = ",:";
    const size_t start = m_position;
    for (const auto& symbol : symbols) {
        if (!startsWith(symbol.written)) continue;
        m_position += symbol.written.size();
        auto made = token(TokenKind::symbol, start);
        made.text = symbol.meant;
        return made;
    }
    if (others.find(peek()) == std::string_view::npos)
        throw syntaxFault(m_line, "Expected expression but found unknown token.");
    ++m_position;
    auto made = token(TokenKind::symbol, start);
    made.text = made.source;
    return made;
}

} // namespace bridge::applescript
