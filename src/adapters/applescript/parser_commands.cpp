#include "adapters/applescript/parser.h"

namespace bridge::applescript {

Expression Parser::command(const Term& term) {
    const auto& labels = m_terms->labels(term.name);
    const Labels scope{&labels, m_labels};
    const Instead<const Labels*> stop(m_labels, &scope);
    CommandCall call;
    call.name = term.name;
    if (!isAtLabel() && beginsExpression()) call.direct = expression();
    while (!isAtLineEnd()) {
        if (const auto* label = acceptLabel(labels)) {
            m_wantsConstant = true;
            auto value = expression();
            std::string name;
            for (const auto& word : *label)
                name += (name.empty() ? "" : " ") + word;
            call.parameters.emplace_back(std::move(name), std::move(value));
        } else if (!isAtLabel() && (at()->isWord("with") || at()->isWord("without"))) {
            switches(call, labels);
        } else {
            break;
        }
    }
    return bridge::applescript::expression(std::move(call));
}

// "with replacing, recursion and backup": parameters that are true, or false after "without".
void Parser::switches(CommandCall& call, const std::vector<Words>& labels) {
    const bool isOn = take().isWord("with");
    do {
        const auto start = m_position;
        if (!acceptLabel(labels)) fault("label of a parameter");
        std::string name;
        for (auto index = start; index < m_position; ++index)
            name += (name.empty() ? "" : " ") + m_tokens[index].text;
        call.parameters.emplace_back(std::move(name), bridge::applescript::expression(Literal{isOn}));
    } while (acceptSymbol(",") || accept("and"));
}

const Words* Parser::acceptLabel(const std::vector<Words>& labels) {
    for (const auto& label : labels)
        if (standAt(label, at())) {
            m_position += label.size();
            return &label;
        }
    return nullptr;
}

bool Parser::isAtLabel() const {
    for (const auto* scope = m_labels; scope; scope = scope->outer)
        for (const auto& label : *scope->own)
            if (standAt(label, at())) return true;
    return false;
}

bool Parser::beginsExpression() const {
    switch (at()->kind) {
    case TokenKind::lineEnd:
    case TokenKind::end:
        return false;
    case TokenKind::symbol:
        return at()->text == "(" || at()->text == "{" || at()->text == "-";
    case TokenKind::word:
        break;
    default:
        return true;
    }
    static const std::set<std::string> starts{
        "application", "back",   "beginning", "count", "eighth", "end",   "every", "exists", "false", "fifth", "first",
        "fourth",      "front",  "get",       "it",    "its",    "last",  "me",    "middle", "my",    "ninth", "not",
        "return",      "second", "seventh",   "sixth", "some",   "tenth", "the",   "third",  "true"};
    if (starts.contains(at()->text)) return true;
    const auto* term = m_terms->termAt(at());
    return !isReserved(at()->text) || (term && term->words.size() > 1);
}

} // namespace bridge::applescript
