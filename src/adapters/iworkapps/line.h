#pragma once

#include "adapters/iworkapps/range.h"

namespace bridge::iworkapps {

// A row or a column, as long as the table is when it is asked for.
class Row : public Range {
public:
    Row(const std::shared_ptr<Table>& table, int32_t row, ScriptCall& call);

    std::string className() const override { return "row"; }
    Value property(const std::string& name, ScriptCall& call) override;

private:
    std::string name() const override { return std::to_string(extent().firstRow + 1); }
};

class Column : public Range {
public:
    Column(const std::shared_ptr<Table>& table, int32_t column, ScriptCall& call);

    std::string className() const override { return "column"; }
    Value property(const std::string& name, ScriptCall& call) override;

private:
    std::string name() const override { return columnName(extent().firstColumn); }
};

} // namespace bridge::iworkapps
