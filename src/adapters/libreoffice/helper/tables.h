#pragma once

#include "adapters/libreoffice/helper/uno.h"
#include "adapters/libreoffice/office.h"

#include <com/sun/star/lang/XComponent.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>

namespace bridge::office {

// A table where it is on its sheet.
struct PlacedTable {
    std::string name;
    Ref<css::sheet::XSpreadsheet> sheet;
    css::table::CellRangeAddress area; // of the grid: as far as something is in it, nothing when its end is -1
    css::table::CellRangeAddress room; // where its cells can be
    Ref<css::uno::XInterface> owner;   // of its name and its area; the grid has none

    // Throws noSuchObject when the positions, which count from the table's corner, are beyond its room.
    css::table::CellRangeAddress placed(const CellRange& range) const;
    Ref<css::table::XCellRange> cells(const css::table::CellRangeAddress& range) const;
};

// These three throw noSuchObject when there is no such sheet or table.
std::vector<PlacedTable> tablesOf(const Ref<css::lang::XComponent>& document, int32_t sheet);
PlacedTable tableAt(const Ref<css::lang::XComponent>& document, int32_t sheet, int32_t table);
void resizeTable(const Ref<css::lang::XComponent>& document, const PlacedTable& table, int32_t rows, int32_t columns);

std::vector<Sheet> sheets(const Ref<css::lang::XComponent>& document);
int32_t activeSheet(const Ref<css::lang::XComponent>& document);

} // namespace bridge::office
