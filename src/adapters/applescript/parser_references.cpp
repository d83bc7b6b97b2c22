#include "adapters/applescript/parser.h"

namespace bridge::applescript {

namespace {

template <typename Kind> Expression make(Kind content) {
    return bridge::applescript::expression(std::move(content));
}

} // namespace

// What the words mean depends on what follows them: a class with a key is an element, a property has a container.
Expression Parser::termExpression(const Term& term) {
    const bool wantsConstant = std::exchange(m_wantsConstant, false);
    m_position += term.words.size();
    const bool hasContainer = at()->isWord("of") || at()->isSymbol("'s");
    if (term.isConstant && !hasContainer && (wantsConstant || (term.className.empty() && !term.isProperty)))
        return make(Literal{Constant{term.name}});
    if (term.isCommand && !(hasContainer && (term.isProperty || !term.className.empty()))) return command(term);
    if (!term.className.empty() && (isAtKey() || (term.isPlural && !term.isProperty))) return element(term.className);
    const bool isAfterPossessive =
        m_position > term.words.size() && m_tokens[m_position - term.words.size() - 1].isSymbol("'s");
    if (term.isProperty && m_terms == &m_language && !hasContainer && !isAfterPossessive) {
        const auto& word = m_tokens[m_position - 1];
        return make(Variable{term.name, std::string(word.source)});
    }
    if (term.isProperty) return make(Property{term.name, nullptr});
    if (!term.className.empty()) return make(Literal{ClassName{term.className}});
    return make(Literal{Constant{term.name}});
}

Expression Parser::element(const std::string& className) {
    using Selection = Element::Selection;
    Element element{className, Selection::every, {}, {}, {}, {}};
    if (!isAtKey()) return make(std::move(element));
    element.selection = accept("id") ? Selection::withID : Selection::at;
    if (!accept("named")) accept("index");
    element.key = key();
    if (accept("thru") || accept("through")) {
        element.selection = Selection::range;
        element.last = key();
    }
    return make(std::move(element));
}

Expression Parser::elementAt(const std::string& className, int64_t position) {
    return make(Element{className, Element::Selection::at, make(Literal{position}), {}, {}, {}});
}

Expression Parser::every() {
    const auto name = className("class name");
    return isAtKey() ? element(name) : make(Element{name, Element::Selection::every, {}, {}, {}, {}});
}

Expression Parser::some() {
    return make(Element{className("class name"), Element::Selection::some, {}, {}, {}, {}});
}

std::string Parser::className(const char* what) {
    const auto* term = m_terms->termAt(at());
    if (!term || term->className.empty()) fault(what);
    m_position += term->words.size();
    return term->className;
}

// A number, a text, a variable or something in parentheses right after a class.
bool Parser::isAtKey() const {
    if (isAtLabel()) return false;
    switch (at()->kind) {
    case TokenKind::integer:
    case TokenKind::real:
    case TokenKind::text:
    case TokenKind::barredWord:
        return true;
    case TokenKind::symbol:
        return at()->text == "(" || (at()->text == "-" && at()[1].kind == TokenKind::integer);
    case TokenKind::word:
        if (at()->text == "id" || at()->text == "named" || at()->text == "index") return true;
        return isName() && !m_terms->termAt(at()) && !operatorAt(at()) && !at()[0].isWord("missing") &&
               !at()[0].isWord("null") && !at()[1].isSymbol(":");
    default:
        return false;
    }
}

Expression Parser::key() {
    if (!acceptSymbol("-")) return simple();
    if (at()->kind != TokenKind::integer) fault("number");
    return make(Literal{-take().integer});
}

Expression Parser::insertion() {
    const auto place = take().isWord("end") ? InsertionPoint::Place::end : InsertionPoint::Place::beginning;
    return make(Insertion{place, nullptr});
}

Expression Parser::count() {
    Count counted;
    if (accept("each")) {
        counted.className = className("class name");
        if (!accept("in")) expect("of");
    } else {
        accept("of");
    }
    counted.operand = reference();
    return make(std::move(counted));
}

} // namespace bridge::applescript
