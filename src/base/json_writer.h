#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace bridge {

// Writes compact JSON (RFC 8259) into a string of its own. The caller gives the names of each object in ascending byte
// order; the record codec and JSONValue do. Bytes that are not UTF-8 come out as U+FFFD, one for each bad sequence.
class JSONWriter {
public:
    JSONWriter() { m_text.reserve(usualSize); }

    void beginObject() { open('{'); }
    void endObject() { close('}'); }
    void beginArray() { open('['); }
    void endArray() { close(']'); }
    void name(std::string_view name);

    void string(std::string_view text);
    // The shortest decimal text that reads back as the same number: 5, not 5.0. A whole number that a double counts
    // exactly has no exponent: 500000, not 5e+05. Throws JSONError for infinity and NaN.
    void number(double value);
    void integer(int64_t value);
    void boolean(bool value);
    void null();

    std::string take() { return std::move(m_text); }

private:
    void open(char bracket);
    void close(char bracket);
    void separate();
    void quote(std::string_view text);

    static constexpr size_t usualSize = 1024;

    std::string m_text;
    bool m_needsComma = false;
};

struct JSONValue;
void encode(JSONWriter& writer, const JSONValue& value);
std::string writeJSON(const JSONValue& value);

} // namespace bridge
