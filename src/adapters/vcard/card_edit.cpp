#include "adapters/vcard/card_edit.h"

#include "adapters/vcard/card_text.h"
#include "adapters/vcard/date_value.h"
#include "adapters/vcard/upgrade.h"
#include "adapters/vcard/vcard.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace bridge {

using namespace vcard;

namespace {

// What VCard::change() writes.
constexpr auto editedProperties = {"N", "FN", "NICKNAME", "ORG", "TITLE", "TEL", "EMAIL", "BDAY", "X-ABLabel"};

ContentLine asVersion3(ContentLine line) {
    if (line.parameterValue("PREF") == "1") {
        const auto* parameter = line.parameter("TYPE");
        auto types = parameter ? parameter->values : std::vector<std::string>();
        types.emplace_back("pref");
        line.removeParameter("PREF");
        line.setParameter("TYPE", std::move(types));
    }
    // The form that everybody reads.
    if (const auto day = line.is("BDAY") ? dayOf(line) : std::nullopt; day && day->year)
        line.value = fmt::format("{:04}-{:02}-{:02}", *day->year, day->month, day->day);
    return line;
}

std::vector<ContentLine> linesOf(const VCard& card, std::string_view name) {
    std::vector<ContentLine> lines;
    std::ranges::copy_if(card.lines(), std::back_inserter(lines), [&](const auto& line) { return line.is(name); });
    return lines;
}

// The lines of a property as they are stored, beside their meaning.
class StoredLines {
public:
    StoredLines(const CardText& card, std::string_view name) : m_isVersion4(card.isOfVersion4()) {
        const auto* version = card.find("VERSION");
        for (const auto& line : card.lines()) {
            if (!line.content.is(name)) continue;
            WrittenCard written;
            if (version) written.lines.push_back(*version);
            written.lines.push_back(line.content);
            std::vector<std::string> faults;
            for (auto& meaning : upgraded(written, faults))
                m_lines.push_back({std::move(meaning), line});
        }
    }

    // The one that means this, each once; or a new one.
    CardText::Line take(const ContentLine& meaning) {
        const auto found = std::ranges::find(m_lines, meaning, &Entry::meaning);
        if (found == m_lines.end()) return CardText::lineOf(m_isVersion4 ? meaning : asVersion3(meaning));
        auto line = std::move(found->line);
        m_lines.erase(found);
        return line;
    }

private:
    struct Entry {
        ContentLine meaning;
        CardText::Line line;
    };
    bool m_isVersion4;
    std::vector<Entry> m_lines;
};

} // namespace

std::string editedCard(const std::string& text, const Contact& contact) {
    const auto before = VCard::parse(text);
    auto after = before;
    after.change(contact);
    if (after == before) return text;
    auto card = CardText::parse(text);
    for (const auto* name : editedProperties) {
        const auto wanted = linesOf(after, name);
        if (wanted == linesOf(before, name)) continue;
        StoredLines stored(card, name);
        std::vector<CardText::Line> lines;
        for (const auto& line : wanted)
            lines.push_back(stored.take(line));
        card.replace(name, std::move(lines));
    }
    return card.text();
}

std::string newCard(const Contact& contact, const std::string& uid) {
    auto card = CardText::ofVersion3();
    card.add({"", "UID", {}, escaped(uid)});
    const auto created = VCard::create(contact);
    for (const auto& line : created.lines())
        if (!line.is("UID")) card.add(asVersion3(line));
    return card.text();
}

} // namespace bridge
