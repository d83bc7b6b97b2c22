#pragma once

#include "adapters/applescript/instead.h"
#include "adapters/applescript/operators.h"
#include "adapters/applescript/statement.h"
#include "adapters/applescript/terminology.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace bridge::applescript {

// The words of an application by its name in lower case; nullptr when there is no such application.
using Vocabulary = std::function<const Terminology*(const std::string& application)>;

// Reads a whole script before any of it runs, in time and memory proportional to its length. Throws ScriptError: a
// syntax error that names the line, no such object for an application that isn't there, stack overflow for a source
// nested too deep.
class Parser {
public:
    Parser(std::string_view source, const Vocabulary& vocabulary);

    Program program();

private:
    // The tree is walked by recursion, and so is it made.
    static constexpr int deepest = 400;
    class Nested {
    public:
        explicit Nested(Parser& parser);
        Nested(const Nested&) = delete;
        Nested& operator=(const Nested&) = delete;
        ~Nested() { --m_parser.m_depth; }

    private:
        Parser& m_parser;
    };
    // The labels of the commands whose parameters are being read: an expression ends where one of them stands.
    struct Labels {
        const std::vector<Words>* own;
        const Labels* outer;
    };

    // Tokens.
    const Token* at() const { return &m_tokens[m_position]; }
    Token& take() { return m_tokens[m_position++]; }
    bool accept(std::string_view word);
    bool acceptSymbol(std::string_view symbol);
    bool acceptWords(std::initializer_list<std::string_view> words);
    void expect(std::string_view word);
    void expectSymbol(std::string_view symbol);
    bool isAtLineEnd() const;
    void skipLineEnds();
    void expectStatementEnd();
    bool isName() const;
    const Token& takeName();
    [[noreturn]] void fault(const std::string& expected) const;

    // Statements.
    void declaration(Program& program);
    void handler(Program& program);
    void property(Program& program);
    Block block();
    Block blockUntilEnd(std::initializer_list<std::string_view> names);
    void end(std::initializer_list<std::string_view> names);
    Statement statement();
    Statement blockStatement();
    Statement simpleStatement();
    Statement tell();
    Statement timeout();
    Statement terms();
    Statement caseBlock(bool isConsidered);
    Statement ifStatement();
    Statement ifOnOneLine(Expression condition);
    Statement repeat();
    Statement repeatWith();
    Statement tryStatement();
    void errorVariables(Try& statement);
    Statement assign();
    Statement copy();
    Statement error();
    Statement returnStatement();
    Statement global();
    void checkTarget(const Expression& target) const;
    const Terminology& termsOf(const std::string& application);
    const Terminology* termsOfTarget();

    // Expressions.
    Expression expression(Binding loosest = Binding::either);
    Expression operand(Binding loosest);
    Expression coercionType();
    Expression reference();
    Expression chain();
    Expression simple();
    Expression literal();
    Expression keyword();
    Expression selfWord();
    Expression constantText();
    Expression list();
    bool isRecordKey() const;
    std::string recordKey();
    Expression record();
    Expression nameOrCall();
    std::vector<Expression> arguments();
    Expression applicationName();
    Expression termExpression(const Term& term);
    Expression element(const std::string& className);
    Expression elementAt(const std::string& className, int64_t position);
    Expression some();
    Expression every();
    std::string className(const char* what);
    bool isAtKey() const;
    Expression key();
    Expression insertion();
    Expression count();
    Expression command(const Term& term);
    void switches(CommandCall& call, const std::vector<Words>& labels);
    const Words* acceptLabel(const std::vector<Words>& labels);
    bool isAtLabel() const;
    bool beginsExpression() const;
    void attach(Expression& node, Expression container);
    void filter(Expression& node, Expression condition);

    std::vector<Token> m_tokens;
    size_t m_position = 0;
    int m_depth = 0;
    const Vocabulary& m_vocabulary;
    const Terminology m_language;
    const Terminology* m_terms = &m_language;
    const Labels* m_labels = nullptr;
    bool m_wantsConstant = false;
    std::set<std::string> m_applications;
};

// Words that name nothing: the language keeps them for itself.
bool isReserved(const std::string& word);

} // namespace bridge::applescript
