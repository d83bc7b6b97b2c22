#include "adapters/iworkapps/line.h"

namespace bridge::iworkapps {

Row::Row(const std::shared_ptr<Table>& table, int32_t row, ScriptCall& call)
    : Range(table, {0, row, table->extent(call).lastColumn, row}) {}

Value Row::property(const std::string& name, ScriptCall& call) {
    if (name == "address") return static_cast<int64_t>(extent().firstRow + 1);
    return Range::property(name, call);
}

Column::Column(const std::shared_ptr<Table>& table, int32_t column, ScriptCall& call)
    : Range(table, {column, 0, column, table->extent(call).lastRow}) {}

Value Column::property(const std::string& name, ScriptCall& call) {
    if (name == "address") return static_cast<int64_t>(extent().firstColumn + 1);
    return Range::property(name, call);
}

} // namespace bridge::iworkapps
