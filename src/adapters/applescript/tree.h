#pragma once

#include "adapters/applescript/value.h"

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace bridge::applescript {

// What a script says, as the parser understood it. Whatever walks it may recurse: the parser limits its depth.

struct Node;
using Expression = std::unique_ptr<Node>; // nullptr where the script says nothing

enum class Self { it, me, result };

struct Literal {
    Value value;
};
struct ListLiteral {
    std::vector<Expression> items;
};
struct RecordLiteral {
    std::vector<std::pair<std::string, Expression>> fields;
};
struct Variable {
    std::string name;    // in lower case
    std::string spelled; // for messages
};
struct ApplicationName {
    std::string name;
};
struct FileName {
    Expression path;
};
// Of the target of the tell where no container is given, also below.
struct Property {
    std::string name;
    Expression container;
};

// "track 3", "every track", "tracks 1 thru 3", "first track whose …"
struct Element {
    enum class Selection { every, at, withID, range, middle, some };
    std::string className;
    Selection selection = Selection::every;
    Expression key; // a position or a name, or where a range begins
    Expression last;
    Expression condition;
    Expression container;
};

struct Insertion {
    InsertionPoint::Place place;
    Expression container;
};

enum class Operator {
    either,
    both,
    equal,
    less,
    greater,
    atMost,
    atLeast,
    contains,
    within,
    beginsWith,
    endsWith,
    coerce,
    concatenate,
    add,
    subtract,
    multiply,
    divide,
    quotient,
    remainder,
    power
};
// Operators that are worked off from the left: one node however long it gets, because the tree may not get deep.
struct Chain {
    struct Link {
        Operator sign;
        bool isNegated;     // "does not contain"
        Expression operand; // of "as" a literal ClassName
    };
    Expression first;
    std::vector<Link> links;
};
struct Negation {
    enum class Kind { logical, arithmetic } kind;
    Expression operand;
};

struct Call {
    std::string name, spelled;
    std::vector<Expression> arguments;
};
struct CommandCall {
    std::string name;
    Expression direct;
    std::vector<std::pair<std::string, Expression>> parameters;
};
struct Count {
    Expression operand;
    std::string className; // "count each integer of …"
};
struct Existence {
    Expression operand;
};

struct Node {
    std::variant<Literal, ListLiteral, RecordLiteral, Variable, Self, ApplicationName, FileName, Property, Element,
                 Insertion, Chain, Negation, Call, CommandCall, Count, Existence>
        content;
};

template <typename Kind> Expression expression(Kind content) {
    return std::make_unique<Node>(Node{std::move(content)});
}
template <typename Kind> Kind* contentOf(const Expression& node) {
    return node ? std::get_if<Kind>(&node->content) : nullptr;
}

} // namespace bridge::applescript
