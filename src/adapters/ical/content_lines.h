#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bridge {

// A content line (RFC 5545, 3.1) without its folds and line end.
struct ContentLine {
    size_t number = 0; // of its first line in the file, from 1
    std::string text;
    bool isRepaired = false; // it was not UTF-8

    // Whether it has a name, parameters and a value as the standard's grammar wants them.
    bool isWellFormed() const;
    // The name of the property, in upper case.
    std::string name() const;
    // The value, as far as a colon in a parameter's quotes does not count.
    std::string_view value() const;
};

// Takes any line end and leaves out empty lines, a byte order mark, and control characters, which no line can have.
// What is not UTF-8 becomes U+FFFD.
std::vector<ContentLine> readContentLines(std::string_view bytes);

} // namespace bridge
