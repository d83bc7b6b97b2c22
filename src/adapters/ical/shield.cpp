#include "adapters/ical/shield.h"

#include "adapters/ical/ical_pointer.h"
#include "base/line_folding.h"

#include <algorithm>

namespace bridge {

namespace {

constexpr char space = '\x01';
constexpr char tab = '\x02';
constexpr char backslash = '\x03';
constexpr char comma = '\x04'; // behind a backslash, where it separates nothing
// In a parameter, where it may begin an escape (RFC 6868), which libical takes away each time; no UTF-8 has this byte,
// and control characters become spaces there.
constexpr char caret = '\xf8';
// Before a name that libical does not know, and would leave out.
constexpr std::string_view unknownName = "X-\x05";
// Before a line that can't be divided into name, parameters and value.
constexpr std::string_view wholeLine = "X-\x07:";

bool isText(icalproperty_kind kind) {
    return icalproperty_kind_to_value_kind(kind) == ICAL_TEXT_VALUE;
}

bool losesEscapes(icalproperty_kind kind) {
    return kind == ICAL_CATEGORIES_PROPERTY || kind == ICAL_RESOURCES_PROPERTY || kind == ICAL_X_PROPERTY ||
           kind == ICAL_NO_PROPERTY;
}

std::string withFewerDates(std::string_view start, std::string_view value) {
    constexpr size_t most = 400;
    std::string split(start);
    size_t count = 0;
    for (const char c : value) {
        if (c == ',' && ++count % most == 0)
            split += std::string("\r\n").append(start);
        else
            split += c;
    }
    return split;
}

// Leaves those that there are, for libical to read.
std::string withoutWrongEscapes(std::string_view value) {
    std::string kept(value);
    for (size_t i = 0; i < kept.size(); ++i) {
        if (kept[i] != '\\') continue;
        if (i + 1 < kept.size() && std::string_view("\\,;nN").find(kept[i + 1]) != std::string_view::npos)
            ++i;
        else
            kept[i] = backslash;
    }
    return kept;
}

std::string withoutEscapes(std::string_view value) {
    std::string kept;
    for (size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\') {
            kept += value[i];
            continue;
        }
        kept += backslash;
        if (i + 1 == value.size()) break;
        ++i;
        kept += value[i] == '\\' ? backslash : value[i] == ',' ? comma : value[i];
    }
    return kept;
}

} // namespace

std::string shieldEnds(std::string text) {
    const auto keep = [](char& c) {
        if (c != ' ' && c != '\t') return false;
        c = c == ' ' ? space : tab;
        return true;
    };
    for (auto c = text.begin(); c != text.end() && keep(*c);)
        ++c;
    for (auto c = text.rbegin(); c != text.rend() && keep(*c);)
        ++c;
    return text;
}

std::string shield(const ContentLine& line) {
    const auto value = line.value();
    const auto name = line.name();
    if (name == "BEGIN" || name == "END") return line.text;
    if (!line.isWellFormed()) return std::string(wholeLine).append(shieldEnds(withoutEscapes(line.text)));
    std::string start = line.text.substr(0, line.text.size() - value.size());
    std::ranges::replace(start, '^', caret);
    const auto kind = icalproperty_string_to_kind(name.c_str());
    if (kind == ICAL_EXDATE_PROPERTY || kind == ICAL_RDATE_PROPERTY) return withFewerDates(start, value);
    if (!isText(kind) && !losesEscapes(kind)) return start.append(value);
    const auto kept = shieldEnds(losesEscapes(kind) ? withoutEscapes(value) : withoutWrongEscapes(value));
    const bool isUnknown = kind == ICAL_NO_PROPERTY || (kind == ICAL_X_PROPERTY && !line.text.starts_with("X-"));
    return std::string(isUnknown && !value.empty() ? unknownName : "").append(start).append(kept);
}

std::string unshield(std::string text) {
    for (char& c : text) {
        if (c == space) c = ' ';
        if (c == tab) c = '\t';
        if (c == backslash) c = '\\';
        if (c == comma) c = ',';
        if (c == caret) c = '^';
    }
    return text;
}

std::string unshieldLines(std::string_view text) {
    constexpr std::string_view lineEnd = "\r\n";
    std::string lines;
    while (!text.empty()) {
        auto line = text.substr(0, text.find(lineEnd));
        text.remove_prefix(std::min(line.size() + lineEnd.size(), text.size()));
        for (const auto prefix : {unknownName, wholeLine})
            if (line.starts_with(prefix)) line.remove_prefix(prefix.size());
        lines += folded(unshield(std::string(line)));
    }
    return lines;
}

} // namespace bridge
