#include "adapters/vcard/card_reader.h"

#include "adapters/vcard/charset.h"
#include "adapters/vcard/unfolding.h"
#include "base/text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace bridge::vcard {

namespace {

bool isBoundary(const std::optional<ContentLine>& line, std::string_view name) {
    return line && line->is(name) && equalsIgnoringCase(trim(line->value), "VCARD");
}

class CardReader {
public:
    void read(const UnfoldedLine& unfolded) {
        auto line = parsedLine(unfolded.text);
        if (m_agentDepth > 0)
            readAgent(unfolded, line);
        else if (isBoundary(line, "BEGIN"))
            begin(unfolded.number);
        else if (!m_card)
            stray(unfolded.number);
        else if (isBoundary(line, "END"))
            m_found.cards.push_back(*std::exchange(m_card, std::nullopt));
        else if (line)
            m_card->lines.push_back(std::move(*line));
        else
            m_card->badLines.push_back(unfolded.number);
    }

    WrittenCards finish() {
        if (m_card) unfinished();
        return std::move(m_found);
    }

private:
    void begin(int number) {
        auto* last = m_card && !m_card->lines.empty() ? &m_card->lines.back() : nullptr;
        if (last && last->is("AGENT") && trim(last->value).empty()) {
            last->value = "BEGIN:VCARD";
            m_agentDepth = 1;
            return;
        }
        if (m_card) unfinished();
        m_card.emplace();
        m_card->firstLine = number;
        m_isStray = false;
    }

    void readAgent(const UnfoldedLine& unfolded, const std::optional<ContentLine>& line) {
        if (isBoundary(line, "BEGIN")) ++m_agentDepth;
        if (isBoundary(line, "END")) --m_agentDepth;
        m_card->lines.back().value.append("\n").append(unfolded.text);
    }

    void unfinished() {
        m_found.problems.push_back({"the contact that begins in line " + std::to_string(m_card->firstLine),
                                    "It has no end, so the rest of it is missing."});
    }

    // Once for all that stand together.
    void stray(int number) {
        if (!m_isStray)
            m_found.problems.push_back({"line " + std::to_string(number), "It stands outside of every contact."});
        m_isStray = true;
    }

    WrittenCards m_found;
    std::optional<WrittenCard> m_card;
    int m_agentDepth = 0;
    bool m_isStray = false;
};

} // namespace

WrittenCards readCards(std::string_view bytes) {
    CardReader reader;
    const auto text = withoutByteOrderMark(bytes);
    Unfolding unfolding(text);
    while (const auto line = unfolding.next())
        reader.read(*line);
    return reader.finish();
}

} // namespace bridge::vcard
