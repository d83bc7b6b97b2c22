#include "base/json_value.h"

#include <algorithm>
#include <simdjson.h>
#include <utility>

namespace bridge {

namespace {

namespace ondemand = simdjson::ondemand;

const char* describe(simdjson::error_code code) {
    switch (code) {
    case simdjson::EMPTY:
        return "there is nothing.";
    case simdjson::NUMBER_ERROR:
        return "a number is malformed or too large.";
    case simdjson::UTF8_ERROR:
        return "it is not UTF-8.";
    case simdjson::STRING_ERROR:
    case simdjson::UNCLOSED_STRING:
        return "a string has no end, a bad escape or half a character.";
    case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
    case simdjson::TRAILING_CONTENT:
        return "an array or object has no end, or something follows the value.";
    default:
        return "a value, a comma, a colon or a name is not where it must be.";
    }
}

[[noreturn]] void refuse(simdjson::error_code code) {
    throw JSONError(std::string("The text is not valid JSON: ") + describe(code));
}

template <typename T> T checked(simdjson::simdjson_result<T> result) {
    T value;
    if (const auto code = std::move(result).get(value)) refuse(code);
    return value;
}

std::string_view strip(std::string_view text) {
    constexpr std::string_view space = " \t\r\n";
    const size_t start = std::min(text.find_first_not_of(space), text.size());
    return text.substr(start, text.find_last_not_of(space) + 1 - start);
}

// What is left of an array or object.
template <typename Iterator> struct Range {
    simdjson::simdjson_result<Iterator> next;
    simdjson::simdjson_result<Iterator> end;
    bool started = false;

    bool advance() {
        if (std::exchange(started, true)) ++next;
        if (next.error()) refuse(next.error());
        return next != end;
    }
};
using Elements = Range<ondemand::array_iterator>;
using Members = Range<ondemand::object_iterator>;

// An array or object that is being read.
struct Container {
    JSONValue* into;
    std::variant<Elements, Members> rest;
};

// Walks the text with a stack of its own, so that its depth costs memory and never the thread's stack.
class Reader {
public:
    explicit Reader(std::string_view text) : m_text(text), m_document(checked(m_parser.iterate(m_text))) {}

    JSONValue read() {
        JSONValue root;
        open(m_document, root);
        while (!m_open.empty())
            step();
        if (m_document.current_location().error() != simdjson::OUT_OF_BOUNDS) refuse(simdjson::TRAILING_CONTENT);
        // simdjson 3.0 takes "falsex" for false where the whole text is that.
        if (const auto* flag = root.boolean(); flag && strip(m_text) != (*flag ? "true" : "false"))
            refuse(simdjson::INCORRECT_TYPE);
        return root;
    }

private:
    // Reads a scalar whole; a container is only begun.
    template <typename Source> void open(Source&& source, JSONValue& into) {
        switch (checked<ondemand::json_type>(source.type())) {
        case ondemand::json_type::string:
            into.value = std::string(checked<std::string_view>(source.get_string()));
            break;
        case ondemand::json_type::number:
            into.value = checked<double>(source.get_double());
            break;
        case ondemand::json_type::boolean:
            into.value = checked<bool>(source.get_bool());
            break;
        case ondemand::json_type::null:
            if (!checked<bool>(source.is_null())) refuse(simdjson::N_ATOM_ERROR);
            into.value = nullptr;
            break;
        case ondemand::json_type::array: {
            auto array = checked<ondemand::array>(source.get_array());
            into.value = JSONValue::Array();
            push({&into, Elements{array.begin(), array.end()}});
            break;
        }
        case ondemand::json_type::object: {
            auto object = checked<ondemand::object>(source.get_object());
            into.value = JSONValue::Object();
            push({&into, Members{object.begin(), object.end()}});
            break;
        }
        }
    }

    void push(const Container& container) {
        if (m_open.size() == maximumJSONDepth)
            throw JSONError("The text nests arrays and objects more than " + std::to_string(maximumJSONDepth) +
                            " deep.");
        m_open.push_back(container);
    }

    // One element or member further in the innermost container, or out of it.
    void step() {
        JSONValue& into = *m_open.back().into;
        if (auto* elements = std::get_if<Elements>(&m_open.back().rest)) {
            if (!elements->advance()) return m_open.pop_back();
            open(checked<ondemand::value>(*elements->next), std::get<JSONValue::Array>(into.value).emplace_back());
        } else {
            auto& members = std::get<Members>(m_open.back().rest);
            if (!members.advance()) return m_open.pop_back();
            auto member = checked<ondemand::field>(*members.next);
            std::string name(checked<std::string_view>(member.unescaped_key()));
            open(member.value(), std::get<JSONValue::Object>(into.value)[std::move(name)]);
        }
    }

    ondemand::parser m_parser;
    simdjson::padded_string m_text;
    ondemand::document m_document;
    std::vector<Container> m_open;
};

} // namespace

JSONValue parseJSON(std::string_view text) {
    return Reader(text).read();
}

} // namespace bridge
