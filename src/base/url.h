#pragma once

#include "base/record.h"

namespace bridge {

// An address as RFC 3986 writes it, kept as it came. Only what can't stand in any address is refused: nothing at all,
// white space, control characters and the delimiters < > " { } | \ ^ `.
struct URL {
    std::string text;
    auto operator<=>(const URL&) const = default;
};

inline bool canBeURL(std::string_view text) {
    for (const char character : text)
        if (static_cast<unsigned char>(character) <= ' ' || character == 0x7f ||
            std::string_view("<>\"{}|\\^`").find(character) != std::string_view::npos)
            return false;
    return !text.empty();
}

template <> struct Codec<URL> {
    static void encode(JSONWriter& writer, const URL& url) { writer.string(url.text); }
    static URL decode(const JSONValue& value, const DecodePath& path) {
        const auto* text = value.string();
        if (!text || text->empty()) path.fail("expected an address");
        if (!canBeURL(*text)) path.fail("expected an address without spaces");
        return {*text};
    }
};

} // namespace bridge
