#pragma once

#include "adapters/libreoffice/office.h"

#include <string>
#include <utility>
#include <vector>

namespace bridge::office {

// A spreadsheet with empty sheets that have tables by name.
struct SheetPlan {
    std::string name;
    std::vector<std::pair<std::string, CellRange>> tables = {};
};

struct SpreadsheetPlan {
    std::vector<SheetPlan> sheets;
    size_t activeSheet = 0;
};

} // namespace bridge::office
