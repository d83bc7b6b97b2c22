#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bridge::vcard {

struct UnfoldedLine {
    int number = 0; // of its first line in the file, from 1
    std::string text;
};

// Puts the content lines of a file together, whatever its line ends: lines that begin with white space go on with the
// one before, quoted-printable goes on after a "=" at the end, and base64 of vCard 2.1 until an empty line.
class Unfolding {
public:
    // Of a text that lives as long.
    explicit Unfolding(std::string_view text) : m_rest(text) {}

    // The next one that is not empty; nothing at the end.
    std::optional<UnfoldedLine> next();

private:
    std::optional<std::string_view> peek();
    void skip();

    std::string_view m_rest;
    std::optional<std::string_view> m_line; // looked at already
    size_t m_lineSize = 0;                  // with its end
    int m_number = 0;
};

} // namespace bridge::vcard
