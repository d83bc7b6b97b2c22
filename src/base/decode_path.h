#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace bridge {

// A JSON value that is not what a record asks for. The message names the place: ".slides[3].title: expected a string".
class DecodingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Where the decoder stands, as a chain of steps on the stack, spelt out only when something is wrong.
class DecodePath {
public:
    DecodePath() = default;
    DecodePath key(std::string_view name) const { return DecodePath(this, name, 0); }
    DecodePath index(size_t position) const { return DecodePath(this, {}, position); }

    [[noreturn]] void fail(std::string_view problem) const;

private:
    DecodePath(const DecodePath* parent, std::string_view key, size_t index)
        : m_parent(parent), m_key(key), m_index(index) {}
    void write(std::string& text) const;

    const DecodePath* m_parent = nullptr;
    std::string_view m_key;
    size_t m_index = 0;
};

} // namespace bridge
