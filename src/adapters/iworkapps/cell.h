#pragma once

#include "adapters/iworkapps/range.h"

namespace bridge::iworkapps {

// A single cell, and as such a range.
class Cell : public Range {
public:
    Cell(std::shared_ptr<Table> table, CellPosition position)
        : Range(std::move(table), {position.column, position.row, position.column, position.row}) {}

    std::string className() const override { return "cell"; }
    Value property(const std::string& name, ScriptCall& call) override;
    // Its value; what that does is done when the document needs it.
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;

private:
    std::string name() const override { return cellName({extent().firstColumn, extent().firstRow}); }
};

} // namespace bridge::iworkapps
