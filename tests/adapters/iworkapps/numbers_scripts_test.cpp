#include "adapters/iworkapps/cell_name.h"
#include "tests/adapters/iworkapps/scripted_office.h"

namespace bridge::iworkapps {

using office::FakeOffice;
using NumbersScripts = ScriptedOffice;
using Texts = std::vector<std::string>;

TEST_F(NumbersScripts, MakeASpreadsheet) {
    run(createNumbers("/new.numbers", 2, 3,
                      {setCell("A1", "\"Name\""), setCell("B1", "\"12.5\""), setCell("C1", "true"),
                       setCell("A2", "missing value"), setCell("B2", "\"\""), setCell("C2", "false")}));
    const auto& sheet = office.files.at("/new.numbers").sheets.front();
    EXPECT_EQ(sheet.cells,
              (FakeOffice::Grid{{{0, 0}, std::string("Name")}, {{0, 1}, 12.5}, {{0, 2}, true}, {{1, 2}, false}}));
    EXPECT_EQ(office.calls, (Texts{"create", "sheets", "resizeTable", "resizeTable", "setCells", "saveAs", "close"}));
}

TEST_F(NumbersScripts, SendTenThousandCellsAtOnce) {
    Texts statements;
    for (int row = 0; row < 100; ++row)
        for (int column = 0; column < 100; ++column)
            statements.push_back(setCell(cellName({column, row}), quoted(std::to_string(row * column))));
    run(createNumbers("/new.numbers", 100, 100, statements));
    EXPECT_EQ(office.count("setCells"), 1U);
    EXPECT_EQ(office.lastChanges(), 10'000U);
    EXPECT_EQ(office.files.at("/new.numbers").sheets.front().cells.at({99, 99}), CellValue(9801.0));

    EXPECT_EQ(run(readRange("/new.numbers", "active sheet", "table 1", "A1:CV100")).items.size(), 10'000U);
    EXPECT_EQ(office.count("cells"), 1U);

    run(writeRange("/new.numbers", "active sheet", "table 1", statements));
    EXPECT_EQ(office.count("setCells"), 2U);
    EXPECT_EQ(office.count("save"), 1U);
    EXPECT_LT(office.calls.size(), 20U);
}

TEST_F(NumbersScripts, ReadARange) {
    office.files.emplace("/p.numbers",
                         spreadsheet("Plan", {{{0, 0}, std::string("a")}, {{0, 1}, 2.0}, {{1, 1}, true}}));
    EXPECT_EQ(texts(readRange("/p.numbers", "active sheet", "table 1", "A1:B2")), (Texts{"a", "2", "absent", "true"}));
    EXPECT_EQ(texts(readRange("/p.numbers", "sheet \"Plan\"", "table \"Table 1\"", "B1")), (Texts{"2"}));
    EXPECT_EQ(office.count("cells"), 2U);
    EXPECT_EQ(office.openDocuments(), 0U);
}

TEST_F(NumbersScripts, WriteARangeInPlace) {
    office.files.emplace("/p.numbers", spreadsheet("Plan", {{{0, 0}, std::string("a")}}));
    run(writeRange("/p.numbers", "active sheet", "table 1", {setCell("B7", "\"x\""), setCell("C7", "\"4\"")}));
    EXPECT_EQ(office.files.at("/p.numbers").sheets.front().cells,
              (FakeOffice::Grid{{{0, 0}, std::string("a")}, {{6, 1}, std::string("x")}, {{6, 2}, 4.0}}));
    EXPECT_EQ(office.count("save"), 1U);
}

TEST_F(NumbersScripts, FindSheetsAndTablesOfEveryName) {
    for (const auto& hostile : hostileTexts) {
        const auto path = '/' + hostile + ".numbers";
        auto content = spreadsheet("Other", {});
        content.sheets.push_back({hostile, {}, {{hostile, {1, 1, 2, 2}}}});
        office.files.insert_or_assign(path, content);
        const auto sheet = "sheet " + quoted(hostile), table = "table " + quoted(hostile);
        run(writeRange(path, sheet, table, {setCell("B2", quoted("the " + hostile))}));
        EXPECT_EQ(office.files.at(path).sheets[1].cells.at({2, 2}), CellValue("the " + hostile));
        EXPECT_EQ(texts(readRange(path, sheet, table, "B2")), (Texts{"the " + hostile}));
    }
}

TEST_F(NumbersScripts, SayWhatIsNotThere) {
    office.files.emplace("/p.numbers", spreadsheet("Plan", {}));
    office.files.at("/p.numbers").sheets.front().named = {{"Prices", {0, 0, 1, 1}}};
    EXPECT_EQ(refusal(readRange("/p.numbers", "sheet \"X\"", "table 1", "A1")),
              (Refusal{-1728, "Can’t get sheet \"X\" of document \"p.numbers\"."}));
    EXPECT_EQ(refusal(readRange("/p.numbers", "active sheet", "table \"Y\"", "A1")),
              (Refusal{-1728, "Can’t get table \"Y\" of sheet \"Plan\" of document \"p.numbers\"."}));
    EXPECT_EQ(refusal(readRange("/p.numbers", "active sheet", "table \"Prices\"", "A1:C1")).message,
              "Can’t get range \"A1:C1\" of table \"Prices\" of sheet \"Plan\" of document \"p.numbers\".");
    EXPECT_EQ(refusal(writeRange("/p.numbers", "active sheet", "table \"Prices\"", {setCell("A3", "\"x\"")})).message,
              "Can’t get cell \"A3\" of table \"Prices\" of sheet \"Plan\" of document \"p.numbers\".");
    EXPECT_EQ(office.count("close"), 4U);
    EXPECT_EQ(office.count("save"), 0U);
}

TEST_F(NumbersScripts, LeaveTheFileAloneWhenSomethingFails) {
    const auto before = spreadsheet("Plan", {{{0, 0}, std::string("a")}});
    office.files.emplace("/p.numbers", before);
    for (const auto* name : {"setCells", "save", "close"}) {
        office.failAt(name, 1, ScriptError(-10000, "It is impossible."));
        const auto cells = std::string(name) == "close" ? Texts{} : Texts{setCell("A1", "\"b\"")};
        EXPECT_EQ(refusal(writeRange("/p.numbers", "active sheet", "table 1", cells)),
                  (Refusal{-10000, "It is impossible."}));
        EXPECT_EQ(office.calls.back(), "close") << name;
        EXPECT_EQ(office.files.at("/p.numbers").sheets.front().cells, before.sheets.front().cells) << name;
    }
}

TEST_F(NumbersScripts, ExportInEveryFormat) {
    office.files.emplace("/p.numbers", spreadsheet("Plan", {}));
    for (const auto& [type, format] : std::vector<std::pair<std::string, ExportFormat>>{
             {"PDF", ExportFormat::pdf}, {"Microsoft Excel", ExportFormat::xlsx}, {"CSV", ExportFormat::csv}}) {
        run(exportDocument("Numbers", "/p.numbers", "/out/" + type, type));
        EXPECT_EQ(office.exports.at("/out/" + type).format, format);
    }
}

TEST_F(NumbersScripts, SpeakAsPeopleDo) {
    EXPECT_EQ(texts("tell application \"Numbers\"\n"
                    "tell table 1 of active sheet of (make new document)\n"
                    "set value of every cell of range \"A1:C3\" to 7\n"
                    "set value of cell 2 of row 3 to \"x\"\n"
                    "set value of cell \"B1\" to value of cell \"A1\" + 1\n"
                    "clear range \"C1:C2\"\n"
                    "{row count, column count, value of cell 2 of row 3, value of cell \"B1\", "
                    "address of row of cell \"C2\", name of column 2, count rows, count cells of row 1, "
                    "name of cell 4, exists cell \"A0\", exists row 4}\n"
                    "end tell\n"
                    "end tell"),
              (Texts{"3", "3", "x", "8", "2", "B", "3", "3", "A2", "false", "false"}));
    EXPECT_EQ(office.count("setCells"), 2U);
    EXPECT_EQ(
        texts("tell application \"Numbers\"\n"
              "set d to make new document\n"
              "set value of cell \"B2\" of table 1 of sheet 1 of d to 5\n"
              "set v to value of cells of column 2 of table 1 of sheet 1 of d\n"
              "set w to value of cells of every row of table 1 of sheet 1 of d\n"
              "set n to name of every table of every sheet of d\n"
              "{item 2 of v, item 2 of item 2 of w, count w, item 1 of item 1 of n, name of every sheet of d as text}\n"
              "end tell"),
        (Texts{"5", "5", "2", "Table 1", "Sheet 1"}));
}

} // namespace bridge::iworkapps
