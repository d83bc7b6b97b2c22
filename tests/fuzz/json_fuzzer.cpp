#include "base/json_value.h"
#include "base/json_writer.h"
#include "tests/fuzz/fuzz.h"

#include <algorithm>
#include <optional>
#include <simdjson.h>
#include <string>

namespace bridge {

namespace {

std::optional<JSONValue> parsed(std::string_view text) {
    try {
        return parseJSON(text);
    } catch (const JSONError&) {
        return std::nullopt;
    }
}

// A second opinion: simdjson's other parser, which checks the whole text before it hands out anything.
simdjson::error_code secondOpinion(std::string_view text) {
    static simdjson::dom::parser parser;
    return parser.parse(text.data(), text.size()).error();
}

bool isAboutNumbers(simdjson::error_code code) {
    return code == simdjson::NUMBER_ERROR || code == simdjson::NUMBER_OUT_OF_RANGE;
}

bool hasLongExponent(std::string_view text) {
    size_t digits = 0;
    bool inExponent = false;
    for (const char character : text) {
        const bool isDigit = character >= '0' && character <= '9';
        inExponent =
            character == 'e' || character == 'E' || (inExponent && (isDigit || (digits == 0 && character != ' ')));
        digits = inExponent && isDigit ? digits + 1 : 0;
        if (digits == 20) return true;
    }
    return false;
}

} // namespace

void fuzz(std::string_view input) {
    const auto value = parsed(input);
    const auto opinion = secondOpinion(input);
    if (value) {
        // It has no room for integers of more than 64 bits; a double has.
        must(opinion == simdjson::SUCCESS || isAboutNumbers(opinion));
        const auto written = writeJSON(*value);
        must(parseJSON(written) == *value);
        must(writeJSON(parseJSON(written)) == written);
    } else {
        // Its depth is bounded by 1024, ours by half.
        const auto brackets = std::count(input.begin(), input.end(), '[') + std::count(input.begin(), input.end(), '{');
        must(opinion != simdjson::SUCCESS || static_cast<size_t>(brackets) > maximumJSONDepth ||
             hasLongExponent(input));
    }
}

} // namespace bridge
