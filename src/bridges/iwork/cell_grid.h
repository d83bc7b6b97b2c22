#pragma once

#include "bridges/iwork/iwork_requests.h"

namespace bridge {

using CellGrid = std::vector<std::vector<IWorkCellValue>>;

constexpr size_t maximumCells = 10'000;

// Throws AppleBridgeError malformedRequest for a grid that is empty, not rectangular, or too large.
void checkGrid(const CellGrid& grid);

// One statement a cell, a line each and row by row, that set the cells from the given one on to the right and below.
// Numbers go as text, which the application reads as if it were typed.
void appendCellStatements(std::string& script, const CellGrid& grid, int64_t firstColumn, int64_t firstRow);

// The shortest digits that read back as the same number. An exponent only where there would be a long row of zeros.
std::string decimalText(double number);

} // namespace bridge
