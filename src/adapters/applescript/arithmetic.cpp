#include "adapters/applescript/arithmetic.h"

#include "adapters/applescript/coercion.h"
#include "adapters/applescript/describe.h"
#include "adapters/applescript/numbers.h"

#include <cmath>
#include <limits>
#include <optional>

namespace bridge::applescript {

namespace {

std::optional<int64_t> exact(Operator sign, int64_t left, int64_t right) {
    constexpr int64_t least = std::numeric_limits<int64_t>::min();
    int64_t result = 0;
    switch (sign) {
    case Operator::add:
        return __builtin_add_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operator::subtract:
        return __builtin_sub_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operator::multiply:
        return __builtin_mul_overflow(left, right, &result) ? std::nullopt : std::optional(result);
    case Operator::quotient:
        return left == least && right == -1 ? std::nullopt : std::optional(left / right);
    case Operator::remainder:
        return right == -1 ? 0 : left % right;
    default:
        return std::nullopt;
    }
}

double inexact(Operator sign, double left, double right) {
    switch (sign) {
    case Operator::add:
        return left + right;
    case Operator::subtract:
        return left - right;
    case Operator::multiply:
        return left * right;
    case Operator::quotient:
        return std::trunc(left / right);
    case Operator::remainder:
        return std::fmod(left, right);
    case Operator::power:
        return std::pow(left, right);
    default:
        return left / right;
    }
}

// "div" gives an integer where there is one.
Datum whole(double value) {
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (value >= -limit && value < limit) return static_cast<int64_t>(value);
    return value;
}

} // namespace

Datum calculate(Operator sign, const Datum& left, const Datum& right) {
    const auto one = numberOf(left);
    const auto other = numberOf(right);
    const bool divides = sign == Operator::divide || sign == Operator::quotient || sign == Operator::remainder;
    if (divides && asReal(other) == 0) throw ScriptError(divideByZero, "Can’t divide " + describe(left) + " by zero.");
    if (const auto* integer = one.as<int64_t>(), *second = other.as<int64_t>(); integer && second)
        if (const auto result = exact(sign, *integer, *second)) return *result;
    const double result = inexact(sign, asReal(one), asReal(other));
    if (!std::isfinite(result)) throw ScriptError(numberTooLarge, "The result of a numeric operation was too large.");
    return sign == Operator::quotient ? whole(result) : Datum(result);
}

Datum negative(const Datum& datum) {
    return calculate(Operator::subtract, int64_t{0}, datum);
}

} // namespace bridge::applescript
