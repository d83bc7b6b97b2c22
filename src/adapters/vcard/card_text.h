#pragma once

#include "adapters/vcard/content_line.h"
#include "platform/contact_store.h"

#include <string>
#include <string_view>
#include <vector>

namespace bridge::vcard {

// One vCard line by line, as a store of any version keeps it: what is not changed stays to the letter. Between BEGIN
// and END.
class CardText {
public:
    struct Line {
        std::string text; // unfolded
        ContentLine content = {};
    };

    // Throws PlatformError for text that is no vCard.
    static CardText parse(std::string_view text);
    static CardText ofVersion3() { return CardText({{"VERSION:3.0", {"", "VERSION", {}, "3.0"}}}); }

    std::string text() const;
    bool isOfVersion4() const;

    const std::vector<Line>& lines() const { return m_lines; }
    const ContentLine* find(std::string_view name) const;
    void add(ContentLine line) { m_lines.push_back(lineOf(std::move(line))); }
    template <typename Condition> void removeIf(Condition condition) {
        std::erase_if(m_lines, [&](const Line& line) { return condition(line.content); });
    }
    // Makes the lines of this property these, where the first of them stood.
    void replace(std::string_view name, std::vector<Line> lines);

    static Line lineOf(ContentLine line);

private:
    explicit CardText(std::vector<Line> lines) : m_lines(std::move(lines)) {}

    std::vector<Line> m_lines;
};

} // namespace bridge::vcard
