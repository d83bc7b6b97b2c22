#include "adapters/libreoffice/helper/tables.h"

#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XNamedRange.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/CellContentType.hpp>

#include <algorithm>
#include <optional>

namespace bridge::office {

namespace {

using Area = css::table::CellRangeAddress;

Area areaOf(const Ref<css::uno::XInterface>& cells) {
    return as<css::sheet::XCellRangeAddressable>(cells)->getRangeAddress();
}

Area usedArea(const Ref<css::sheet::XSpreadsheet>& sheet) {
    const auto cursor = sheet->createCursor();
    as<css::sheet::XUsedAreaCursor>(cursor)->gotoEndOfUsedArea(false);
    auto area = areaOf(cursor);
    const bool isCorner = area.EndColumn == 0 && area.EndRow == 0;
    if (isCorner && sheet->getCellByPosition(0, 0)->getType() == css::table::CellContentType_EMPTY)
        area.EndColumn = area.EndRow = -1;
    area.StartColumn = area.StartRow = 0;
    return area;
}

std::optional<Area> areaOfNamed(const Ref<css::uno::XInterface>& named) {
    if (const Ref<css::sheet::XDatabaseRange> database(named, css::uno::UNO_QUERY); database.is())
        return database->getDataArea();
    // A name may also stand for a formula.
    const auto cells = as<css::sheet::XCellRangeReferrer>(named)->getReferredCells();
    if (!cells.is()) return std::nullopt;
    return areaOf(cells);
}

// The owner is the document, or the sheet for its own names.
void addNamed(std::vector<PlacedTable>& tables, const Ref<css::uno::XInterface>& owner, const char* list) {
    const auto names = property(owner, list).get<Ref<css::container::XNameAccess>>();
    const PlacedTable grid = tables.front();
    for (const auto& name : names->getElementNames()) {
        // What LibreOffice keeps for itself, such as the place of an unnamed filter.
        if (name.startsWith("__Anonymous")) continue;
        const Ref<css::uno::XInterface> named(names->getByName(name), css::uno::UNO_QUERY_THROW);
        const auto area = areaOfNamed(named);
        if (area && area->Sheet == grid.room.Sheet) tables.push_back({fromUno(name), grid.sheet, *area, *area, named});
    }
}

Ref<css::container::XIndexAccess> sheetsOf(const Ref<css::lang::XComponent>& document) {
    return as<css::container::XIndexAccess>(as<css::sheet::XSpreadsheetDocument>(document)->getSheets());
}

void clear(const PlacedTable& table, Area area) {
    if (area.StartColumn > area.EndColumn || area.StartRow > area.EndRow) return;
    using namespace css::sheet::CellFlags;
    as<css::sheet::XSheetOperation>(table.cells(area))->clearContents(VALUE | DATETIME | STRING | FORMULA | ANNOTATION);
}

} // namespace

Area PlacedTable::placed(const CellRange& range) const {
    const int64_t columns = int64_t{room.EndColumn} - room.StartColumn;
    const int64_t rows = int64_t{room.EndRow} - room.StartRow;
    if (range.firstColumn < 0 || range.firstRow < 0 || range.lastColumn < range.firstColumn ||
        range.lastRow < range.firstRow || range.lastColumn > columns || range.lastRow > rows)
        throw ScriptError(ScriptError::noSuchObject, "The table \"" + name + "\" has no such cells.");
    return {room.Sheet, room.StartColumn + range.firstColumn, room.StartRow + range.firstRow,
            room.StartColumn + range.lastColumn, room.StartRow + range.lastRow};
}

Ref<css::table::XCellRange> PlacedTable::cells(const Area& range) const {
    return sheet->getCellRangeByPosition(range.StartColumn, range.StartRow, range.EndColumn, range.EndRow);
}

std::vector<PlacedTable> tablesOf(const Ref<css::lang::XComponent>& document, int32_t sheet) {
    const auto all = sheetsOf(document);
    if (sheet < 0 || sheet >= all->getCount()) throw ScriptError(ScriptError::noSuchObject, "There is no such sheet.");
    const auto place = element<css::sheet::XSpreadsheet>(all, sheet);
    std::vector<PlacedTable> tables{{"Table 1", place, usedArea(place), areaOf(place), {}}};
    addNamed(tables, document, "DatabaseRanges");
    addNamed(tables, document, "NamedRanges");
    addNamed(tables, place, "NamedRanges");
    std::sort(tables.begin() + 1, tables.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    const auto hasItsName = [](const PlacedTable& table) { return table.name == "Table 1"; };
    if (std::any_of(tables.begin() + 1, tables.end(), hasItsName))
        tables.front().name = fromUno(as<css::container::XNamed>(place)->getName());
    return tables;
}

PlacedTable tableAt(const Ref<css::lang::XComponent>& document, int32_t sheet, int32_t table) {
    const auto tables = tablesOf(document, sheet);
    if (table < 0 || static_cast<size_t>(table) >= tables.size())
        throw ScriptError(ScriptError::noSuchObject, "There is no such table.");
    return tables[static_cast<size_t>(table)];
}

void resizeTable(const Ref<css::lang::XComponent>& document, const PlacedTable& table, int32_t rows, int32_t columns) {
    const auto sheet = tablesOf(document, table.room.Sheet).front();
    const CellRange wanted{0, 0, columns - 1, rows - 1};
    auto area = table.room;
    area.EndColumn = sheet.room.EndColumn;
    area.EndRow = sheet.room.EndRow;
    area = PlacedTable{table.name, table.sheet, area, area, {}}.placed(wanted);
    const auto below = [&](Area rest) {
        rest.StartRow = area.EndRow + 1;
        return rest;
    };
    const auto beside = [&](Area rest) {
        rest.StartColumn = area.EndColumn + 1;
        rest.EndRow = std::min(rest.EndRow, area.EndRow);
        return rest;
    };
    clear(table, below(table.area));
    clear(table, beside(table.area));
    if (const Ref<css::sheet::XDatabaseRange> database(table.owner, css::uno::UNO_QUERY); database.is())
        database->setDataArea(area);
    else if (table.owner.is())
        as<css::sheet::XNamedRange>(table.owner)
            ->setContent(property(table.cells(area), "AbsoluteName").get<OUString>());
}

std::vector<Sheet> sheets(const Ref<css::lang::XComponent>& document) {
    const auto all = sheetsOf(document);
    std::vector<Sheet> found;
    for (sal_Int32 position = 0; position < all->getCount(); ++position) {
        Sheet sheet{fromUno(element<css::container::XNamed>(all, position)->getName()), {}};
        for (const auto& table : tablesOf(document, position))
            sheet.tables.push_back({table.name, table.area.EndRow - table.area.StartRow + 1,
                                    table.area.EndColumn - table.area.StartColumn + 1});
        found.push_back(std::move(sheet));
    }
    return found;
}

int32_t activeSheet(const Ref<css::lang::XComponent>& document) {
    const Ref<css::sheet::XSpreadsheetView> view(as<css::frame::XModel>(document)->getCurrentController(),
                                                 css::uno::UNO_QUERY);
    return view.is() ? areaOf(view->getActiveSheet()).Sheet : 0;
}

} // namespace bridge::office
