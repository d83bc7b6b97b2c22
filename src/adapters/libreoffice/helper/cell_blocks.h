#pragma once

#include "adapters/libreoffice/office.h"

#include <vector>

namespace bridge::office {

// Changes that fill a rectangle, row by row.
struct CellBlock {
    CellRange range;
    std::vector<const CellChange*> changes;
};

// The changes as rectangles; of those for one cell the last one counts. The pointers are into the list.
std::vector<CellBlock> blocksOf(const std::vector<CellChange>& changes);

} // namespace bridge::office
