#pragma once

#include "adapters/applescript/token.h"
#include "adapters/applescript/tree.h"

#include <optional>

namespace bridge::applescript {

// How tightly an operator binds, the loosest first. "not" stands between both and comparison.
enum class Binding { either = 1, both, comparison, relation, coercion, concatenation, sum, product, power, none };

constexpr Binding tighter(Binding binding) {
    return static_cast<Binding>(static_cast<int>(binding) + 1);
}

struct OperatorPhrase {
    Operator sign;
    Binding binding;
    bool isNegated = false;
    size_t length = 1; // in tokens
};

// The operator that begins at the token, in whichever of its forms: "≤", "<=", "is less than or equal to". Reads on
// until something doesn't fit, which the end of the script never does.
std::optional<OperatorPhrase> operatorAt(const Token* tokens);

} // namespace bridge::applescript
