#include "bridges/iwork/numbers_scripts.h"

#include "bridges/iwork/script_endings.h"
#include "bridges/scripting/script_literal.h"

namespace bridge {

namespace {

std::string selector(std::string_view kind, const std::optional<std::string>& name, std::string_view otherwise) {
    if (!name) return std::string(otherwise);
    return std::string(kind) + " " + scriptLiteral(*name);
}

std::string sheetOf(const TableChoice& choice) {
    return selector("sheet", choice.sheet, "active sheet");
}

std::string tableOf(const TableChoice& choice) {
    return selector("table", choice.table, "table 1");
}

std::string openingScript(const std::string& location) {
    return "tell application \"Numbers\"\n"
           "    set targetDocument to missing value\n"
           "    try\n"
           "        set targetDocument to open POSIX file " +
           scriptLiteral(location) + "\n        tell targetDocument\n";
}

} // namespace

std::string createNumbersScript(const CellGrid& grid, const std::string& location) {
    std::string script = "tell application \"Numbers\"\n"
                         "    set newDocument to missing value\n"
                         "    try\n"
                         "        set newDocument to make new document with properties {document template:first "
                         "template}\n"
                         "        tell table 1 of sheet 1 of newDocument\n"
                         "            set row count to " +
                         std::to_string(grid.size()) + "\n            set column count to " +
                         std::to_string(grid.front().size()) + "\n";
    appendCellStatements(script, grid, 1, 1);
    script += "\n        end tell\n        save newDocument in POSIX file ";
    appendScriptLiteral(script, location);
    script += "\n        close newDocument saving yes";
    return script.append(newDocumentEnding);
}

std::string readNumbersScript(const TableChoice& choice, const NumbersRange& range, const std::string& location) {
    auto script = openingScript(location) + "            set targetSheet to " + sheetOf(choice) +
                  "\n            tell targetSheet\n                set targetTable to " + tableOf(choice) +
                  "\n                tell targetTable\n                    set cellValues to value of cells of range " +
                  scriptLiteral(range.text) +
                  "\n                end tell\n"
                  "            end tell\n"
                  "        end tell\n"
                  "        close targetDocument saving no\n"
                  "        return cellValues";
    return script.append(targetDocumentEnding);
}

std::string writeNumbersScript(const TableChoice& choice, const NumbersRange& range, const CellGrid& grid,
                               const std::string& location) {
    auto script = openingScript(location) + "            tell " + sheetOf(choice) + "\n                tell " +
                  tableOf(choice) + "\n                    ";
    appendCellStatements(script, grid, range.firstColumn, range.firstRow);
    script += "\n                end tell\n"
              "            end tell\n"
              "        end tell\n"
              "        save targetDocument\n"
              "        close targetDocument saving yes";
    return script.append(targetDocumentEnding);
}

} // namespace bridge
