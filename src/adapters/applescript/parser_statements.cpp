#include "adapters/applescript/errors.h"
#include "adapters/applescript/parser.h"

namespace bridge::applescript {

Statement Parser::statement() {
    const Nested nested(*this);
    if (accept("tell")) return tell();
    if (accept("if")) return ifStatement();
    if (accept("repeat")) return repeat();
    if (accept("try")) return tryStatement();
    if (acceptWords({"with", "timeout"})) return timeout();
    if (acceptWords({"using", "terms", "from"})) return terms();
    if (accept("considering")) return caseBlock(true);
    if (accept("ignoring")) return caseBlock(false);
    return simpleStatement();
}

Statement Parser::simpleStatement() {
    if (accept("set")) return assign();
    if (accept("copy") || accept("put")) return copy();
    if (accept("return")) return returnStatement();
    if (accept("error")) return error();
    if (accept("exit")) {
        accept("repeat");
        return {ExitRepeat{}};
    }
    if (accept("global") || accept("local")) return global();
    return {Evaluate{expression()}};
}

// Statements up to one that can't begin here: "end", "else", "on error", or the end of the script.
Block Parser::block() {
    Block statements;
    for (skipLineEnds(); at()->kind != TokenKind::end; skipLineEnds()) {
        if (at()->isWord("end") || at()->isWord("else") || (at()[0].isWord("on") && at()[1].isWord("error"))) break;
        statements.push_back(statement());
        expectStatementEnd();
    }
    return statements;
}

Block Parser::blockUntilEnd(std::initializer_list<std::string_view> names) {
    auto statements = block();
    end(names);
    return statements;
}

// "end", or "end" and any of the names.
void Parser::end(std::initializer_list<std::string_view> names) {
    expect("end");
    if (isAtLineEnd()) return;
    for (const auto name : names)
        if (at()->isName() && at()->text == name) {
            take();
            return;
        }
    fault("“end " + std::string(*names.begin()) + "”");
}

Statement Parser::assign() {
    auto target = reference();
    checkTarget(target);
    expect("to");
    return {Assign{std::move(target), expression()}};
}

Statement Parser::copy() {
    auto value = expression();
    if (!accept("into")) expect("to");
    auto target = reference();
    checkTarget(target);
    return {Assign{std::move(target), std::move(value)}};
}

void Parser::checkTarget(const Expression& target) const {
    if (const auto* pattern = contentOf<ListLiteral>(target)) {
        for (const auto& item : pattern->items)
            checkTarget(item);
        return;
    }
    if (!contentOf<Variable>(target) && !contentOf<Property>(target) && !contentOf<Element>(target) &&
        !contentOf<Insertion>(target))
        fault("variable or property before this");
}

Statement Parser::returnStatement() {
    if (isAtLineEnd() || at()->isWord("else")) return {Return{}};
    return {Return{expression()}};
}

Statement Parser::error() {
    static const std::vector<Words> labels{{"partial", "result"}, {"number"}, {"from"}, {"to"}};
    const Labels scope{&labels, nullptr};
    const Instead<const Labels*> stop(m_labels, &scope);
    Fail fail;
    if (!isAtLabel() && beginsExpression()) fail.message = expression();
    while (const auto* label = acceptLabel(labels)) {
        auto value = expression();
        if (label->front() == "number") fail.number = std::move(value);
    }
    return {std::move(fail)};
}

Statement Parser::global() {
    const bool isGlobal = m_tokens[m_position - 1].isWord("global");
    Global names;
    do
        names.names.push_back(takeName().text);
    while (acceptSymbol(","));
    if (!isGlobal) names.names.clear();
    return {std::move(names)};
}

} // namespace bridge::applescript
