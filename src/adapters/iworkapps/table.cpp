#include "adapters/iworkapps/table.h"

#include "adapters/iworkapps/arguments.h"
#include "adapters/iworkapps/cell.h"
#include "adapters/iworkapps/range.h"
#include "adapters/iworkapps/refusals.h"

namespace bridge::iworkapps {

Value Table::property(const std::string& name, ScriptCall& call) {
    const auto& table = m_document->table(m_place, call);
    if (name == "name") return table.name;
    if (name == "row count") return static_cast<int64_t>(table.rows);
    if (name == "column count") return static_cast<int64_t>(table.columns);
    if (name == "cell range") return whole(call);
    cantGet(name, *this);
}

void Table::setProperty(const std::string& name, const Value& value, ScriptCall& call) {
    const auto table = m_document->table(m_place, call);
    if (name == "row count")
        m_document->resize(m_place, countArgument(value), table.columns, call);
    else if (name == "column count")
        m_document->resize(m_place, table.rows, countArgument(value), call);
    else
        cantSet(name, *this, value);
}

std::vector<ObjectPointer> Table::elements(const std::string& className, ScriptCall& call) {
    if (className == "range") cantGet("every range", *this);
    return whole(call)->elements(className, call);
}

ObjectPointer Table::elementAt(const std::string& className, size_t position, ScriptCall& call) {
    if (className == "range") cantGet("range " + std::to_string(position), *this);
    return whole(call)->elementAt(className, position, call);
}

ObjectPointer Table::elementNamed(const std::string& className, const std::string& name, ScriptCall& call) {
    if (className == "cell") {
        const auto position = parseCellName(name);
        if (!position) return nullptr;
        const CellRange range{position->column, position->row, position->column, position->row};
        if (!m_document->hasRoom(m_place, range, call)) return nullptr;
        return std::make_shared<Cell>(shared_from_this(), *position);
    }
    if (className == "range") {
        const auto range = parseRangeName(name);
        if (!range || !m_document->hasRoom(m_place, *range, call)) return nullptr;
        return std::make_shared<Range>(shared_from_this(), *range);
    }
    return whole(call)->elementNamed(className, name, call);
}

size_t Table::count(const std::string& className, ScriptCall& call) {
    if (className == "range") cantGet("every range", *this);
    return whole(call)->count(className, call);
}

std::optional<std::vector<Value>> Table::propertyOfElements(const std::string& className, const std::string& name,
                                                            ScriptCall& call) {
    return whole(call)->propertyOfElements(className, name, call);
}

bool Table::isSameAs(const Object& other) const {
    const auto* table = dynamic_cast<const Table*>(&other);
    return table && table->m_document == m_document && table->m_place == m_place;
}

CellRange Table::extent(ScriptCall& call) {
    const auto& table = m_document->table(m_place, call);
    return {0, 0, table.columns - 1, table.rows - 1};
}

std::vector<CellValue> Table::cells(const CellRange& range, ScriptCall& call) {
    return m_document->cells(m_place, range, call);
}

void Table::change(CellChange change, ScriptCall& call) {
    m_document->change(m_place, std::move(change), call);
}

std::shared_ptr<Range> Table::whole(ScriptCall& call) {
    return std::make_shared<Range>(shared_from_this(), extent(call));
}

} // namespace bridge::iworkapps
