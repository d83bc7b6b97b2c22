#include "adapters/libreoffice/helper/cell_blocks.h"
#include "adapters/libreoffice/helper/cells.h"
#include "adapters/libreoffice/helper/number_formats.h"
#include "adapters/libreoffice/helper/typing.h"

#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/text/XTextRange.hpp>

#include <fmt/format.h>

namespace bridge::office {

namespace {

using Area = css::table::CellRangeAddress;

// A change as LibreOffice takes it.
struct Typed {
    OUString text;
    Typing typing = Typing::plain;
};

// LibreOffice loses tabs in cells when it saves, and what they kept apart would be one word.
OUString cellText(std::string_view text) {
    return toUno(text).replace('\t', ' ');
}

Typed typed(const CellValue& value) {
    if (const auto* flag = std::get_if<bool>(&value)) return {*flag ? OUString("1") : OUString("0"), Typing::logical};
    if (const auto* number = std::get_if<double>(&value)) return {toUno(fmt::format("{}", *number)), Typing::plain};
    const auto* text = std::get_if<std::string>(&value);
    if (!text) return {};
    const auto typing = typingOf(*text);
    const bool isTrue = text->starts_with('t') || text->starts_with('T');
    if (typing == Typing::logical) return {isTrue ? OUString("1") : OUString("0"), typing};
    if (typing == Typing::literal) return {cellText(std::string_view(*text).substr(1)), typing};
    return {cellText(*text), typing};
}

// Cells next to one another are told as one area.
void extend(std::vector<Area>& areas, const Area& cell) {
    if (!areas.empty() && areas.back().StartRow == cell.StartRow && areas.back().EndColumn + 1 == cell.StartColumn)
        areas.back().EndColumn = cell.EndColumn;
    else
        areas.push_back(cell);
}

class Writer {
public:
    Writer(const Ref<css::lang::XComponent>& document, const PlacedTable& table)
        : m_document(document), m_table(table), m_formats(document) {}

    void write(const CellBlock& block, const Area& area) {
        const auto columns = area.EndColumn - area.StartColumn + 1;
        css::uno::Sequence<css::uno::Sequence<OUString>> texts(area.EndRow - area.StartRow + 1);
        auto* rows = texts.getArray();
        auto change = block.changes.begin();
        for (auto row = area.StartRow; row <= area.EndRow; ++row) {
            auto& cells = rows[row - area.StartRow];
            cells.realloc(columns);
            auto* cell = cells.getArray();
            for (auto column = area.StartColumn; column <= area.EndColumn; ++column)
                *cell++ = sort(typed((*change++)->value), {area.Sheet, column, row, column, row});
        }
        const auto range = m_table.cells(area);
        forgetTruths(range);
        as<css::sheet::XCellRangeFormula>(range)->setFormulaArray(texts);
    }

    void finish() {
        if (!m_logical.empty()) m_formats.makeLogical(together(m_logical));
        for (const auto& [position, value] : m_single) {
            const auto cell = m_table.sheet->getCellByPosition(position.StartColumn, position.StartRow);
            if (value.typing == Typing::literal)
                as<css::text::XTextRange>(cell)->setString(value.text);
            else
                setProperty(cell, "FormulaLocal", css::uno::Any(value.text));
        }
    }

private:
    // What the cell gets at once, with all others.
    OUString sort(const Typed& value, const Area& cell) {
        if (value.typing == Typing::logical) extend(m_logical, cell);
        if (value.typing != Typing::careful && value.typing != Typing::literal) return value.text;
        m_single.emplace_back(cell, value);
        return {};
    }

    // A cell that showed a truth would show its new number as one, too.
    void forgetTruths(const Ref<css::table::XCellRange>& range) const {
        for (const auto& group : m_formats.specialIn(range))
            if (group.shown == Shown::asTruth) m_formats.makePlain(group.cells);
    }

    Ref<css::uno::XInterface> together(const std::vector<Area>& areas) const {
        const auto list = as<css::sheet::XSheetCellRangeContainer>(
            as<css::lang::XMultiServiceFactory>(m_document)->createInstance("com.sun.star.sheet.SheetCellRanges"));
        list->addRangeAddresses(css::uno::Sequence<Area>(areas.data(), static_cast<sal_Int32>(areas.size())), false);
        return list;
    }

    Ref<css::lang::XComponent> m_document;
    const PlacedTable& m_table;
    NumberFormats m_formats;
    std::vector<Area> m_logical;
    std::vector<std::pair<Area, Typed>> m_single;
};

} // namespace

void setCells(const Ref<css::lang::XComponent>& document, const SetCells& request) {
    const auto table = tableAt(document, request.sheet, request.table);
    const auto blocks = blocksOf(request.changes);
    // All are looked at before the first is written.
    std::vector<Area> areas;
    for (const auto& block : blocks)
        areas.push_back(table.placed(block.range));
    Writer writer(document, table);
    for (size_t index = 0; index < blocks.size(); ++index)
        writer.write(blocks[index], areas[index]);
    writer.finish();
}

} // namespace bridge::office
