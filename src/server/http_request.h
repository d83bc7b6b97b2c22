#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace bridge {

struct ParsedHTTPRequest {
    std::string method;                                      // as sent
    std::string path;                                        // the target as sent, with its query
    std::map<std::string, std::string, std::less<>> headers; // names in lower case
    std::string body;                                        // exactly Content-Length bytes

    std::optional<std::string_view> header(std::string_view lowerCaseName) const;
};

// Gathers the bytes of one request as they come in. Deliberately simple: a target and headers as HTTP/1.1 (RFC 9112)
// writes them and a body of Content-Length bytes; the version is not looked at, there is no chunked coding, and what is
// malformed just never becomes complete. The work is in proportion to the bytes, however small the pieces are.
class HTTPRequestReader {
public:
    // Head and body together.
    static constexpr size_t maximumRequestBytes = 1'048'576;

    enum class State {
        incomplete,
        complete, // take() it
        tooLarge,
    };

    State add(std::string_view bytes);
    ParsedHTTPRequest take();

    // Whether, as far as the peer can be believed, nothing more of it is under way after a complete request.
    bool endsExactly() const;
    // Roughly the memory that the unfinished request takes.
    size_t buffered() const { return m_buffer.size() + m_headerMemory; }

private:
    void readHead(std::string_view head);
    void readHeader(std::string_view line);
    bool readContentLength();

    std::string m_buffer;
    size_t m_received = 0;
    size_t m_searched = 0; // no blank line begins before this place
    std::optional<size_t> m_bodyStart;
    size_t m_bodyLength = 0;
    size_t m_headerMemory = 0;
    bool m_malformed = false; // can't become complete any more; its bytes only count
    ParsedHTTPRequest m_request;
};

} // namespace bridge
