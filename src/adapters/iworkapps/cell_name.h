#pragma once

#include "adapters/libreoffice/office.h"

#include <optional>
#include <string>
#include <string_view>

namespace bridge::iworkapps {

struct CellPosition {
    int32_t column = 0, row = 0; // from 0
    bool operator==(const CellPosition&) const = default;
};

// "B12" or "b12", without regard to what room there is; nullopt for what names no cell.
std::optional<CellPosition> parseCellName(std::string_view name);
// "A1:C3" between any two opposite corners, or a single cell.
std::optional<office::CellRange> parseRangeName(std::string_view name);
// "B", "AA" of a column.
std::optional<int32_t> parseColumnName(std::string_view name);

std::string cellName(CellPosition position);
std::string rangeName(const office::CellRange& range);
std::string columnName(int32_t column);

} // namespace bridge::iworkapps
