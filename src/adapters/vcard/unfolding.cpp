#include "adapters/vcard/unfolding.h"

#include "adapters/vcard/content_line.h"

#include <initializer_list>

namespace bridge::vcard {

namespace {

// Whether a line that is still growing has one of these encodings.
class EncodingTest {
public:
    explicit EncodingTest(std::initializer_list<std::string_view> encodings) : m_encodings(encodings) {}

    bool holds(std::string_view text) {
        if (m_answer != Answer::unknown) return m_answer == Answer::yes;
        const auto line = parsedLine(text);
        // Folding can go through a parameter. Trying again for ever would let a hostile file take the square of its
        // size.
        constexpr size_t longestHead = 4096;
        if (!line && text.size() < longestHead) return false;
        m_answer = line && hasOne(*line) ? Answer::yes : Answer::no;
        return m_answer == Answer::yes;
    }

private:
    enum class Answer { unknown, no, yes };

    bool hasOne(const ContentLine& line) const {
        for (const auto& [name, values] : line.parameters)
            for (const auto encoding : m_encodings)
                if ((name.empty() || equalsIgnoringCase(name, "ENCODING")) && equalsIgnoringCase(values[0], encoding))
                    return true;
        return false;
    }

    std::vector<std::string_view> m_encodings;
    Answer m_answer = Answer::unknown;
};

bool looksLikeBase64(std::string_view line) {
    for (const char byte : line)
        if (!(byte >= 'a' && byte <= 'z') && !(byte >= 'A' && byte <= 'Z') && !(byte >= '0' && byte <= '9') &&
            byte != '+' && byte != '/' && byte != '=')
            return false;
    return !line.empty();
}

} // namespace

std::optional<std::string_view> Unfolding::peek() {
    if (m_line) return m_line;
    if (m_rest.empty()) return std::nullopt;
    const size_t end = m_rest.find_first_of("\r\n");
    m_line = m_rest.substr(0, end);
    m_lineSize = end == m_rest.npos ? m_rest.size() : end + (m_rest.substr(end).starts_with("\r\n") ? 2 : 1);
    return m_line;
}

void Unfolding::skip() {
    m_rest.remove_prefix(m_lineSize);
    m_line.reset();
    ++m_number;
}

std::optional<UnfoldedLine> Unfolding::next() {
    while (peek() && peek()->find_first_not_of(" \t") == std::string_view::npos)
        skip();
    if (!peek()) return std::nullopt;
    UnfoldedLine line{m_number + 1, std::string(*peek())};
    skip();
    const auto add = [&](std::string_view more) {
        line.text += more;
        skip();
    };
    EncodingTest isQuotedPrintable({"QUOTED-PRINTABLE"});
    EncodingTest isBase64({"BASE64", "B"});
    while (peek()) {
        const auto more = *peek();
        if (line.text.ends_with('=') && isQuotedPrintable.holds(line.text)) {
            line.text.pop_back();
            add(more);
        } else if (more.starts_with(' ') || more.starts_with('\t')) {
            add(more.substr(1));
        } else if (looksLikeBase64(more) && isBase64.holds(line.text)) {
            add(more);
        } else {
            break;
        }
    }
    return line;
}

} // namespace bridge::vcard
