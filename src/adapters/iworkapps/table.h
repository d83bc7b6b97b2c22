#pragma once

#include "adapters/iworkapps/cell_name.h"
#include "adapters/iworkapps/numbers_document.h"

namespace bridge::iworkapps {

class Range;

// Rows, columns and cells by position are those within its size; cells and ranges by name those that it has room for.
class Table : public Object, public std::enable_shared_from_this<Table> {
public:
    Table(std::shared_ptr<NumbersDocument> document, TablePlace place, std::string description)
        : m_document(std::move(document)), m_place(place), m_description(std::move(description)) {}

    std::string className() const override { return "table"; }
    std::string description() const override { return m_description; }
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    ObjectPointer elementAt(const std::string& className, size_t position, ScriptCall& call) override;
    ObjectPointer elementNamed(const std::string& className, const std::string& name, ScriptCall& call) override;
    size_t count(const std::string& className, ScriptCall& call) override;
    std::optional<std::vector<Value>> propertyOfElements(const std::string& className, const std::string& name,
                                                         ScriptCall& call) override;
    bool isSameAs(const Object& other) const override;

    // All of it.
    CellRange extent(ScriptCall& call);
    std::vector<CellValue> cells(const CellRange& range, ScriptCall& call);
    void change(CellChange change, ScriptCall& call);

private:
    std::shared_ptr<Range> whole(ScriptCall& call);

    std::shared_ptr<NumbersDocument> m_document;
    TablePlace m_place;
    std::string m_description;
};

} // namespace bridge::iworkapps
