#include "adapters/vcard/content_line.h"
#include "base/text.h"

#include <algorithm>

namespace bridge::vcard {

namespace {

bool isNameCharacter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '-' || byte == '_';
}

// No name that is in use comes near the limit. Below it a line can't be folded before its first separator, so it never
// looks like base64 that goes on.
bool isName(std::string_view text) {
    constexpr size_t longest = 60;
    return !text.empty() && text.size() <= longest && std::all_of(text.begin(), text.end(), isNameCharacter);
}

// RFC 6868.
std::string withoutCarets(std::string_view value) {
    std::string text;
    for (size_t index = 0; index < value.size(); ++index) {
        const char next = value[index] == '^' && index + 1 < value.size() ? value[index + 1] : '\0';
        const size_t found = std::string_view("n'^").find(next);
        if (next == '\0' || found == std::string_view::npos) {
            text += value[index];
        } else {
            text += "\n\"^"[found];
            ++index;
        }
    }
    return repairUTF8(text);
}

class LineParser {
public:
    explicit LineParser(std::string_view line) : m_rest(line) {}

    std::optional<ContentLine> parse() {
        ContentLine line;
        const auto whole = take(";:");
        const size_t dot = whole.find('.');
        line.group = dot == whole.npos ? "" : whole.substr(0, dot);
        line.name = trim(dot == whole.npos ? whole : whole.substr(dot + 1));
        if (!isName(line.name) || (dot != whole.npos && !isName(line.group))) return std::nullopt;
        while (m_rest.starts_with(';'))
            if (!parameter(line)) return std::nullopt;
        if (!m_rest.starts_with(':')) return std::nullopt;
        line.value = m_rest.substr(1);
        return line;
    }

private:
    std::string_view take(std::string_view ends) {
        const auto taken = m_rest.substr(0, m_rest.find_first_of(ends));
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    bool parameter(ContentLine& line) {
        m_rest.remove_prefix(1);
        ContentParameter made;
        const auto name = trim(take("=;:\""));
        if (!m_rest.starts_with('=')) {
            if (m_rest.starts_with('"')) return false;
            if (!name.empty()) line.parameters.push_back({"", {withoutCarets(name)}});
            return true;
        }
        if (!isName(name)) return false;
        made.name = name;
        do {
            m_rest.remove_prefix(1);
            if (!value(made.values)) return false;
        } while (m_rest.starts_with(','));
        line.parameters.push_back(std::move(made));
        return true;
    }

    bool value(std::vector<std::string>& values) {
        if (!m_rest.starts_with('"')) {
            values.push_back(withoutCarets(take(",;:")));
            return true;
        }
        m_rest.remove_prefix(1);
        values.push_back(withoutCarets(take("\"")));
        if (m_rest.empty()) return false;
        m_rest.remove_prefix(1);
        return true;
    }

    std::string_view m_rest;
};

} // namespace

std::optional<ContentLine> parsedLine(std::string_view line) {
    return LineParser(line).parse();
}

} // namespace bridge::vcard
