#include "adapters/iworkapps/cell.h"

#include "adapters/iworkapps/cell_value.h"
#include "adapters/iworkapps/line.h"
#include "adapters/iworkapps/refusals.h"

namespace bridge::iworkapps {

Value Cell::property(const std::string& name, ScriptCall& call) {
    if (name == "value") {
        auto values = table()->cells(extent(), call);
        if (values.empty()) cantGet(name, *this);
        return scriptValue(std::move(values.front()));
    }
    if (name == "row") return std::make_shared<Row>(table(), extent().firstRow, call);
    if (name == "column") return std::make_shared<Column>(table(), extent().firstColumn, call);
    return Range::property(name, call);
}

void Cell::setProperty(const std::string& name, const Value& value, ScriptCall& call) {
    if (name != "value") return Range::setProperty(name, value, call);
    table()->change({extent().firstColumn, extent().firstRow, cellValue(value)}, call);
}

} // namespace bridge::iworkapps
