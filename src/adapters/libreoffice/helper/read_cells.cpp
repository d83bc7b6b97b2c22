#include "adapters/libreoffice/helper/cells.h"
#include "adapters/libreoffice/helper/number_formats.h"
#include "adapters/libreoffice/helper/shown_texts.h"

#include <com/sun/star/sheet/XCellRangeData.hpp>

#include <algorithm>

namespace bridge::office {

namespace {

using Area = css::table::CellRangeAddress;

// All of a column, and no more than memory can hold with ease.
constexpr size_t mostCells = size_t{1} << 20;

// How each cell of the area is shown, by rows.
std::vector<Shown> shownIn(const Area& area, const std::vector<FormatGroup>& groups) {
    const auto columns = static_cast<size_t>(area.EndColumn - area.StartColumn + 1);
    const auto rows = static_cast<size_t>(area.EndRow - area.StartRow + 1);
    std::vector<Shown> shown(columns * rows, Shown::asNumber);
    for (const auto& group : groups)
        for (const auto& part : group.cells->getRangeAddresses())
            for (auto row = part.StartRow; row <= part.EndRow; ++row) {
                const auto start = static_cast<size_t>(row - area.StartRow) * columns;
                const auto first = start + static_cast<size_t>(part.StartColumn - area.StartColumn);
                std::fill_n(shown.begin() + static_cast<std::ptrdiff_t>(first), part.EndColumn - part.StartColumn + 1,
                            group.shown);
            }
    return shown;
}

// The cells' texts are asked for when the first of them is needed.
class Reader {
public:
    Reader(const Ref<css::lang::XComponent>& document, const Area& area) : m_document(document), m_area(area) {}

    CellValue value(const css::uno::Any& data, Shown shown, sal_Int32 row, sal_Int32 column) {
        if (OUString text; data >>= text) {
            if (text.isEmpty()) return std::monostate();
            return fromUno(text);
        }
        double number = 0;
        // What is neither text nor number is an error, and says which.
        if (!(data >>= number)) return textAt(row, column);
        if (shown == Shown::asTruth) return number != 0;
        if (shown == Shown::asFormatted) return textAt(row, column);
        return number;
    }

private:
    std::string textAt(sal_Int32 row, sal_Int32 column) {
        if (!m_texts) m_texts = shownTexts(m_document, m_area.Sheet);
        const auto atRow = static_cast<size_t>(m_area.StartRow + row);
        const auto atColumn = static_cast<size_t>(m_area.StartColumn + column);
        if (atRow >= m_texts->size() || atColumn >= (*m_texts)[atRow].size()) return {};
        return (*m_texts)[atRow][atColumn];
    }

    Ref<css::lang::XComponent> m_document;
    Area m_area;
    std::optional<std::vector<std::vector<std::string>>> m_texts;
};

} // namespace

std::vector<CellValue> cells(const Ref<css::lang::XComponent>& document, const GetCells& request) {
    const auto table = tableAt(document, request.sheet, request.table);
    const auto area = table.placed(request.range);
    const auto columns = static_cast<size_t>(area.EndColumn - area.StartColumn + 1);
    const auto rows = static_cast<size_t>(area.EndRow - area.StartRow + 1);
    if (columns * rows > mostCells) throw ScriptError(failed, "The range has too many cells.");
    std::vector<CellValue> values(columns * rows);

    // Beyond the area that is in use there is nothing to be read.
    auto used = area;
    used.EndColumn = std::min(area.EndColumn, table.area.EndColumn);
    used.EndRow = std::min(area.EndRow, table.area.EndRow);
    if (used.EndColumn < used.StartColumn || used.EndRow < used.StartRow) return values;
    const auto range = table.cells(used);
    const auto data = as<css::sheet::XCellRangeData>(range)->getDataArray();
    const auto shown = shownIn(used, NumberFormats(document).specialIn(range));
    Reader reader(document, used);
    auto next = shown.begin();
    for (sal_Int32 row = 0; row < data.getLength(); ++row)
        for (sal_Int32 column = 0; column < data[row].getLength(); ++column)
            values[static_cast<size_t>(row) * columns + static_cast<size_t>(column)] =
                reader.value(data[row][column], *next++, row, column);
    return values;
}

} // namespace bridge::office
