#pragma once

#include "bridges/iwork/cell_grid.h"
#include "bridges/iwork/numbers_range.h"

namespace bridge {

// Which table of a document; the first one of the active sheet unless told.
struct TableChoice {
    std::optional<std::string> sheet;
    std::optional<std::string> table;
};

// What Numbers is told. The locations are absolute paths, the grids checked and, for a range, of its size.
std::string createNumbersScript(const CellGrid& grid, const std::string& location);
// Returns the values of the cells.
std::string readNumbersScript(const TableChoice& choice, const NumbersRange& range, const std::string& location);
std::string writeNumbersScript(const TableChoice& choice, const NumbersRange& range, const CellGrid& grid,
                               const std::string& location);

} // namespace bridge
