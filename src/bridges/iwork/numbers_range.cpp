#include "bridges/iwork/numbers_range.h"

#include "base/apple_bridge_error.h"
#include "base/text.h"

namespace bridge {

namespace {

constexpr int letters = 26;

struct Cell {
    int64_t column = 0;
    int64_t row = 0;
};

bool isBetween(char character, char first, char last) {
    return first <= character && character <= last;
}

// Takes one to `most` characters between `first` and `last` from the front.
std::string_view take(std::string_view& text, char first, char last, size_t most) {
    size_t length = 0;
    while (length < most && length < text.size() && isBetween(text[length], first, last))
        ++length;
    const auto taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

[[noreturn]] void refuseNotation() {
    throw AppleBridgeError::malformedRequest("Numbers range must use A1 notation, for example A1:C10.");
}

Cell takeCell(std::string_view& text) {
    const auto column = take(text, 'A', 'Z', 3);
    const auto row = take(text, '0', '9', 6);
    if (column.empty() || row.empty() || row.front() == '0') refuseNotation();
    Cell cell;
    for (const char letter : column)
        cell.column = cell.column * letters + (letter - 'A' + 1);
    for (const char digit : row)
        cell.row = cell.row * 10 + (digit - '0');
    return cell;
}

} // namespace

NumbersRange parseNumbersRange(std::string_view text) {
    NumbersRange range;
    range.text = uppercase(trim(text));
    std::string_view left = range.text;
    const auto first = takeCell(left);
    auto last = first;
    if (left.starts_with(':')) {
        left.remove_prefix(1);
        last = takeCell(left);
    }
    if (!left.empty()) refuseNotation();
    if (last.column < first.column || last.row < first.row)
        throw AppleBridgeError::malformedRequest(
            "Numbers range must run from its top-left cell to its bottom-right cell.");
    range.firstColumn = first.column;
    range.firstRow = first.row;
    range.columns = last.column - first.column + 1;
    range.rows = last.row - first.row + 1;
    return range;
}

std::string cellName(int64_t column, int64_t row) {
    std::string name;
    for (; column > 0; column = (column - 1) / letters)
        name.insert(name.begin(), static_cast<char>('A' + (column - 1) % letters));
    return name + std::to_string(row);
}

} // namespace bridge
