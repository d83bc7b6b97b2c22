#include "tools/describe/pretty_json.h"

#include "base/json_writer.h"

#include <utility>

namespace bridge {

namespace {

void newLine(std::string& text, size_t level) {
    text += '\n';
    text.append(2 * level, ' ');
}

void append(std::string& text, const JSONValue& value, size_t level) {
    const auto* object = value.object();
    const auto* array = value.array();
    if (object && !object->empty()) {
        char before = '{';
        for (const auto& [name, member] : *object) {
            text += std::exchange(before, ',');
            newLine(text, level + 1);
            text += writeJSON({name}) + ": ";
            append(text, member, level + 1);
        }
        newLine(text, level);
        text += '}';
    } else if (array && !array->empty()) {
        char before = '[';
        for (const auto& element : *array) {
            text += std::exchange(before, ',');
            newLine(text, level + 1);
            append(text, element, level + 1);
        }
        newLine(text, level);
        text += ']';
    } else {
        text += writeJSON(value);
    }
}

} // namespace

std::string prettyJSON(const JSONValue& value) {
    std::string text;
    append(text, value, 0);
    return text;
}

} // namespace bridge
