#include "adapters/iworkapps/cell_name.h"

#include <algorithm>
#include <charconv>

namespace bridge::iworkapps {

namespace {

constexpr size_t mostLetters = 3;
constexpr size_t mostDigits = 7;

// 1 to 26, or 0.
int32_t letterValue(char letter) {
    if (letter >= 'A' && letter <= 'Z') return letter - 'A' + 1;
    if (letter >= 'a' && letter <= 'z') return letter - 'a' + 1;
    return 0;
}

std::optional<int32_t> parseRow(std::string_view digits) {
    if (digits.empty() || digits.size() > mostDigits || digits.front() < '1') return std::nullopt;
    int32_t number = 0;
    const auto end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number - 1;
}

} // namespace

std::optional<int32_t> parseColumnName(std::string_view name) {
    if (name.empty() || name.size() > mostLetters) return std::nullopt;
    int32_t column = 0;
    for (const auto letter : name) {
        if (letterValue(letter) == 0) return std::nullopt;
        column = column * 26 + letterValue(letter);
    }
    return column - 1;
}

std::optional<CellPosition> parseCellName(std::string_view name) {
    const auto digits = std::ranges::find_if(name, [](char c) { return letterValue(c) == 0; }) - name.begin();
    const auto column = parseColumnName(name.substr(0, static_cast<size_t>(digits)));
    const auto row = parseRow(name.substr(static_cast<size_t>(digits)));
    if (!column || !row) return std::nullopt;
    return CellPosition{*column, *row};
}

std::optional<office::CellRange> parseRangeName(std::string_view name) {
    const auto colon = name.find(':');
    const auto first = parseCellName(name.substr(0, colon));
    const auto last = colon == std::string_view::npos ? first : parseCellName(name.substr(colon + 1));
    if (!first || !last) return std::nullopt;
    const auto [left, right] = std::minmax(first->column, last->column);
    const auto [top, bottom] = std::minmax(first->row, last->row);
    return office::CellRange{left, top, right, bottom};
}

std::string columnName(int32_t column) {
    std::string name;
    for (auto rest = column + 1; rest > 0; rest = (rest - 1) / 26)
        name.insert(name.begin(), static_cast<char>('A' + (rest - 1) % 26));
    return name;
}

std::string cellName(CellPosition position) {
    return columnName(position.column) + std::to_string(position.row + 1);
}

std::string rangeName(const office::CellRange& range) {
    return cellName({range.firstColumn, range.firstRow}) + ':' + cellName({range.lastColumn, range.lastRow});
}

} // namespace bridge::iworkapps
