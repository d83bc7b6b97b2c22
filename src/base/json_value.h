#pragma once

#include <cstddef>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bridge {

// Any JSON value (RFC 8259). Every number, integers included, is a double.
struct JSONValue {
    using Object = std::map<std::string, JSONValue, std::less<>>;
    using Array = std::vector<JSONValue>;

    std::variant<std::string, double, bool, Object, Array, std::nullptr_t> value = nullptr;

    bool operator==(const JSONValue&) const = default;

    bool isNull() const { return std::holds_alternative<std::nullptr_t>(value); }
    const std::string* string() const { return std::get_if<std::string>(&value); }
    const double* number() const { return std::get_if<double>(&value); }
    const bool* boolean() const { return std::get_if<bool>(&value); }
    const Object* object() const { return std::get_if<Object>(&value); }
    const Array* array() const { return std::get_if<Array>(&value); }
};

// Text that is no JSON, or a value that JSON can't say. The description is for the user.
class JSONError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Arrays and objects may stand this deep in one another, no deeper. Whatever walks a value may recurse, because its
// depth never comes from the input alone.
constexpr size_t maximumJSONDepth = 512;

// Reads one JSON text. It must be UTF-8 without a byte-order mark, its escapes must name whole characters (no lone
// surrogate) and its numbers must fit a double, with an exponent of fewer than twenty digits. Where a name comes twice
// in an object, the last one counts. Throws JSONError.
JSONValue parseJSON(std::string_view text);

} // namespace bridge
