#include "tests/bridges/iwork/iwork_bridge_test.h"

namespace bridge {
namespace {

using Cells = std::vector<std::vector<IWorkCellValue>>;

class NumbersSpreadsheets : public IWorkBridgeTest {
protected:
    using Name = std::optional<std::string>;

    Task<IWorkOperationResult> create(const std::string& path, Cells values) {
        return bridge.createNumbersSpreadsheet({rootID, path, std::move(values)});
    }
    Task<NumbersRangeContents> read(const std::string& range, Name sheet = {}, Name table = {}) {
        return bridge.readNumbersRange({rootID, "Plan.numbers", sheet, table, range});
    }
    Task<IWorkOperationResult> write(const std::string& range, Cells values, Name sheet = {}, Name table = {}) {
        return bridge.writeNumbersRange({rootID, "Plan.numbers", sheet, table, range, std::move(values)});
    }
    static Cells gridOf(size_t rows, size_t columns) {
        return Cells(rows, std::vector<IWorkCellValue>(columns, IWorkCellValue{"x"}));
    }
    static TypedAppleScriptValue manyCells(size_t count) { return scriptList(std::vector(count, scriptText("x"))); }
};

TEST_F(NumbersSpreadsheets, AreMadeByThisScript) {
    EXPECT_EQ(run(create("New.numbers", {{{"a \"b\""}, {2.5}}, {{true}, {nullptr}}, {{-3.0}, {false}}})),
              (IWorkOperationResult{"Numbers", "New.numbers", "create"}));
    EXPECT_EQ(script(), timed(R"(tell application "Numbers"
    set newDocument to missing value
    try
        set newDocument to make new document with properties {document template:first template}
        tell table 1 of sheet 1 of newDocument
            set row count to 3
            set column count to 2
set value of cell "A1" to "a \"b\""
set value of cell "B1" to "2.5"
set value of cell "A2" to true
set value of cell "B2" to missing value
set value of cell "A3" to "-3"
set value of cell "B3" to false
        end tell
        save newDocument in POSIX file )" +
                              quoted("New.numbers") + R"(
        close newDocument saving yes
    on error errorMessage number errorNumber
        if newDocument is not missing value then close newDocument saving no
        error errorMessage number errorNumber
    end try
end tell)"));
}

TEST_F(NumbersSpreadsheets, AreReadByThisScript) {
    engine.willAnswer(scriptList({scriptText("a"), {}, scriptText("2.5"), scriptText("true")}));
    EXPECT_EQ(run(read(" b2:c3\n")), (NumbersRangeContents{"B2:C3", {"a", "", "2.5", "true"}}));
    EXPECT_EQ(script(), timed(R"(tell application "Numbers"
    set targetDocument to missing value
    try
        set targetDocument to open POSIX file )" +
                              quoted("Plan.numbers") + R"(
        tell targetDocument
            set targetSheet to active sheet
            tell targetSheet
                set targetTable to table 1
                tell targetTable
                    set cellValues to value of cells of range "B2:C3"
                end tell
            end tell
        end tell
        close targetDocument saving no
        return cellValues
    on error errorMessage number errorNumber
        if targetDocument is not missing value then close targetDocument saving no
        error errorMessage number errorNumber
    end try
end tell)"));
}

TEST_F(NumbersSpreadsheets, AreWrittenByThisScript) {
    EXPECT_EQ(run(write("b2:c3", {{{"a"}, {1.0}}, {{nullptr}, {true}}})),
              (IWorkOperationResult{"Numbers", "Plan.numbers", "write_range"}));
    EXPECT_EQ(script(), timed(R"(tell application "Numbers"
    set targetDocument to missing value
    try
        set targetDocument to open POSIX file )" +
                              quoted("Plan.numbers") + R"(
        tell targetDocument
            tell active sheet
                tell table 1
                    set value of cell "B2" to "a"
set value of cell "C2" to "1"
set value of cell "B3" to missing value
set value of cell "C3" to true
                end tell
            end tell
        end tell
        save targetDocument
        close targetDocument saving yes
    on error errorMessage number errorNumber
        if targetDocument is not missing value then close targetDocument saving no
        error errorMessage number errorNumber
    end try
end tell)"));
}

TEST_F(NumbersSpreadsheets, AreReadAndWrittenInTheSheetAndTableThatAreNamed) {
    run(read("A1", "My \"sheet\"", "Table\n2"));
    EXPECT_THAT(engine.sources()[0], testing::HasSubstr(R"(
            set targetSheet to sheet "My \"sheet\""
            tell targetSheet
                set targetTable to table "Table\n2"
                tell targetTable
)"));
    run(write("A1", {{{1.0}}}, "My \"sheet\"", "Table\n2"));
    EXPECT_THAT(engine.sources()[1], testing::HasSubstr(R"(
            tell sheet "My \"sheet\""
                tell table "Table\n2"
                    set value of cell "A1" to "1"
)"));
    run(read("A1", std::nullopt, ""));
    EXPECT_THAT(engine.sources()[2], testing::HasSubstr("set targetSheet to active sheet\n"));
    EXPECT_THAT(engine.sources()[2], testing::HasSubstr("set targetTable to table \"\"\n"));
}

TEST_F(NumbersSpreadsheets, AreReadRowByRowHoweverTheApplicationGroupsThem) {
    const auto row = [](const char* one, const char* other) {
        return scriptList({scriptText(one), scriptText(other)});
    };
    engine.willAnswer(scriptList({row("a", "b"), row("c", "d")}));
    EXPECT_EQ(run(read("A1:B2")).values, (std::vector<std::string>{"a", "b", "c", "d"}));
    engine.willAnswer(scriptText("alone"));
    EXPECT_EQ(run(read("a1")), (NumbersRangeContents{"A1", {"alone"}}));
}

TEST_F(NumbersSpreadsheets, AreReadUpToTenThousandCells) {
    engine.willAnswer(manyCells(10'000));
    EXPECT_EQ(run(read("A1:CV100")).values.size(), 10'000u);
    engine.willAnswer(manyCells(10'001));
    EXPECT_EQ(failureOf(read("A1:ZZZ999999")), "Operation failed: Numbers range exceeds the 10,000-cell read limit.");
    EXPECT_EQ(engine.sources().size(), 2u);
}

TEST_F(NumbersSpreadsheets, RefuseABadRangeBeforeAnyScript) {
    const auto wrongNotation = malformed + "Numbers range must use A1 notation, for example A1:C10.";
    const auto wrongCorners = malformed + "Numbers range must run from its top-left cell to its bottom-right cell.";
    for (const auto* range : {"A0", "A01", "AAAA1"}) {
        EXPECT_EQ(refusalOf(read(range)), wrongNotation);
        EXPECT_EQ(refusalOf(write(range, {})), wrongNotation);
    }
    EXPECT_EQ(refusalOf(read("C3:B2")), wrongCorners);
    EXPECT_EQ(refusalOf(write("C3:B2", {})), wrongCorners);
}

TEST_F(NumbersSpreadsheets, RefuseABadGridBeforeAnyScript) {
    for (const auto& [grid, message] : std::initializer_list<std::pair<Cells, const char*>>{
             {{}, "Numbers values must contain at least one non-empty row."},
             {{{}}, "Numbers values must contain at least one non-empty row."},
             {{{{1.0}, {"x"}}, {{true}}}, "Numbers values must form a rectangular grid."},
             {gridOf(100, 101), "Numbers operations support at most 10,000 cells."}}) {
        EXPECT_EQ(refusalOf(create("New.numbers", grid)), malformed + message);
        EXPECT_EQ(refusalOf(write("A1:CW100", grid)), malformed + message);
    }
    EXPECT_FALSE(std::filesystem::exists(root / "New.numbers"));
}

TEST_F(NumbersSpreadsheets, TakeTenThousandCells) {
    EXPECT_EQ(failureOf(create("New.numbers", gridOf(100, 100))), "");
    EXPECT_EQ(failureOf(write("A1:CV100", gridOf(100, 100))), "");
    EXPECT_THAT(engine.sources()[1], testing::HasSubstr("set value of cell \"CV100\" to \"x\"\n   "));
}

TEST_F(NumbersSpreadsheets, TakeValuesOfTheSizeOfTheRangeOnly) {
    const auto mustMatch = [](const char* size) {
        return malformed + "Numbers values must match the requested " + size + " range.";
    };
    EXPECT_EQ(refusalOf(write("A1:B3", gridOf(2, 3))), mustMatch("3x2"));
    EXPECT_EQ(refusalOf(write("A1:B3", gridOf(3, 1))), mustMatch("3x2"));
    EXPECT_EQ(refusalOf(write("A1:B3", gridOf(2, 2))), mustMatch("3x2"));
    EXPECT_EQ(refusalOf(write("A1", gridOf(1, 2))), mustMatch("1x1"));
    EXPECT_EQ(refusalOf(write("A1:ZZZ999999", gridOf(1, 1))), mustMatch("999999x18278"));
    EXPECT_EQ(failureOf(write("A1:B3", gridOf(3, 2))), "");
    EXPECT_EQ(failureOf(write("A1", gridOf(1, 1))), "");
}

TEST_F(NumbersSpreadsheets, LookAtTheRangeBeforeTheGridAndAtTheGridBeforeItsSize) {
    EXPECT_THAT(refusalOf(write("A0", {})), testing::HasSubstr("A1 notation"));
    EXPECT_THAT(refusalOf(write("A1:B2", {{{1.0}, {2.0}}, {{3.0}}, {{4.0}}})), testing::HasSubstr("rectangular"));
}

} // namespace
} // namespace bridge
