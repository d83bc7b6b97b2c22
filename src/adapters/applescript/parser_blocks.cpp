#include "adapters/applescript/errors.h"
#include "adapters/applescript/parser.h"

namespace bridge::applescript {

// The application that stands in what is told may come last: "tell document 1 of application …". Its words count
// for all of it.
const Terminology* Parser::termsOfTarget() {
    for (const auto* token = at(); token->kind != TokenKind::lineEnd && token->kind != TokenKind::end; ++token) {
        if (token->isWord("to")) break;
        if (token[0].isWord("application") && token[1].kind == TokenKind::text) return &termsOf(token[1].text);
    }
    return m_terms;
}

Statement Parser::tell() {
    const Instead<const Terminology*> terms(m_terms, termsOfTarget());
    Tell tell{expression(), {}};
    if (accept("to")) {
        tell.body.push_back(statement());
        return {std::move(tell)};
    }
    expectStatementEnd();
    tell.body = blockUntilEnd({"tell"});
    return {std::move(tell)};
}

Statement Parser::timeout() {
    expect("of");
    Timeout timeout{expression(), {}};
    if (!accept("second")) expect("seconds");
    expectStatementEnd();
    timeout.body = blockUntilEnd({"timeout"});
    return {std::move(timeout)};
}

Statement Parser::terms() {
    expect("application");
    if (at()->kind != TokenKind::text) fault("name of an application");
    const Instead<const Terminology*> terms(m_terms, &termsOf(take().text));
    expectStatementEnd();
    auto body = block();
    end({"using"});
    acceptWords({"terms", "from"});
    return {CaseBlock{std::nullopt, std::move(body)}};
}

Statement Parser::caseBlock(bool isConsidered) {
    expect("case");
    expectStatementEnd();
    return {CaseBlock{isConsidered ? Case::considered : Case::ignored,
                      blockUntilEnd({isConsidered ? "considering" : "ignoring"})}};
}

Statement Parser::ifStatement() {
    auto condition = expression();
    accept("then");
    if (!isAtLineEnd()) return ifOnOneLine(std::move(condition));
    If statement;
    statement.branches.push_back({std::move(condition), block()});
    while (accept("else")) {
        Expression next;
        if (accept("if")) {
            next = expression();
            accept("then");
        }
        expectStatementEnd();
        const bool isLast = !next;
        statement.branches.push_back({std::move(next), block()});
        if (isLast) break;
    }
    end({"if"});
    return {std::move(statement)};
}

Statement Parser::ifOnOneLine(Expression condition) {
    If statement;
    const auto branch = [&](Expression when) {
        Block body;
        body.push_back(this->statement());
        statement.branches.push_back({std::move(when), std::move(body)});
    };
    branch(std::move(condition));
    if (accept("else")) branch(nullptr);
    return {std::move(statement)};
}

Statement Parser::repeat() {
    if (accept("with")) return repeatWith();
    if (at()->isWord("while") || at()->isWord("until")) {
        const bool endsWhen = take().isWord("until");
        auto condition = expression();
        expectStatementEnd();
        return {RepeatWhile{std::move(condition), endsWhen, blockUntilEnd({"repeat"})}};
    }
    RepeatTimes repeat;
    if (!isAtLineEnd()) {
        repeat.times = expression();
        accept("times");
        expectStatementEnd();
    }
    repeat.body = blockUntilEnd({"repeat"});
    return {std::move(repeat)};
}

Statement Parser::repeatWith() {
    const auto name = takeName();
    const auto variable = [&] {
        return bridge::applescript::expression(Variable{name.text, std::string(name.source)});
    };
    if (accept("in")) {
        RepeatIn repeat{variable(), expression(), {}};
        expectStatementEnd();
        repeat.body = blockUntilEnd({"repeat"});
        return {std::move(repeat)};
    }
    expect("from");
    RepeatFrom repeat{variable(), expression(), nullptr, nullptr, {}};
    expect("to");
    repeat.last = expression();
    if (accept("by")) repeat.step = expression();
    expectStatementEnd();
    repeat.body = blockUntilEnd({"repeat"});
    return {std::move(repeat)};
}

Statement Parser::tryStatement() {
    expectStatementEnd();
    Try statement;
    statement.body = block();
    if (acceptWords({"on", "error"})) {
        errorVariables(statement);
        expectStatementEnd();
        statement.onError = block();
    }
    end({"try"});
    return {std::move(statement)};
}

void Parser::errorVariables(Try& statement) {
    const auto isLabel = [&] {
        return at()->isWord("number") || at()->isWord("from") || at()->isWord("to") || at()->isWord("partial");
    };
    const auto variable = [&]() -> Expression {
        const auto& name = takeName();
        return bridge::applescript::expression(Variable{name.text, std::string(name.source)});
    };
    if (!isAtLineEnd() && !isLabel()) statement.message = variable();
    while (!isAtLineEnd()) {
        if (accept("number"))
            statement.number = at()->kind == TokenKind::integer || at()->isSymbol("-") ? key() : variable();
        else if (accept("from") || accept("to") || acceptWords({"partial", "result"}))
            statement.others.push_back(variable());
        else
            fault("end of line");
    }
}

} // namespace bridge::applescript
