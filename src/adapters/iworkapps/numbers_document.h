#pragma once

#include "adapters/iworkapps/office_document.h"

#include <optional>
#include <vector>

namespace bridge::iworkapps {

// A table by its place in the document, from 0.
struct TablePlace {
    int32_t sheet = 0, table = 0;
    bool operator==(const TablePlace&) const = default;
};

// Scripts set cells one by one, ten thousand of them in a row. The changes of one table are kept back, in order, and
// sent at once before the office program is asked for anything else of the document. So an error that lies in such a
// change belongs to the statement that had it sent: only that one needs to know, and a script that ignores errors
// would otherwise wait ten thousand times to be told what it ignores. What can be seen without the program is refused
// at once: values that no cell can hold and cells beyond a named table's room. Changes that failed are gone, as nothing
// that changes is ever tried twice; and those of a document that is closed without saving never leave.
class NumbersDocument : public OfficeDocument {
public:
    using OfficeDocument::OfficeDocument;

    Value property(const std::string& name, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    ObjectPointer elementAt(const std::string& className, size_t position, ScriptCall& call) override;

    const std::vector<office::Sheet>& sheets(ScriptCall& call);
    // With the size that it has for this script: what Office tells of a grid and what the script has made of it, but at
    // least one cell. Emptying cells makes no table smaller.
    const office::Table& table(TablePlace place, ScriptCall& call);
    // A sheet's grid has room for whatever there are names for; Office tells where it ends.
    bool hasRoom(TablePlace place, const CellRange& range, ScriptCall& call);

    std::vector<CellValue> cells(TablePlace place, const CellRange& range, ScriptCall& call);
    void change(TablePlace place, CellChange change, ScriptCall& call);
    void resize(TablePlace place, int32_t rows, int32_t columns, ScriptCall& call);

private:
    void flush(ScriptCall& call) override;
    office::Table& knownTable(TablePlace place, ScriptCall& call);
    ObjectPointer sheet(int32_t index, ScriptCall& call);

    std::optional<std::vector<office::Sheet>> m_sheets; // once they were asked for
    std::optional<int32_t> m_activeSheet;
    TablePlace m_changing; // the table of the changes
    std::vector<CellChange> m_changes;
};

} // namespace bridge::iworkapps
