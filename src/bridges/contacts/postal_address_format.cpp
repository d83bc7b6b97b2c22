#include "bridges/contacts/postal_address_format.h"

#include "base/region.h"
#include "base/text.h"

#include <algorithm>
#include <array>

namespace bridge {

namespace {

// In the terms of libaddressinput: %A the street, %D a district of the city, %C the city, %S the state, %Z the postal
// code, %n a new line. %N, %O and %X, name, organization and sorting code, are no part of an address here.
struct AddressFormat {
    std::string_view region;
    std::string_view local;
    std::string_view latin; // empty when it is the same
};

constexpr AddressFormat formats[] = {
#include "bridges/contacts/data/address_formats.inc"
};

// Where the formats expect the city in the street's lines, and address books have it by itself.
constexpr AddressFormat ownFormats[] = {{"JP", "〒%Z%n%S%C%D%n%A", "%A%n%D%n%C, %S%n%Z"}};

std::string_view formatFor(const PostalAddress& address) {
    std::string region = uppercase(trim(address.isoCountryCode));
    if (region.empty()) region = regionNamed(address.country).value_or(userRegion());
    const bool isLatin = isInLatinLetters(address.street + address.city + address.state);
    const auto choose = [&](const AddressFormat& format) {
        return isLatin && !format.latin.empty() ? format.latin : format.local;
    };
    for (const auto& format : ownFormats)
        if (format.region == region) return choose(format);
    for (const auto& format : formats)
        if (format.region == region) return choose(format);
    return "%A%n%C %Z";
}

struct Piece {
    char field = '\0'; // of the address; none for text between the fields
    std::string_view text;
};
using Line = std::vector<Piece>;

std::vector<Line> linesOf(std::string_view format) {
    std::vector<Line> lines(1);
    while (!format.empty()) {
        if (format[0] != '%') {
            const auto text = format.substr(0, format.find('%'));
            lines.back().push_back({'\0', text});
            format.remove_prefix(text.size());
            continue;
        }
        if (format[1] == 'n')
            lines.emplace_back();
        else
            lines.back().push_back({format[1], {}});
        format.remove_prefix(2);
    }
    return lines;
}

class AddressWriter {
public:
    explicit AddressWriter(const PostalAddress& address) : m_address(address), m_lines(linesOf(formatFor(address))) {
        // In the order of an address that goes from the small to the large.
        for (const char field : std::string_view("ADCSZ"))
            if (!value(field).empty() && !lineOf(field) && !isWrittenAnyway(value(field))) place(field);
    }

    std::string write() const {
        std::string text;
        const auto add = [&](std::string_view lines) {
            while (!lines.empty()) {
                const auto line = trim(lines.substr(0, lines.find('\n')));
                if (!line.empty()) text.append(text.empty() ? "" : "\n").append(line);
                lines.remove_prefix(
                    std::min(lines.size(), lines.find('\n') == lines.npos ? lines.size() : lines.find('\n') + 1));
            }
        };
        const bool isEmpty =
            std::all_of(m_fields.begin(), m_fields.end(), [&](char each) { return value(each).empty(); });
        if (!isEmpty)
            for (const auto& line : m_lines)
                add(written(line));
        add(m_address.country);
        return text;
    }

private:
    static constexpr std::string_view m_fields = "ADCSZ";

    std::string_view value(char field) const {
        switch (field) {
        case 'A':
            return trim(m_address.street);
        case 'D':
            return trim(m_address.subLocality);
        case 'C':
            return trim(m_address.city);
        case 'S':
            return trim(m_address.state);
        case 'Z':
            return trim(m_address.postalCode);
        default:
            return {};
        }
    }

    std::optional<size_t> lineOf(char field) const {
        for (size_t index = 0; index < m_lines.size(); ++index)
            for (const auto& piece : m_lines[index])
                if (piece.field == field) return index;
        return std::nullopt;
    }

    // Text between two fields stands only where both do, and text at an end where its neighbour does.
    std::vector<Piece> kept(const Line& line) const {
        std::vector<Piece> pieces;
        for (size_t index = 0; index < line.size(); ++index) {
            const bool isText = line[index].field == '\0';
            const bool leads = !isText || index + 1 == line.size() || !value(line[index + 1].field).empty();
            const bool follows = !isText || index == 0 || !pieces.empty();
            if (leads && follows && (isText || !value(line[index].field).empty())) pieces.push_back(line[index]);
        }
        return pieces;
    }

    std::string written(const Line& line) const {
        std::string text;
        std::string_view before;
        for (const auto& piece : kept(line)) {
            auto part = piece.field ? value(piece.field) : piece.text;
            // Many write the prefix of a postal code themselves: CH-8001.
            if (piece.field == 'Z' && !trim(before).empty() && uppercase(part).starts_with(uppercase(trim(before))))
                part.remove_prefix(trim(before).size());
            text += part;
            before = piece.field ? std::string_view() : piece.text;
        }
        return text;
    }

    // "SINGAPORE 018956" names the city.
    bool isWrittenAnyway(std::string_view wanted) const {
        for (const auto& line : m_lines)
            for (const auto& piece : kept(line))
                if (!piece.field && fold(trim(piece.text)) == fold(wanted)) return true;
        return false;
    }

    void place(char field) {
        const auto street = lineOf('A');
        const bool isLargeFirst =
            street && ((lineOf('S') && *lineOf('S') < *street) || (lineOf('C') && *lineOf('C') < *street));
        const std::string_view order = isLargeFirst ? "SCDA" : "ADCS";
        size_t at = field == 'Z' ? m_lines.size() : 0;
        for (const char before : order.substr(0, std::min(order.size(), order.find(field))))
            if (field != 'Z' && lineOf(before)) at = std::max(at, *lineOf(before) + 1);
        m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(at), Line{{field, {}}});
    }

    const PostalAddress& m_address;
    std::vector<Line> m_lines;
};

} // namespace

std::string formatPostalAddress(const PostalAddress& address) {
    return AddressWriter(address).write();
}

} // namespace bridge
