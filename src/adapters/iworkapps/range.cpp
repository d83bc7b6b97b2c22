#include "adapters/iworkapps/range.h"

#include "adapters/iworkapps/cell.h"
#include "adapters/iworkapps/cell_value.h"
#include "adapters/iworkapps/line.h"
#include "adapters/iworkapps/refusals.h"

#include <fmt/format.h>

namespace bridge::iworkapps {

namespace {

// A range is named in nine letters and may have billions of cells, which nobody wants one by one.
constexpr size_t most = 250'000;

} // namespace

std::string Range::description() const {
    return fmt::format("{} \"{}\" of {}", className(), name(), m_table->description());
}

std::string Range::name() const {
    return rangeName(m_extent);
}

Value Range::property(const std::string& name, ScriptCall&) {
    if (name == "name") return this->name();
    cantGet(name, *this);
}

void Range::setProperty(const std::string& name, const Value& value, ScriptCall&) {
    cantSet(name, *this, value);
}

std::vector<ObjectPointer> Range::elements(const std::string& className, ScriptCall& call) {
    const auto number = count(className, call);
    requireManageable(number);
    std::vector<ObjectPointer> all;
    all.reserve(number);
    for (size_t position = 1; position <= number; ++position)
        all.push_back(elementAt(className, position, call));
    return all;
}

ObjectPointer Range::elementAt(const std::string& className, size_t position, ScriptCall& call) {
    if (position < 1 || position > count(className, call)) return nullptr;
    const auto index = position - 1;
    if (className == "row")
        return std::make_shared<Row>(m_table, m_extent.firstRow + static_cast<int32_t>(index), call);
    if (className == "column")
        return std::make_shared<Column>(m_table, m_extent.firstColumn + static_cast<int32_t>(index), call);
    const auto columns = static_cast<size_t>(width());
    return std::make_shared<Cell>(m_table, CellPosition{m_extent.firstColumn + static_cast<int32_t>(index % columns),
                                                        m_extent.firstRow + static_cast<int32_t>(index / columns)});
}

ObjectPointer Range::elementNamed(const std::string& className, const std::string& name, ScriptCall& call) {
    if (className == "column") {
        const auto column = parseColumnName(name);
        const auto within = column && *column >= m_extent.firstColumn && *column <= m_extent.lastColumn;
        return within ? std::make_shared<Column>(m_table, *column, call) : nullptr;
    }
    if (className != "cell") return Object::elementNamed(className, name, call);
    const auto cell = parseCellName(name);
    const auto within = cell && cell->column >= m_extent.firstColumn && cell->column <= m_extent.lastColumn &&
                        cell->row >= m_extent.firstRow && cell->row <= m_extent.lastRow;
    return within ? std::make_shared<Cell>(m_table, *cell) : nullptr;
}

size_t Range::count(const std::string& className, ScriptCall&) {
    if (className == "row") return static_cast<size_t>(height());
    if (className == "column") return static_cast<size_t>(width());
    if (className == "cell") return size();
    cantGet("every " + className, *this);
}

std::optional<std::vector<Value>> Range::propertyOfElements(const std::string& className, const std::string& name,
                                                            ScriptCall& call) {
    if (className != "cell" || name != "value") return std::nullopt;
    requireManageable(size());
    std::vector<Value> values;
    values.reserve(size());
    for (auto& value : m_table->cells(m_extent, call))
        values.push_back(scriptValue(std::move(value)));
    return values;
}

bool Range::isSameAs(const Object& other) const {
    const auto* range = dynamic_cast<const Range*>(&other);
    return range && range->className() == className() && range->m_extent == m_extent &&
           range->m_table->isSameAs(*m_table);
}

void Range::clear(ScriptCall& call) {
    requireManageable(size());
    for (auto row = m_extent.firstRow; row <= m_extent.lastRow; ++row)
        for (auto column = m_extent.firstColumn; column <= m_extent.lastColumn; ++column)
            m_table->change({column, row, std::monostate{}}, call);
}

void Range::requireManageable(size_t number) const {
    if (number > most)
        fails(fmt::format("Can’t handle {} elements of {} at once, only {}.", number, description(), most));
}

} // namespace bridge::iworkapps
