#include "adapters/iworkapps/cell_name.h"
#include "tests/adapters/iworkapps/live_office.h"
#include "tests/adapters/libreoffice/flat_documents.h"

namespace bridge::iworkapps {

namespace {

using Texts = std::vector<std::string>;

class LiveTables : public LiveOffice {
protected:
    // As LibreOffice itself saves it.
    std::string planned(const office::SpreadsheetPlan& plan) {
        auto& office = place.office();
        putFile(folder / "flat.numbers", office::flatSpreadsheet(plan));
        ScriptCall call;
        const auto document = office.open(DocumentKind::spreadsheet, file("flat.numbers"), call);
        office.saveAs(document, file("plan.numbers"), call);
        office.close(document, call);
        return file("plan.numbers");
    }
    Texts read(const std::string& range, const std::string& sheet = "active sheet",
               const std::string& table = "table 1") {
        return texts(readRange(file("plan.numbers"), sheet, table, range));
    }
    void write(const std::vector<std::string>& cells, const std::string& sheet = "active sheet",
               const std::string& table = "table 1") {
        run(writeRange(file("plan.numbers"), sheet, table, cells));
    }
};

} // namespace

TEST_F(LiveTables, AreReadAsWhatWasWritten) {
    run(createNumbers(file("plan.numbers"), 3, 4,
                      {setCell("A1", "\"Name\""), setCell("B1", "\"12.5\""), setCell("C1", "true"),
                       setCell("D1", "missing value"), setCell("A2", "\"7\""), setCell("B2", "\"\""),
                       setCell("C2", "false"), setCell("D2", "\"2026-08-14\""), setCell("A3", "\"=B1*2\""),
                       setCell("B3", "\"1e21\""), setCell("C3", "\"-0.1\""), setCell("D3", "\"0.3\"")}));
    EXPECT_EQ(read("A1:D3"), (Texts{"Name", "12.5", "true", "absent", "7", "absent", "false", "2026-08-14", "25",
                                    "1e+21", "-0.1", "0.3"}));
    EXPECT_EQ(read("B1"), (Texts{"12.5"}));
    EXPECT_EQ(read("Y9:Z9"), (Texts{"absent", "absent"}));
}

TEST_F(LiveTables, KeepTenThousandCells) {
    Texts statements, expected;
    for (int row = 0; row < 100; ++row)
        for (int column = 0; column < 100; ++column) {
            const std::string text = column % 2 == 0 ? std::to_string(row * 100 + column) : "r" + std::to_string(row);
            expected.push_back(text);
            statements.push_back(setCell(cellName({column, row}), quoted(text)));
        }
    run(createNumbers(file("plan.numbers"), 100, 100, statements));
    EXPECT_EQ(read("A1:CV100"), expected);
    write(statements);
    EXPECT_EQ(read("A1:CV100"), expected);
}

TEST_F(LiveTables, KeepHostileTexts) {
    Texts statements;
    const auto hostile = hostileButStorable();
    for (size_t row = 0; row < hostile.size(); ++row)
        statements.push_back(setCell("A" + std::to_string(row + 1), quoted(hostile[row])));
    run(createNumbers(file("plan.numbers"), static_cast<int>(hostile.size()), 1, statements));
    auto expected = hostile;
    // Cells have no tabs, and an apostrophe in front says that the rest is text.
    for (auto& text : expected) {
        std::replace(text.begin(), text.end(), '\t', ' ');
        if (text.starts_with('\'')) text.erase(0, 1);
    }
    EXPECT_EQ(read("A1:A" + std::to_string(hostile.size())), expected);
}

TEST_F(LiveTables, AreFoundByTheirNamesAndThoseOfTheirSheets) {
    planned({{{"Shop", {{"Prices", {2, 2, 3, 3}}, {"Stock", {5, 0, 6, 1}}}}, {"Store", {{"Rest", {0, 0, 0, 1}}}}}, 1});
    write({setCell("A1", "\"Pear\""), setCell("B2", "\"2.5\"")}, "sheet \"Shop\"", "table \"Prices\"");
    write({setCell("A1", "\"few\"")}, "sheet \"Shop\"", "table \"Stock\"");
    write({setCell("A2", "\"last\"")}, "sheet \"Store\"", "table \"Rest\"");
    write({setCell("B1", "\"beside\"")}, "sheet \"Store\"");
    EXPECT_EQ(read("A1:B2", "sheet \"Shop\"", "table \"Prices\""), (Texts{"Pear", "absent", "absent", "2.5"}));
    EXPECT_EQ(read("C3:D4", "sheet \"Shop\""), (Texts{"Pear", "absent", "absent", "2.5"}));
    EXPECT_EQ(read("F1:G1", "sheet \"Shop\"", "table \"Table 1\""), (Texts{"few", "absent"}));
    EXPECT_EQ(read("A1:B2", "sheet \"Store\""), (Texts{"absent", "beside", "last", "absent"}));
}

TEST_F(LiveTables, HaveNoRoomBeyondTheirCorner) {
    const auto path = planned({{{"Shop", {{"Prices", {2, 2, 3, 3}}}}}});
    const auto before = getFile(path);
    EXPECT_EQ(refusal(readRange(path, "active sheet", "table \"Prices\"", "A1:C1")),
              (Refusal{-1728, "Can’t get range \"A1:C1\" of table \"Prices\" of sheet \"Shop\" of document "
                              "\"plan.numbers\"."}));
    EXPECT_EQ(refusal(writeRange(path, "active sheet", "table \"Prices\"", {setCell("A3", "\"x\"")})).number, -1728);
    EXPECT_EQ(refusal(readRange(path, "sheet \"Store\"", "table 1", "A1")).number, -1728);
    EXPECT_EQ(refusal(readRange(path, "active sheet", "table \"Costs\"", "A1")).number, -1728);
    EXPECT_EQ(getFile(path), before);
}

TEST_F(LiveTables, MayBeNamedLikeTheGrid) {
    planned({{{"Shop", {{"Table 1", {1, 1, 2, 2}}}}}});
    write({setCell("A1", "\"named\"")}, "active sheet", "table \"Table 1\"");
    EXPECT_EQ(read("B2"), (Texts{"named"}));
    EXPECT_EQ(read("A1", "sheet \"Shop\"", "table \"Table 1\""), (Texts{"named"}));
}

TEST_F(LiveTables, AreFoundUnderNamesThatAreHardToWrite) {
    const Texts names{"Say \"more\"",   "It's",   "\U0001F98A \u00e9", "\u05E9\u05DC\u05D5\u05DD", "a <&> b",
                      "\" & quit & \"", " blank "};
    office::SpreadsheetPlan plan;
    for (const auto& name : names)
        plan.sheets.push_back({name, {{name + "\\", {1, 1, 2, 2}}}});
    planned(plan);
    for (const auto& name : names) {
        const auto sheet = "sheet " + quoted(name), table = "table " + quoted(name + "\\");
        write({setCell("B2", quoted(name))}, sheet, table);
        EXPECT_EQ(read("B2", sheet, table), (Texts{name}));
        EXPECT_EQ(read("C3", sheet), (Texts{name}));
    }
}

TEST_F(LiveTables, LieOnTheSheetThatIsSeenFirst) {
    office::SpreadsheetPlan plan{{{"One"}, {"Two"}, {"Three"}}, 2};
    putFile(folder / "flat.numbers", office::flatSpreadsheet(plan));
    const auto source = "tell application \"Numbers\"\nset d to open POSIX file " + quoted(file("flat.numbers")) +
                        "\nname of active sheet of d\nend tell";
    EXPECT_EQ(text(source), "Three");
}

} // namespace bridge::iworkapps
