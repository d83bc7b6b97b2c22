#pragma once

#include "adapters/iworkapps/language.h"

namespace bridge::iworkapps {

// An empty cell's value is missing value; numbers are real.
Value scriptValue(CellValue value);
// Throws -1700 for what no cell can hold.
CellValue cellValue(const Value& value);

} // namespace bridge::iworkapps
