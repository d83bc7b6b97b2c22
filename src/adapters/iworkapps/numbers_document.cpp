#include "adapters/iworkapps/numbers_document.h"

#include "adapters/iworkapps/refusals.h"
#include "adapters/iworkapps/sheet.h"

#include <algorithm>

namespace bridge::iworkapps {

Value NumbersDocument::property(const std::string& name, ScriptCall& call) {
    if (name != "active sheet") return OfficeDocument::property(name, call);
    requireOpen();
    // Asked for once: nothing that a script can do changes it.
    if (!m_activeSheet) m_activeSheet = office(call).activeSheet(id(), call);
    return sheet(*m_activeSheet, call);
}

std::vector<ObjectPointer> NumbersDocument::elements(const std::string& className, ScriptCall& call) {
    if (className != "sheet") return OfficeDocument::elements(className, call);
    std::vector<ObjectPointer> all;
    for (size_t index = 0; index < sheets(call).size(); ++index)
        all.push_back(sheet(static_cast<int32_t>(index), call));
    return all;
}

ObjectPointer NumbersDocument::elementAt(const std::string& className, size_t position, ScriptCall& call) {
    if (className != "sheet") return OfficeDocument::elementAt(className, position, call);
    return position >= 1 && position <= sheets(call).size() ? sheet(static_cast<int32_t>(position - 1), call) : nullptr;
}

const std::vector<office::Sheet>& NumbersDocument::sheets(ScriptCall& call) {
    requireOpen();
    if (!m_sheets) {
        m_sheets = office(call).sheets(id(), call);
        for (auto& sheet : *m_sheets)
            for (auto& table : sheet.tables) {
                table.rows = std::max(table.rows, 1);
                table.columns = std::max(table.columns, 1);
            }
    }
    return *m_sheets;
}

const office::Table& NumbersDocument::table(TablePlace place, ScriptCall& call) {
    return knownTable(place, call);
}

office::Table& NumbersDocument::knownTable(TablePlace place, ScriptCall& call) {
    sheets(call);
    return m_sheets->at(static_cast<size_t>(place.sheet)).tables.at(static_cast<size_t>(place.table));
}

bool NumbersDocument::hasRoom(TablePlace place, const CellRange& range, ScriptCall& call) {
    requireOpen();
    if (place.table == 0) return true;
    const auto& table = this->table(place, call);
    return range.lastColumn < table.columns && range.lastRow < table.rows;
}

std::vector<CellValue> NumbersDocument::cells(TablePlace place, const CellRange& range, ScriptCall& call) {
    return office(call).cells(id(), place.sheet, place.table, range, call);
}

void NumbersDocument::change(TablePlace place, CellChange change, ScriptCall& call) {
    requireOpen();
    if (place != m_changing) flush(call);
    if (!std::holds_alternative<std::monostate>(change.value)) {
        auto& table = knownTable(place, call);
        table.columns = std::max(table.columns, change.column + 1);
        table.rows = std::max(table.rows, change.row + 1);
    }
    m_changing = place;
    m_changes.push_back(std::move(change));
    markChanged();
}

void NumbersDocument::resize(TablePlace place, int32_t rows, int32_t columns, ScriptCall& call) {
    if (rows < 1 || columns < 1) fails("A table has at least one row and one column.");
    auto& office = this->office(call);
    markChanged();
    office.resizeTable(id(), place.sheet, place.table, rows, columns, call);
    auto& table = knownTable(place, call);
    table.rows = rows;
    table.columns = columns;
}

void NumbersDocument::flush(ScriptCall& call) {
    if (m_changes.empty()) return;
    const auto changes = std::exchange(m_changes, {});
    try {
        officeBeforeFlush().setCells(id(), m_changing.sheet, m_changing.table, changes, call);
    } catch (const ScriptError&) {
        // The tables did not grow after all.
        m_sheets.reset();
        throw;
    }
}

ObjectPointer NumbersDocument::sheet(int32_t index, ScriptCall& call) {
    const auto& all = sheets(call);
    const auto position = static_cast<size_t>(index);
    if (position >= all.size()) cantGet("sheet " + std::to_string(position + 1), *this);
    return std::make_shared<Sheet>(std::static_pointer_cast<NumbersDocument>(shared_from_this()), index,
                                   all[position].name);
}

} // namespace bridge::iworkapps
