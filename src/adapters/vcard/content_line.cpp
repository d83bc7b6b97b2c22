#include "adapters/vcard/content_line.h"

#include "base/line_folding.h"

#include <algorithm>

namespace bridge::vcard {

namespace {

char lower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

// RFC 6868: a quoted value has no other way to hold these.
std::string writtenParameterValue(const std::string& value) {
    std::string text;
    for (const char byte : value) {
        if (byte == '^')
            text += "^^";
        else if (byte == '\n')
            text += "^n";
        else if (byte == '"')
            text += "^'";
        else if (byte != '\r')
            text += byte;
    }
    const bool isPlain = !text.empty() && text.find_first_of(" ,;:=") == text.npos;
    return isPlain ? text : '"' + text + '"';
}

} // namespace

bool equalsIgnoringCase(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

bool ContentLine::is(std::string_view wanted) const {
    return equalsIgnoringCase(name, wanted);
}

const ContentParameter* ContentLine::parameter(std::string_view wanted) const {
    for (const auto& each : parameters)
        if (equalsIgnoringCase(each.name, wanted)) return &each;
    return nullptr;
}

std::string_view ContentLine::parameterValue(std::string_view wanted) const {
    const auto* found = parameter(wanted);
    return found && !found->values.empty() ? std::string_view(found->values[0]) : std::string_view();
}

bool ContentLine::hasType(std::string_view type) const {
    const auto* types = parameter("TYPE");
    return types && std::any_of(types->values.begin(), types->values.end(),
                                [type](const auto& each) { return equalsIgnoringCase(each, type); });
}

void ContentLine::removeParameter(std::string_view unwanted) {
    std::erase_if(parameters, [unwanted](const auto& each) { return equalsIgnoringCase(each.name, unwanted); });
}

void ContentLine::setParameter(std::string_view wanted, std::vector<std::string> values) {
    removeParameter(wanted);
    if (!values.empty()) parameters.push_back({std::string(wanted), std::move(values)});
}

std::string unfolded(const ContentLine& line) {
    std::string text = line.group.empty() ? line.name : line.group + '.' + line.name;
    for (const auto& [name, values] : line.parameters) {
        text += ';' + name + '=';
        for (size_t index = 0; index < values.size(); ++index)
            text.append(index > 0 ? "," : "").append(writtenParameterValue(values[index]));
    }
    return text + ':' + line.value;
}

std::string written(const ContentLine& line) {
    return folded(unfolded(line));
}

std::string unescaped(std::string_view value) {
    std::string text;
    for (size_t index = 0; index < value.size(); ++index) {
        const char next = value[index] == '\\' && index + 1 < value.size() ? value[index + 1] : '\0';
        if (next == 'n' || next == 'N')
            text += '\n';
        else if (next != '\0' && std::string_view("\\,;:\"").find(next) != std::string_view::npos)
            text += next;
        else {
            text += value[index];
            continue;
        }
        ++index;
    }
    return text;
}

std::string escaped(std::string_view text) {
    std::string value;
    for (size_t index = 0; index < text.size(); ++index) {
        const char byte = text[index];
        if (byte == '\r' && index + 1 < text.size() && text[index + 1] == '\n') continue;
        if (byte == '\r' || byte == '\n')
            value += "\\n";
        else if (byte == '\\' || byte == ',' || byte == ';')
            value.append(1, '\\').append(1, byte);
        else
            value += byte;
    }
    return value;
}

std::vector<std::string> split(std::string_view value, char separator) {
    std::vector<std::string> pieces(1);
    for (size_t index = 0; index < value.size(); ++index) {
        if (value[index] == separator) {
            pieces.emplace_back();
            continue;
        }
        pieces.back() += value[index];
        if (value[index] == '\\' && index + 1 < value.size()) pieces.back() += value[++index];
    }
    return pieces;
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string text;
    for (size_t index = 0; index < pieces.size(); ++index)
        text.append(index > 0 ? separator : "").append(pieces[index]);
    return text;
}

} // namespace bridge::vcard
