#include "adapters/applescript/parser.h"

#include "adapters/applescript/errors.h"
#include "adapters/applescript/lexer.h"

#include <unordered_set>

namespace bridge::applescript {

bool isReserved(const std::string& word) {
    static const std::unordered_set<std::string> words{
        "about",       "above",   "after", "against",  "and",       "application", "apart",     "around",   "as",
        "aside",       "at",      "back",  "before",   "beginning", "begins",      "behind",    "below",    "beneath",
        "beside",      "between", "but",   "by",       "comes",     "considering", "contain",   "contains", "copy",
        "count",       "div",     "does",  "doesn't",  "eighth",    "else",        "end",       "ends",     "equal",
        "equals",      "error",   "every", "exists",   "exit",      "false",       "fifth",     "first",    "for",
        "fourth",      "from",    "front", "get",      "given",     "global",      "if",        "ignoring", "in",
        "instead",     "into",    "is",    "isn't",    "it",        "its",         "last",      "local",    "me",
        "middle",      "mod",     "my",    "ninth",    "not",       "of",          "on",        "onto",     "or",
        "out",         "over",    "prop",  "property", "put",       "ref",         "reference", "repeat",   "return",
        "script",      "second",  "set",   "seventh",  "since",     "sixth",       "some",      "starts",   "tell",
        "tenth",       "the",     "then",  "third",    "through",   "thru",        "timeout",   "times",    "to",
        "transaction", "true",    "try",   "until",    "using",     "where",       "while",     "whose",    "with",
        "without"};
    return words.contains(word);
}

Parser::Parser(std::string_view source, const Vocabulary& vocabulary)
    : m_tokens(Lexer(source).tokens()), m_vocabulary(vocabulary) {}

Parser::Nested::Nested(Parser& parser) : m_parser(parser) {
    if (parser.m_depth == deepest) throw tooDeep();
    ++parser.m_depth;
}

bool Parser::accept(std::string_view word) {
    if (!at()->isWord(word)) return false;
    ++m_position;
    return true;
}

bool Parser::acceptSymbol(std::string_view symbol) {
    if (!at()->isSymbol(symbol)) return false;
    ++m_position;
    return true;
}

bool Parser::acceptWords(std::initializer_list<std::string_view> words) {
    const auto* token = at();
    for (const auto word : words)
        if (!(token++)->isWord(word)) return false;
    m_position += words.size();
    return true;
}

void Parser::expect(std::string_view word) {
    if (!accept(word)) fault("“" + std::string(word) + "”");
}

void Parser::expectSymbol(std::string_view symbol) {
    if (!acceptSymbol(symbol)) fault("“" + std::string(symbol) + "”");
}

bool Parser::isAtLineEnd() const {
    return at()->kind == TokenKind::lineEnd || at()->kind == TokenKind::end;
}

void Parser::skipLineEnds() {
    while (at()->kind == TokenKind::lineEnd)
        ++m_position;
}

void Parser::expectStatementEnd() {
    if (!isAtLineEnd()) fault("end of line");
}

bool Parser::isName() const {
    return at()->kind == TokenKind::barredWord || (at()->kind == TokenKind::word && !isReserved(at()->text));
}

const Token& Parser::takeName() {
    if (!isName()) fault("identifier");
    return take();
}

void Parser::fault(const std::string& expected) const {
    constexpr size_t longest = 60;
    std::string found = "“" + std::string(at()->source.substr(0, longest)) + "”";
    if (at()->kind == TokenKind::lineEnd) found = "end of line";
    if (at()->kind == TokenKind::end) found = "end of script";
    if (at()->kind == TokenKind::text) found = "text";
    throw syntaxFault(at()->line, "Expected " + expected + " but found " + found + ".");
}

Program Parser::program() {
    Program program;
    for (skipLineEnds(); at()->kind != TokenKind::end; skipLineEnds())
        declaration(program);
    program.applications = std::move(m_applications);
    return program;
}

void Parser::declaration(Program& program) {
    if (accept("on") || accept("to")) return handler(program);
    if (accept("property") || accept("prop")) return property(program);
    program.body.push_back(statement());
    expectStatementEnd();
}

void Parser::handler(Program& program) {
    const auto name = takeName().text;
    Handler handler;
    if (acceptSymbol("(") && !acceptSymbol(")")) {
        do
            handler.parameters.push_back(takeName().text);
        while (acceptSymbol(","));
        expectSymbol(")");
    }
    expectStatementEnd();
    handler.body = blockUntilEnd({name});
    expectStatementEnd();
    if (name == "run") {
        std::move(handler.body.begin(), handler.body.end(), std::back_inserter(program.body));
        return;
    }
    if (!program.handlers.emplace(name, std::move(handler)).second) fault("one handler named “" + name + "”");
}

void Parser::property(Program& program) {
    const auto name = takeName();
    expectSymbol(":");
    program.body.push_back({Global{{name.text}}});
    program.body.push_back(
        {Assign{bridge::applescript::expression(Variable{name.text, std::string(name.source)}), expression()}});
    program.properties.insert(name.text);
    expectStatementEnd();
}

const Terminology& Parser::termsOf(const std::string& application) {
    if (const auto* terms = m_vocabulary(application)) return *terms;
    throw ScriptError(ScriptError::noSuchObject, "Can’t get application \"" + application + "\".");
}

} // namespace bridge::applescript
