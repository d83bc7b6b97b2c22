#include "adapters/applescript/errors.h"
#include "adapters/applescript/lexer.h"

#include <algorithm>

namespace bridge::applescript {

bool Lexer::skipBlank() {
    const size_t start = m_position;
    while (true) {
        if (m_position < m_source.size() && (peek() == ' ' || peek() == '\t'))
            ++m_position;
        else if (startsWith("\u00a0") || startsWith("\ufeff"))
            m_position += startsWith("\u00a0") ? 2 : 3;
        else
            return m_position > start;
    }
}

bool Lexer::skipComment() {
    if (startsWith("--") || startsWith("#")) {
        skipLine();
        return true;
    }
    if (!startsWith("(*")) return false;
    skipNestedComment();
    return true;
}

void Lexer::skipNestedComment() {
    const int line = m_line;
    int depth = 0;
    do {
        const size_t next = m_source.find_first_of("(*\r\n", m_position);
        if (next == std::string_view::npos) throw syntaxFault(line, "Expected “*)” but found end of script.");
        m_position = next;
        if (startsWith("(*") || startsWith("*)")) {
            depth += startsWith("(*") ? 1 : -1;
            m_position += 2;
        } else if (peek() == '\r' || peek() == '\n') {
            passLineEnd();
        } else {
            ++m_position;
        }
    } while (depth > 0);
}

bool Lexer::skipContinuation() {
    constexpr std::string_view sign = "¬";
    if (!startsWith(sign)) return false;
    m_position += sign.size();
    while (skipBlank() || skipComment()) {
    }
    if (m_position >= m_source.size()) return true;
    if (peek() != '\r' && peek() != '\n') throw syntaxFault(m_line, "Expected end of line after “¬”.");
    passLineEnd();
    return true;
}

void Lexer::skipLine() {
    m_position = std::min(m_source.find_first_of("\r\n", m_position), m_source.size());
}

void Lexer::passLineEnd() {
    m_position += startsWith("\r\n") ? 2 : 1;
    ++m_line;
}

} // namespace bridge::applescript
