#include "bridges/scripting/flattened_strings.h"

#include <utility>

namespace bridge {

namespace {

void append(std::vector<std::string>& strings, TypedAppleScriptValue value) {
    if (value.items.empty()) {
        strings.push_back(value.isNull ? "" : std::move(value.stringValue).value_or(""));
        return;
    }
    for (auto& item : value.items)
        append(strings, std::move(item));
}

} // namespace

std::vector<std::string> flattenedStrings(TypedAppleScriptValue value) {
    std::vector<std::string> strings;
    append(strings, std::move(value));
    return strings;
}

} // namespace bridge
