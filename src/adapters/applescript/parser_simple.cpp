#include "adapters/applescript/errors.h"
#include "adapters/applescript/parser.h"
#include "base/text.h"

#include <array>
#include <numbers>

namespace bridge::applescript {

namespace {

template <typename Kind> Expression make(Kind content) {
    return bridge::applescript::expression(std::move(content));
}

} // namespace

Expression Parser::simple() {
    const Nested nested(*this);
    const bool wantsConstant = std::exchange(m_wantsConstant, false);
    while (accept("the")) {
    }
    if (acceptSymbol("(")) {
        const Instead<const Labels*> none(m_labels, nullptr);
        auto inner = expression();
        expectSymbol(")");
        return inner;
    }
    if (acceptSymbol("{")) return isRecordKey() ? record() : list();
    if (at()->kind == TokenKind::barredWord) return nameOrCall();
    if (at()->kind != TokenKind::word) return literal();
    const auto* term = m_terms->termAt(at());
    if (at()[1].isWord("of") && !(term && term->isProperty) && accept("number")) return count();
    // A single word that the language keeps for itself stays its own, "end" for one; "end date" is the application's.
    if (term && (term->words.size() > 1 || !isReserved(at()->text))) {
        const Instead<bool> constant(m_wantsConstant, wantsConstant);
        return termExpression(*term);
    }
    if (auto word = keyword()) return word;
    if (auto text = constantText()) return text;
    if (!isName()) fault("expression");
    return nameOrCall();
}

Expression Parser::literal() {
    switch (at()->kind) {
    case TokenKind::integer:
        return make(Literal{take().integer});
    case TokenKind::real:
        return make(Literal{take().real});
    case TokenKind::text:
        return make(Literal{std::move(take().text)});
    default:
        fault("expression");
    }
}

Expression Parser::keyword() {
    if (accept("true")) return make(Literal{true});
    if (accept("false")) return make(Literal{false});
    if (acceptWords({"missing", "value"})) return make(Literal{MissingValue{}});
    if (accept("null")) return make(Literal{Constant{"null"}});
    if (accept("application")) return applicationName();
    if (acceptWords({"posix", "file"})) return make(FileName{simple()});
    if (acceptWords({"a", "reference", "to"}) || acceptWords({"a", "ref", "to"})) return reference();
    if (accept("get")) return expression();
    if (accept("count")) return count();
    if (accept("exists")) return make(Existence{reference()});
    if (accept("every")) return every();
    if (accept("some")) return some();
    if (at()->isWord("end") || at()->isWord("beginning")) return insertion();
    static constexpr std::array<std::string_view, 10> ordinals{"first", "second",  "third",  "fourth", "fifth",
                                                               "sixth", "seventh", "eighth", "ninth",  "tenth"};
    for (size_t index = 0; index < ordinals.size(); ++index)
        if (accept(ordinals[index])) return elementAt(className("class name"), static_cast<int64_t>(index) + 1);
    if (accept("front")) return elementAt(className("class name"), 1);
    if (accept("last") || accept("back")) return elementAt(className("class name"), -1);
    if (accept("middle")) {
        return make(Element{className("class name"), Element::Selection::middle, {}, {}, {}, {}});
    }
    return selfWord();
}

Expression Parser::selfWord() {
    if (accept("it")) return make(Self::it);
    if (accept("me")) return make(Self::me);
    if (accept("result")) return make(Self::result);
    if (accept("my")) {
        if (!isName()) fault("identifier");
        return nameOrCall();
    }
    if (!accept("its")) return nullptr;
    auto part = simple();
    attach(part, make(Self::it));
    return part;
}

Expression Parser::constantText() {
    struct Named {
        std::string_view name;
        const char* text;
    };
    static constexpr std::array<Named, 5> texts{
        {{"return", "\r"}, {"linefeed", "\n"}, {"tab", "\t"}, {"space", " "}, {"quote", "\""}}};
    for (const auto& named : texts)
        if (!at()[1].isSymbol("(") && accept(named.name)) return make(Literal{std::string(named.text)});
    if (accept("pi")) return make(Literal{std::numbers::pi});
    return nullptr;
}

Expression Parser::list() {
    const Instead<const Labels*> none(m_labels, nullptr);
    ListLiteral list;
    if (acceptSymbol("}")) return make(std::move(list));
    do
        list.items.push_back(expression());
    while (acceptSymbol(","));
    expectSymbol("}");
    return make(std::move(list));
}

bool Parser::isRecordKey() const {
    if (const auto* term = m_terms->termAt(at()); term && at()[term->words.size()].isSymbol(":")) return true;
    return isName() && at()[1].isSymbol(":");
}

std::string Parser::recordKey() {
    if (!isRecordKey()) fault("label");
    const auto* term = m_terms->termAt(at());
    if (!term || !at()[term->words.size()].isSymbol(":")) return take().text;
    m_position += term->words.size();
    return term->name;
}

Expression Parser::record() {
    const Instead<const Labels*> none(m_labels, nullptr);
    RecordLiteral record;
    do {
        auto key = recordKey();
        expectSymbol(":");
        record.fields.emplace_back(std::move(key), expression());
    } while (acceptSymbol(","));
    expectSymbol("}");
    return make(std::move(record));
}

Expression Parser::nameOrCall() {
    const auto& name = take();
    if (!acceptSymbol("(")) return make(Variable{name.text, std::string(name.source)});
    return make(Call{name.text, std::string(name.source), arguments()});
}

std::vector<Expression> Parser::arguments() {
    const Instead<const Labels*> none(m_labels, nullptr);
    std::vector<Expression> values;
    if (acceptSymbol(")")) return values;
    do
        values.push_back(expression());
    while (acceptSymbol(","));
    expectSymbol(")");
    return values;
}

Expression Parser::applicationName() {
    if (at()->kind != TokenKind::text) fault("name of an application");
    const auto& name = take().text;
    termsOf(name);
    m_applications.insert(lowercase(name));
    return make(ApplicationName{name});
}

} // namespace bridge::applescript
