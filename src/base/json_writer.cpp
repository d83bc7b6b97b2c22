#include "base/json_writer.h"

#include "base/json_value.h"
#include "base/text.h"

#include <charconv>
#include <cmath>

namespace bridge {

void JSONWriter::open(char bracket) {
    separate();
    m_text += bracket;
    m_needsComma = false;
}

void JSONWriter::close(char bracket) {
    m_text += bracket;
    m_needsComma = true;
}

void JSONWriter::separate() {
    if (m_needsComma) m_text += ',';
    m_needsComma = true;
}

void JSONWriter::name(std::string_view name) {
    separate();
    quote(name);
    m_text += ':';
    m_needsComma = false;
}

void JSONWriter::string(std::string_view text) {
    separate();
    quote(text);
}

void JSONWriter::quote(std::string_view text) {
    if (!isUTF8(text)) return quote(repairUTF8(text));
    m_text += '"';
    size_t plain = 0;
    for (size_t index = 0; index < text.size(); ++index) {
        const auto byte = static_cast<unsigned char>(text[index]);
        if (byte >= 0x20 && byte != '"' && byte != '\\') continue;
        m_text.append(text, plain, index - plain);
        plain = index + 1;
        switch (byte) {
        case '"':
            m_text += "\\\"";
            break;
        case '\\':
            m_text += "\\\\";
            break;
        case '\b':
            m_text += "\\b";
            break;
        case '\f':
            m_text += "\\f";
            break;
        case '\n':
            m_text += "\\n";
            break;
        case '\r':
            m_text += "\\r";
            break;
        case '\t':
            m_text += "\\t";
            break;
        default:
            m_text += "\\u00";
            m_text += byte < 0x10 ? '0' : '1';
            m_text += "0123456789abcdef"[byte & 0x0f];
        }
    }
    m_text.append(text, plain, text.size() - plain);
    m_text += '"';
}

void JSONWriter::number(double value) {
    if (!std::isfinite(value)) throw JSONError("JSON has no way to write the number " + std::to_string(value) + ".");
    constexpr double exactlyCounted = 9007199254740992.0; // 2^53
    const bool isMinusZero = value == 0 && std::signbit(value);
    if (std::trunc(value) == value && std::abs(value) <= exactlyCounted && !isMinusZero)
        return integer(static_cast<int64_t>(value));
    separate();
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    m_text.append(digits, end);
}

void JSONWriter::integer(int64_t value) {
    separate();
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    m_text.append(digits, end);
}

void JSONWriter::boolean(bool value) {
    separate();
    m_text += value ? "true" : "false";
}

void JSONWriter::null() {
    separate();
    m_text += "null";
}

void encode(JSONWriter& writer, const JSONValue& value) {
    struct Visitor {
        JSONWriter& writer;
        void operator()(const std::string& text) const { writer.string(text); }
        void operator()(double number) const { writer.number(number); }
        void operator()(bool flag) const { writer.boolean(flag); }
        void operator()(std::nullptr_t) const { writer.null(); }
        void operator()(const JSONValue::Array& array) const {
            writer.beginArray();
            for (const auto& element : array)
                encode(writer, element);
            writer.endArray();
        }
        void operator()(const JSONValue::Object& object) const {
            writer.beginObject();
            for (const auto& [name, member] : object) {
                writer.name(name);
                encode(writer, member);
            }
            writer.endObject();
        }
    };
    std::visit(Visitor{writer}, value.value);
}

std::string writeJSON(const JSONValue& value) {
    JSONWriter writer;
    encode(writer, value);
    return writer.take();
}

} // namespace bridge
