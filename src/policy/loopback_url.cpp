#include "policy/loopback_url.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace bridge {

namespace {

constexpr std::string_view digits = "0123456789";

// Of ASCII alone: the Unicode way would make an "s" of the long s, and a host of what is none.
constexpr char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

// `prefix` is in lower case.
bool takePrefix(std::string_view& text, std::string_view prefix) {
    if (text.size() < prefix.size()) return false;
    for (size_t index = 0; index < prefix.size(); ++index)
        if (lower(text[index]) != prefix[index]) return false;
    text.remove_prefix(prefix.size());
    return true;
}

bool isPort(std::string_view text) {
    if (text.empty() || text.size() > 5 || text[0] == '0' || text.find_first_not_of(digits) != text.npos) return false;
    unsigned value = 0;
    for (const char digit : text)
        value = value * 10 + static_cast<unsigned>(digit - '0');
    return value <= 65535;
}

bool isAuthority(std::string_view text) {
    constexpr std::array<std::string_view, 3> hosts{"127.0.0.1", "localhost", "[::1]"};
    if (std::none_of(hosts.begin(), hosts.end(), [&](std::string_view host) { return takePrefix(text, host); }))
        return false;
    return text.empty() || (text[0] == ':' && isPort(text.substr(1)));
}

// The characters of RFC 3986's path, and "%" only before two hexadecimal digits.
bool isPath(std::string_view text) {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr std::string_view marks = "-._~!$&'()*+,;=:@/";
    constexpr std::string_view hexadecimal = "0123456789abcdefABCDEF";
    for (size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '%') {
            if (index + 2 >= text.size() || hexadecimal.find(text[index + 1]) == hexadecimal.npos ||
                hexadecimal.find(text[index + 2]) == hexadecimal.npos)
                return false;
            index += 2;
        } else if (letters.find(text[index]) == letters.npos && digits.find(text[index]) == digits.npos &&
                   marks.find(text[index]) == marks.npos) {
            return false;
        }
    }
    return true;
}

} // namespace

bool isLoopbackURL(std::string_view text) {
    if (!takePrefix(text, "http://")) return false;
    const auto pathStart = std::min(text.find('/'), text.size());
    return isAuthority(text.substr(0, pathStart)) && isPath(text.substr(pathStart));
}

} // namespace bridge
