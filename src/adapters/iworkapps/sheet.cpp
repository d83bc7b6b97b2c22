#include "adapters/iworkapps/sheet.h"

#include "adapters/iworkapps/refusals.h"
#include "adapters/iworkapps/table.h"

namespace bridge::iworkapps {

std::string Sheet::description() const {
    return "sheet \"" + m_name + "\" of " + m_document->description();
}

Value Sheet::property(const std::string& name, ScriptCall&) {
    if (name == "name") return m_name;
    cantGet(name, *this);
}

void Sheet::setProperty(const std::string& name, const Value& value, ScriptCall&) {
    cantSet(name, *this, value);
}

std::vector<ObjectPointer> Sheet::elements(const std::string& className, ScriptCall& call) {
    if (className != "table") cantGet("every " + className, *this);
    std::vector<ObjectPointer> tables;
    for (const auto& table : m_document->sheets(call).at(static_cast<size_t>(m_index)).tables) {
        const TablePlace place{m_index, static_cast<int32_t>(tables.size())};
        tables.push_back(
            std::make_shared<Table>(m_document, place, "table \"" + table.name + "\" of " + description()));
    }
    return tables;
}

bool Sheet::isSameAs(const Object& other) const {
    const auto* sheet = dynamic_cast<const Sheet*>(&other);
    return sheet && sheet->m_document == m_document && sheet->m_index == m_index;
}

} // namespace bridge::iworkapps
