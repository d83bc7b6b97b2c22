#include "server/http_request.h"

#include "base/text.h"

#include <charconv>

namespace bridge {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view blankLine = "\r\n\r\n";

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find(lineEnd);
    const auto line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + lineEnd.size());
    return line;
}

// The next run of anything but spaces; empty at the end.
std::string_view takeWord(std::string_view& line) {
    const auto start = line.find_first_not_of(' ');
    if (start == std::string_view::npos) return {};
    line.remove_prefix(start);
    const auto word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    return word;
}

std::string_view withoutBlanks(std::string_view text) {
    const auto start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(" \t") - start + 1);
}

std::string lowerASCII(std::string_view text) {
    std::string lower(text);
    for (char& character : lower)
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
    return lower;
}

// Digits with an optional sign; anything else, and what overflows, counts as 0.
int64_t decimal(std::string_view text) {
    if (text.starts_with('+') && text.size() > 1 && text[1] != '-') text.remove_prefix(1);
    int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : 0;
}

} // namespace

std::optional<std::string_view> ParsedHTTPRequest::header(std::string_view lowerCaseName) const {
    const auto found = headers.find(lowerCaseName);
    if (found == headers.end()) return std::nullopt;
    return found->second;
}

HTTPRequestReader::State HTTPRequestReader::add(std::string_view bytes) {
    m_received += bytes.size();
    if (m_received > maximumRequestBytes) return State::tooLarge;
    if (m_malformed) return State::incomplete;
    m_buffer.append(bytes);

    if (!m_bodyStart) {
        const auto headEnd = m_buffer.find(blankLine, m_searched);
        if (headEnd == std::string::npos) {
            m_searched = m_buffer.size() < blankLine.size() ? 0 : m_buffer.size() - blankLine.size() + 1;
            return State::incomplete;
        }
        m_bodyStart = headEnd + blankLine.size();
        readHead(std::string_view(m_buffer).substr(0, headEnd));
        if (m_malformed) {
            m_buffer = {};
            m_request = {};
            m_headerMemory = 0;
            return State::incomplete;
        }
    }
    return m_buffer.size() - *m_bodyStart >= m_bodyLength ? State::complete : State::incomplete;
}

ParsedHTTPRequest HTTPRequestReader::take() {
    m_request.body.assign(m_buffer, *m_bodyStart, m_bodyLength);
    m_buffer = {};
    m_headerMemory = 0;
    return std::move(m_request);
}

bool HTTPRequestReader::endsExactly() const {
    return m_bodyStart && m_buffer.size() == *m_bodyStart + m_bodyLength &&
           !m_request.headers.contains("transfer-encoding") && !m_request.headers.contains("expect") &&
           (m_bodyLength > 0 || m_request.method == "GET");
}

void HTTPRequestReader::readHead(std::string_view head) {
    if (!isUTF8(head)) {
        m_malformed = true;
        return;
    }
    auto requestLine = takeLine(head);
    m_request.method = takeWord(requestLine);
    m_request.path = takeWord(requestLine);
    while (!head.empty())
        readHeader(takeLine(head));
    m_malformed = m_request.path.empty() || !readContentLength();
}

void HTTPRequestReader::readHeader(std::string_view line) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos || colon == 0 || colon + 1 == line.size()) return;
    // Thousands of tiny headers take far more memory than bytes.
    constexpr size_t memoryOfOne = 128;
    m_headerMemory += memoryOfOne + line.size();
    m_request.headers.insert_or_assign(lowerASCII(line.substr(0, colon)), withoutBlanks(line.substr(colon + 1)));
}

bool HTTPRequestReader::readContentLength() {
    const auto length = decimal(m_request.header("content-length").value_or(""));
    if (length < 0) return false;
    m_bodyLength = static_cast<size_t>(length);
    return true;
}

} // namespace bridge
