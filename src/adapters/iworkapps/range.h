#pragma once

#include "adapters/iworkapps/table.h"

namespace bridge::iworkapps {

// Some rectangle of a table's cells. Its rows and columns are those of the table that it touches.
class Range : public Object {
public:
    Range(std::shared_ptr<Table> table, CellRange extent) : m_table(std::move(table)), m_extent(extent) {}

    std::string className() const override { return "range"; }
    std::string description() const override;
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    ObjectPointer elementAt(const std::string& className, size_t position, ScriptCall& call) override;
    ObjectPointer elementNamed(const std::string& className, const std::string& name, ScriptCall& call) override;
    size_t count(const std::string& className, ScriptCall& call) override;
    // The values of its cells come in one piece.
    std::optional<std::vector<Value>> propertyOfElements(const std::string& className, const std::string& name,
                                                         ScriptCall& call) override;
    bool isSameAs(const Object& other) const override;

    // Empties its cells.
    void clear(ScriptCall& call);

protected:
    const std::shared_ptr<Table>& table() const { return m_table; }
    const CellRange& extent() const { return m_extent; }
    virtual std::string name() const;

private:
    int32_t width() const { return m_extent.lastColumn - m_extent.firstColumn + 1; }
    int32_t height() const { return m_extent.lastRow - m_extent.firstRow + 1; }
    size_t size() const { return static_cast<size_t>(width()) * static_cast<size_t>(height()); }
    // Throws when so many elements are more than can be handled together.
    void requireManageable(size_t number) const;

    std::shared_ptr<Table> m_table;
    CellRange m_extent;
};

} // namespace bridge::iworkapps
