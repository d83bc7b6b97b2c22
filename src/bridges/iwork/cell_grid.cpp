#include "bridges/iwork/cell_grid.h"

#include "base/apple_bridge_error.h"
#include "bridges/iwork/numbers_range.h"
#include "bridges/scripting/script_literal.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace bridge {

namespace {

struct CellWriter {
    std::string& script;
    void operator()(const std::string& text) const { appendScriptLiteral(script, text); }
    void operator()(double number) const { appendScriptLiteral(script, decimalText(number)); }
    void operator()(bool flag) const { script += flag ? "true" : "false"; }
    void operator()(std::nullptr_t) const { script += "missing value"; }
};

} // namespace

void checkGrid(const CellGrid& grid) {
    const auto isEmpty = [](const auto& row) { return row.empty(); };
    if (grid.empty() || std::ranges::any_of(grid, isEmpty))
        throw AppleBridgeError::malformedRequest("Numbers values must contain at least one non-empty row.");
    const size_t columns = grid.front().size();
    if (!std::ranges::all_of(grid, [=](const auto& row) { return row.size() == columns; }))
        throw AppleBridgeError::malformedRequest("Numbers values must form a rectangular grid.");
    if (grid.size() * columns > maximumCells)
        throw AppleBridgeError::malformedRequest("Numbers operations support at most 10,000 cells.");
}

void appendCellStatements(std::string& script, const CellGrid& grid, int64_t firstColumn, int64_t firstRow) {
    std::string_view separator;
    int64_t row = firstRow;
    for (const auto& cells : grid) {
        int64_t column = firstColumn;
        for (const auto& cell : cells) {
            script += separator;
            script += "set value of cell ";
            appendScriptLiteral(script, cellName(column++, row));
            script += " to ";
            std::visit(CellWriter{script}, cell.value);
            separator = "\n";
        }
        ++row;
    }
}

std::string decimalText(double number) {
    const double size = std::abs(number);
    const bool isPlain = size == 0 || (size >= 1e-6 && size < 1e16);
    char digits[64];
    const auto end = isPlain ? std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed)
                             : std::to_chars(digits, digits + sizeof digits, number);
    return {digits, end.ptr};
}

} // namespace bridge
