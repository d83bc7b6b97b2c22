#include "adapters/vcard/card_text.h"

#include "adapters/vcard/unfolding.h"
#include "base/platform_error.h"
#include "base/text.h"

#include <algorithm>

namespace bridge::vcard {

CardText CardText::parse(std::string_view text) {
    std::vector<Line> lines;
    Unfolding unfolding(text);
    while (auto line = unfolding.next())
        // What is no content line is kept and has no name.
        lines.push_back({line->text, parsedLine(line->text).value_or(ContentLine())});
    const auto isBoundary = [](const Line& line, std::string_view name) {
        return line.content.is(name) && equalsIgnoringCase(trim(line.content.value), "VCARD");
    };
    if (lines.size() < 2 || !isBoundary(lines.front(), "BEGIN") || !isBoundary(lines.back(), "END"))
        throw PlatformError("This is not one whole vCard.");
    lines.erase(lines.begin());
    lines.pop_back();
    return CardText(std::move(lines));
}

std::string CardText::text() const {
    std::string text = "BEGIN:VCARD\r\n";
    for (const auto& line : m_lines)
        text.append(line.text).append("\r\n");
    return text += "END:VCARD\r\n";
}

bool CardText::isOfVersion4() const {
    const auto* version = find("VERSION");
    return version && trim(version->value) == "4.0";
}

const ContentLine* CardText::find(std::string_view name) const {
    const auto found = std::ranges::find_if(m_lines, [&](const Line& line) { return line.content.is(name); });
    return found == m_lines.end() ? nullptr : &found->content;
}

void CardText::replace(std::string_view name, std::vector<Line> lines) {
    const auto isThis = [&](const Line& line) { return line.content.is(name); };
    const auto place = std::ranges::find_if(m_lines, isThis) - m_lines.begin();
    std::erase_if(m_lines, isThis);
    m_lines.insert(m_lines.begin() + place, lines.begin(), lines.end());
}

CardText::Line CardText::lineOf(ContentLine line) {
    auto text = unfolded(line);
    return {std::move(text), std::move(line)};
}

} // namespace bridge::vcard
