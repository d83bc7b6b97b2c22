#include "adapters/ical/shield.h"

#include "adapters/ical/ical_pointer.h"

#include <algorithm>

namespace bridge {

namespace {

constexpr char space = '\x01';
constexpr char tab = '\x02';
constexpr char backslash = '\x03';
constexpr char comma = '\x04'; // behind a backslash, where it separates nothing
// Before a name that libical does not know, and would leave out.
constexpr std::string_view unknownName = "X-\x05";

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
    const std::string_view start = std::string_view(line.text).substr(0, line.text.size() - value.size());
    const auto name = line.name();
    if (name == "BEGIN" || name == "END") return line.text;
    const auto kind = icalproperty_string_to_kind(name.c_str());
    if (kind == ICAL_EXDATE_PROPERTY || kind == ICAL_RDATE_PROPERTY) return withFewerDates(start, value);
    if (!isText(kind) && !losesEscapes(kind)) return line.text;
    const std::string kept = shieldEnds(losesEscapes(kind) ? withoutEscapes(value) : std::string(value));
    const bool isUnknown = kind == ICAL_NO_PROPERTY || (kind == ICAL_X_PROPERTY && !line.text.starts_with("X-"));
    return std::string(isUnknown && !value.empty() ? unknownName : "").append(start).append(kept);
}

std::string unshield(std::string text) {
    for (size_t at = text.find(unknownName); at != std::string::npos; at = text.find(unknownName, at))
        text.erase(at, unknownName.size());
    for (char& c : text) {
        if (c == space) c = ' ';
        if (c == tab) c = '\t';
        if (c == backslash) c = '\\';
        if (c == comma) c = ',';
    }
    return text;
}

} // namespace bridge
