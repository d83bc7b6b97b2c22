#include "adapters/applescript/errors.h"
#include "adapters/applescript/parser.h"

namespace bridge::applescript {

// Reads operators that bind at least so tightly. A run of them becomes one chain, however long it is.
Expression Parser::expression(Binding loosest) {
    const Nested nested(*this);
    auto first = operand(loosest);
    Chain chain;
    while (const auto phrase = operatorAt(at())) {
        if (phrase->binding < loosest || isAtLabel()) break;
        m_position += phrase->length;
        auto next = phrase->sign == Operator::coerce ? coercionType() : expression(tighter(phrase->binding));
        chain.links.push_back({phrase->sign, phrase->isNegated, std::move(next)});
    }
    if (chain.links.empty()) return first;
    chain.first = std::move(first);
    return bridge::applescript::expression(std::move(chain));
}

Expression Parser::operand(Binding loosest) {
    if (loosest <= Binding::comparison && accept("not"))
        return bridge::applescript::expression(Negation{Negation::Kind::logical, expression(Binding::comparison)});
    if (acceptSymbol("+")) return expression(Binding::none);
    if (!acceptSymbol("-")) return reference();
    auto number = expression(Binding::none);
    if (auto* literal = contentOf<Literal>(number)) {
        if (const auto* integer = literal->value.as<int64_t>())
            return bridge::applescript::expression(Literal{-*integer});
        if (const auto* real = literal->value.as<double>()) return bridge::applescript::expression(Literal{-*real});
    }
    return bridge::applescript::expression(Negation{Negation::Kind::arithmetic, std::move(number)});
}

Expression Parser::coercionType() {
    accept("a");
    const auto* term = m_terms->termAt(at());
    if (!term) fault("class name");
    m_position += term->words.size();
    return bridge::applescript::expression(Literal{ClassName{term->className.empty() ? term->name : term->className}});
}

Expression Parser::reference() {
    auto node = chain();
    if (accept("whose") || accept("where")) filter(node, expression());
    if (accept("exists")) return bridge::applescript::expression(Existence{std::move(node)});
    return node;
}

// "x of y of z", "z's y's x"
Expression Parser::chain() {
    const Nested nested(*this);
    auto node = simple();
    const int before = m_depth;
    while (acceptSymbol("'s")) {
        if (++m_depth > deepest) throw tooDeep();
        auto part = simple();
        attach(part, std::move(node));
        node = std::move(part);
    }
    if (!isAtLabel() && (accept("of") || accept("in"))) attach(node, chain());
    m_depth = before;
    return node;
}

// Gives the container to the part of the expression that has none yet.
void Parser::attach(Expression& node, Expression container) {
    if (auto* variable = contentOf<Variable>(node)) {
        auto name = std::move(variable->name);
        node = bridge::applescript::expression(Property{std::move(name), std::move(container)});
        return;
    }
    if (contentOf<Call>(node)) return;
    Expression* slot = nullptr;
    if (auto* property = contentOf<Property>(node)) slot = &property->container;
    if (auto* element = contentOf<Element>(node)) slot = &element->container;
    if (auto* insertion = contentOf<Insertion>(node)) slot = &insertion->container;
    if (auto* literal = contentOf<Literal>(node); literal && literal->value.is<ClassName>()) {
        auto name = literal->value.as<ClassName>()->name;
        node = bridge::applescript::expression(Property{std::move(name), std::move(container)});
        return;
    }
    if (!slot) fault("property or element before this");
    if (!*slot)
        *slot = std::move(container);
    else
        attach(*slot, std::move(container));
}

// "name of every track of p whose …" chooses among the tracks.
void Parser::filter(Expression& node, Expression condition) {
    if (auto* property = contentOf<Property>(node); property && property->container)
        return filter(property->container, std::move(condition));
    if (auto* counted = contentOf<Count>(node)) return filter(counted->operand, std::move(condition));
    auto* element = contentOf<Element>(node);
    if (!element || element->condition) fault("elements before this");
    element->condition = std::move(condition);
}

} // namespace bridge::applescript
