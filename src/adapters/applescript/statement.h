#pragma once

#include "adapters/applescript/text_comparison.h"
#include "adapters/applescript/tree.h"

#include <map>
#include <optional>
#include <set>

namespace bridge::applescript {

struct Statement;
using Block = std::vector<Statement>;

struct Evaluate {
    Expression expression;
};
struct Assign {
    Expression target, value;
};
struct Tell {
    Expression target;
    Block body;
};
struct Timeout {
    Expression seconds;
    Block body;
};
// A block that only says how texts are compared, or nothing at all.
struct CaseBlock {
    std::optional<Case> letterCase;
    Block body;
};
struct If {
    struct Branch {
        Expression condition; // nullptr: else
        Block body;
    };
    std::vector<Branch> branches;
};
struct RepeatTimes {
    Expression times; // nullptr: for ever
    Block body;
};
struct RepeatWhile {
    Expression condition;
    bool endsWhen;
    Block body;
};
struct RepeatFrom {
    Expression variable, first, last, step;
    Block body;
};
struct RepeatIn {
    Expression variable, list;
    Block body;
};
struct Try {
    Block body, onError;
    // "on error message number n": the variables, or a number that alone is caught.
    Expression message, number;
    std::vector<Expression> others; // of from, to and partial result
};
struct Fail {
    Expression message, number;
};
struct Return {
    Expression value;
};
struct ExitRepeat {};
struct Global {
    std::vector<std::string> names;
};

struct Statement {
    std::variant<Evaluate, Assign, Tell, Timeout, CaseBlock, If, RepeatTimes, RepeatWhile, RepeatFrom, RepeatIn, Try,
                 Fail, Return, ExitRepeat, Global>
        content;
};

struct Handler {
    std::vector<std::string> parameters;
    Block body;
};

// A script that is ready to run.
struct Program {
    Block body;
    std::map<std::string, Handler> handlers;
    std::set<std::string> properties;   // and what else every handler sees
    std::set<std::string> applications; // that it names, in lower case
};

} // namespace bridge::applescript
