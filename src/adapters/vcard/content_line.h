#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bridge::vcard {

struct ContentParameter {
    std::string name;
    std::vector<std::string> values;
    bool operator==(const ContentParameter&) const = default;
};

// One line of a vCard: group.NAME;PARAMETER=value:value (RFC 6350, 3.3). Names have the case in which they were
// written, which does not count.
struct ContentLine {
    std::string group;
    std::string name;
    std::vector<ContentParameter> parameters;
    std::string value; // with its escapes
    bool operator==(const ContentLine&) const = default;

    bool is(std::string_view wanted) const;
    const ContentParameter* parameter(std::string_view wanted) const;
    // The first value; empty when there is no such parameter.
    std::string_view parameterValue(std::string_view wanted) const;
    bool hasType(std::string_view type) const;
    void removeParameter(std::string_view unwanted);
    void setParameter(std::string_view wanted, std::vector<std::string> values);
};

// Of one unfolded line; nothing when it is none. A parameter without a name, as vCard 2.1 has them, has the name "".
// The value may hold any bytes.
std::optional<ContentLine> parsedLine(std::string_view line);

// For names, types and the like.
bool equalsIgnoringCase(std::string_view one, std::string_view other);

// As vCard 4.0 writes it: folded, with its line end; or without both.
std::string written(const ContentLine& line);
std::string unfolded(const ContentLine& line);

// The text of a value, or of a part of one (RFC 6350, 3.4), and the way back. A value has no carriage returns, so line
// ends of every kind become line feeds.
std::string unescaped(std::string_view value);
std::string escaped(std::string_view text);
// A value cut at each separator that no backslash guards; the pieces keep their escapes.
std::vector<std::string> split(std::string_view value, char separator);
std::string joined(const std::vector<std::string>& pieces, std::string_view separator);

} // namespace bridge::vcard
