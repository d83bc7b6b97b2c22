#include "adapters/applescript/operators.h"

#include <initializer_list>
#include <string_view>
#include <unordered_map>

namespace bridge::applescript {

namespace {

using Words = std::initializer_list<std::string_view>;

const std::unordered_map<std::string_view, OperatorPhrase> symbols{
    {"&", {Operator::concatenate, Binding::concatenation}},
    {"+", {Operator::add, Binding::sum}},
    {"-", {Operator::subtract, Binding::sum}},
    {"*", {Operator::multiply, Binding::product}},
    {"/", {Operator::divide, Binding::product}},
    {"^", {Operator::power, Binding::power}},
    {"=", {Operator::equal, Binding::comparison}},
    {"/=", {Operator::equal, Binding::comparison, true}},
    {"<", {Operator::less, Binding::relation}},
    {">", {Operator::greater, Binding::relation}},
    {"<=", {Operator::atMost, Binding::relation}},
    {">=", {Operator::atLeast, Binding::relation}},
};

const std::unordered_map<std::string_view, OperatorPhrase> words{
    {"or", {Operator::either, Binding::either}},
    {"and", {Operator::both, Binding::both}},
    {"as", {Operator::coerce, Binding::coercion}},
    {"div", {Operator::quotient, Binding::product}},
    {"mod", {Operator::remainder, Binding::product}},
    {"equals", {Operator::equal, Binding::comparison}},
    {"contains", {Operator::contains, Binding::comparison}},
};

// Reads a phrase word by word.
class Phrase {
public:
    explicit Phrase(const Token* tokens) : m_tokens(tokens) {}

    std::optional<OperatorPhrase> read();

private:
    bool accept(Words wanted) {
        size_t length = m_length;
        for (const auto word : wanted)
            if (!m_tokens[length++].isWord(word)) return false;
        m_length = length;
        return true;
    }
    OperatorPhrase found(Operator sign, Binding binding) const { return {sign, binding, m_isNegated, m_length}; }
    OperatorPhrase comparison(Operator sign) const { return found(sign, Binding::comparison); }

    std::optional<OperatorPhrase> relation();
    std::optional<OperatorPhrase> verb();
    OperatorPhrase relation(Operator alone, Operator orEqual) {
        const bool isEqualToo = accept({"or", "equal", "to"}) || accept({"or", "equal"});
        return found(isEqualToo ? orEqual : alone, Binding::relation);
    }

    const Token* m_tokens;
    size_t m_length = 0;
    bool m_isNegated = false;
};

// What may stand by itself or after "is".
std::optional<OperatorPhrase> Phrase::relation() {
    if (accept({"less", "than"})) return relation(Operator::less, Operator::atMost);
    if (accept({"greater", "than"})) return relation(Operator::greater, Operator::atLeast);
    if (accept({"equal", "to"}) || accept({"equal"})) return comparison(Operator::equal);
    return std::nullopt;
}

// What may stand after "does not"; the forms with an s stand by themselves.
std::optional<OperatorPhrase> Phrase::verb() {
    if (accept({"equal"})) return comparison(Operator::equal);
    if (accept({"contain"})) return comparison(Operator::contains);
    for (const auto start : {"starts", "start", "begins", "begin"})
        if (accept({start, "with"})) return comparison(Operator::beginsWith);
    if (accept({"ends", "with"}) || accept({"end", "with"})) return comparison(Operator::endsWith);
    if (accept({"comes", "before"}) || accept({"come", "before"})) return found(Operator::less, Binding::relation);
    if (accept({"comes", "after"}) || accept({"come", "after"})) return found(Operator::greater, Binding::relation);
    return std::nullopt;
}

std::optional<OperatorPhrase> Phrase::read() {
    if (const auto single = words.find(m_tokens->text); single != words.end()) return single->second;
    if (accept({"does", "not"}) || accept({"doesn't"})) {
        m_isNegated = true;
        return verb();
    }
    if (accept({"is", "not"}) || accept({"isn't"}))
        m_isNegated = true;
    else if (!accept({"is"})) {
        const auto compared = relation();
        return compared ? compared : verb();
    }
    if (accept({"in"}) || accept({"contained", "by"})) return comparison(Operator::within);
    const auto compared = relation();
    return compared ? compared : comparison(Operator::equal);
}

} // namespace

std::optional<OperatorPhrase> operatorAt(const Token* tokens) {
    if (tokens->kind == TokenKind::word) return Phrase(tokens).read();
    if (tokens->kind != TokenKind::symbol) return std::nullopt;
    const auto found = symbols.find(tokens->text);
    return found == symbols.end() ? std::nullopt : std::optional(found->second);
}

} // namespace bridge::applescript
