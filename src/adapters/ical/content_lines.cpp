#include "adapters/ical/content_lines.h"

#include "base/text.h"

#include <algorithm>
#include <optional>

namespace bridge {

namespace {

bool isWhiteSpace(char c) {
    return c == ' ' || c == '\t';
}

size_t valueStart(std::string_view line) {
    bool isQuoted = false;
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') isQuoted = !isQuoted;
        if (line[i] == ':' && !isQuoted) return i + 1;
    }
    return line.size();
}

// An iana-token; x-names are among them.
size_t tokenLength(std::string_view text) {
    const auto isPart = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
    };
    return static_cast<size_t>(std::ranges::find_if_not(text, isPart) - text.begin());
}

// A param-value; nothing when its quotes don't end.
std::optional<size_t> parameterValueLength(std::string_view text) {
    if (!text.starts_with('"')) return std::min(text.find_first_of("\",;:"), text.size());
    const size_t end = text.find('"', 1);
    if (end == std::string_view::npos) return std::nullopt;
    return end + 1;
}

bool isControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && byte != '\t') || byte == 0x7f;
}

void finish(std::vector<ContentLine>& lines) {
    if (lines.empty()) return;
    auto& text = lines.back().text;
    std::erase_if(text, isControl);
    // What white space is left at the start of stood behind one of them.
    text.erase(0, text.find_first_not_of(" \t"));
    if (!isUTF8(text)) {
        text = repairUTF8(text);
        lines.back().isRepaired = true;
    }
    if (text.empty()) lines.pop_back();
}

} // namespace

bool ContentLine::isWellFormed() const {
    std::string_view rest = text;
    const auto takeToken = [&] {
        const size_t length = tokenLength(rest);
        rest.remove_prefix(length);
        return length > 0;
    };
    if (!takeToken()) return false;
    while (rest.starts_with(';')) {
        rest.remove_prefix(1);
        if (!takeToken() || !rest.starts_with('=')) return false;
        do {
            rest.remove_prefix(1);
            const auto length = parameterValueLength(rest);
            if (!length) return false;
            rest.remove_prefix(*length);
        } while (rest.starts_with(','));
    }
    return rest.starts_with(':');
}

std::string ContentLine::name() const {
    std::string name = text.substr(0, text.find_first_of(";:"));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    while (!name.empty() && isWhiteSpace(name.back()))
        name.pop_back();
    return name;
}

std::string_view ContentLine::value() const {
    return std::string_view(text).substr(valueStart(text));
}

std::vector<ContentLine> readContentLines(std::string_view bytes) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    std::vector<ContentLine> lines;
    size_t number = 1;
    while (!bytes.empty()) {
        const size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        const auto line = bytes.substr(0, end);
        if (!line.empty() && isWhiteSpace(line.front()) && !lines.empty()) {
            lines.back().text += line.substr(1);
        } else if (!line.empty()) {
            finish(lines);
            lines.push_back({.number = number, .text = std::string(line)});
        }
        bytes.remove_prefix(end);
        if (bytes.starts_with("\r\n"))
            bytes.remove_prefix(2);
        else if (!bytes.empty())
            bytes.remove_prefix(1);
        ++number;
    }
    finish(lines);
    return lines;
}

} // namespace bridge
