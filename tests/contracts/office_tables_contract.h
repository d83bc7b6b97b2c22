#pragma once

#include "tests/contracts/office_fixture.h"

#include <algorithm>

namespace bridge::office {

class OfficeTables : public OfficeContract {
protected:
    DocumentID planned(const SpreadsheetPlan& plan) {
        site->putSpreadsheet(folder.file("plan.numbers"), plan);
        return office().open(DocumentKind::spreadsheet, folder.file("plan.numbers"), call);
    }
    // Two sheets: one with "Prices" at C3:D5 and "Stock" at F1:G2, another with "Rest" at A1:A2.
    DocumentID shop() {
        return planned(
            {{{"Shop", {{"Prices", {2, 2, 3, 4}}, {"Stock", {5, 0, 6, 1}}}}, {"Store", {{"Rest", {0, 0, 0, 1}}}}}});
    }
    // The position of a table by its name; -1 when there is none.
    int32_t table(DocumentID document, int32_t sheet, const std::string& name) {
        const auto tables = office().sheets(document, call).at(static_cast<size_t>(sheet)).tables;
        const auto found =
            std::find_if(tables.begin(), tables.end(), [&](const Table& table) { return table.name == name; });
        return found == tables.end() ? -1 : static_cast<int32_t>(found - tables.begin());
    }
    Table facts(DocumentID document, int32_t sheet, int32_t table) {
        return office().sheets(document, call).at(static_cast<size_t>(sheet)).tables.at(static_cast<size_t>(table));
    }
    std::vector<std::string> tableNames(DocumentID document, int32_t sheet) {
        const auto tables = office().sheets(document, call).at(static_cast<size_t>(sheet)).tables;
        std::vector<std::string> names;
        for (const auto& table : tables)
            names.push_back(table.name);
        return names;
    }
    std::optional<int> setError(DocumentID document, int32_t table, const std::vector<CellChange>& changes) {
        return errorOf([&] { office().setCells(document, 0, table, changes, call); });
    }
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(OfficeTables);

TEST_P(OfficeTables, LieBehindTheGridOfTheirSheet) {
    const auto document = shop();
    EXPECT_THAT(tableNames(document, 0), testing::UnorderedElementsAre("Table 1", "Prices", "Stock"));
    EXPECT_EQ(tableNames(document, 0).front(), "Table 1");
    EXPECT_THAT(tableNames(document, 1), testing::ElementsAre("Table 1", "Rest"));
    const auto prices = facts(document, 0, table(document, 0, "Prices"));
    EXPECT_EQ(prices.rows, 3);
    EXPECT_EQ(prices.columns, 2);
}

TEST_P(OfficeTables, CountTheirCellsFromTheirCorner) {
    const auto document = shop();
    const auto prices = table(document, 0, "Prices");
    office().setCells(document, 0, prices, {{0, 0, "Pear"}, {1, 2, 2.5}}, call);
    EXPECT_EQ(cell(document, 2, 2), CellValue("Pear"));
    EXPECT_EQ(cell(document, 3, 4), CellValue(2.5));
    EXPECT_EQ(office().cells(document, 0, prices, {0, 0, 1, 2}, call),
              (std::vector<CellValue>{"Pear", {}, {}, {}, {}, 2.5}));
    office().setCells(document, 0, 0, {{2, 3, "Fig"}, {3, 3, 4.0}}, call);
    EXPECT_EQ(office().cells(document, 0, prices, {0, 1, 1, 1}, call), (std::vector<CellValue>{"Fig", 4.0}));
    EXPECT_EQ(office().cells(document, 0, table(document, 0, "Stock"), {0, 0, 1, 1}, call), std::vector<CellValue>(4));
    EXPECT_EQ(office().cells(document, 1, 0, {0, 0, 5, 5}, call), std::vector<CellValue>(36));
}

TEST_P(OfficeTables, HaveNoCellsBeyondTheirRoom) {
    const auto document = shop();
    const auto prices = table(document, 0, "Prices");
    const auto read = [&](CellRange range) {
        return errorOf([&] { office().cells(document, 0, prices, range, call); });
    };
    EXPECT_EQ(read({0, 0, 1, 2}), std::nullopt);
    EXPECT_EQ(read({0, 0, 2, 0}), ScriptError::noSuchObject);
    EXPECT_EQ(read({0, 3, 0, 3}), ScriptError::noSuchObject);
    EXPECT_EQ(read({-1, 0, 0, 0}), ScriptError::noSuchObject);
    EXPECT_EQ(read({0, -1, 0, 0}), ScriptError::noSuchObject);
    EXPECT_EQ(setError(document, prices, {{0, 0, 1.0}, {2, 0, 1.0}}), ScriptError::noSuchObject);
    EXPECT_EQ(setError(document, prices, {{0, 0, 1.0}, {0, 3, 1.0}}), ScriptError::noSuchObject);
    EXPECT_EQ(setError(document, 3, {{0, 0, 1.0}}), ScriptError::noSuchObject);
    EXPECT_EQ(setError(document, -1, {{0, 0, 1.0}}), ScriptError::noSuchObject);
    EXPECT_EQ(office().cells(document, 0, 0, {0, 0, 9, 9}, call), std::vector<CellValue>(100));
}

TEST_P(OfficeTables, BecomeSmallerAndLoseWhatIsBeyond) {
    const auto document = shop();
    const auto prices = table(document, 0, "Prices");
    std::vector<CellChange> changes;
    for (int32_t row = 0; row < 7; ++row)
        for (int32_t column = 0; column < 6; ++column)
            changes.push_back({column, row, row * 10.0 + column});
    office().setCells(document, 0, 0, changes, call);
    office().resizeTable(document, 0, prices, 2, 1, call);
    EXPECT_EQ(facts(document, 0, prices).rows, 2);
    EXPECT_EQ(facts(document, 0, prices).columns, 1);
    for (const auto& change : changes) {
        const bool wasInTable = change.column >= 2 && change.column <= 3 && change.row >= 2 && change.row <= 4;
        const bool isInTable = change.column == 2 && (change.row == 2 || change.row == 3);
        EXPECT_EQ(cell(document, change.column, change.row), wasInTable && !isInTable ? CellValue() : change.value)
            << change.column << ' ' << change.row;
    }
    EXPECT_EQ(setError(document, prices, {{1, 0, 1.0}}), ScriptError::noSuchObject);
}

TEST_P(OfficeTables, BecomeLargerAndTakeWhatIsThere) {
    const auto document = shop();
    const auto prices = table(document, 0, "Prices");
    office().setCells(document, 0, 0, {{4, 6, "beside"}}, call);
    office().resizeTable(document, 0, prices, 5, 3, call);
    EXPECT_EQ(office().cells(document, 0, prices, {2, 4, 2, 4}, call), std::vector<CellValue>{"beside"});
    office().setCells(document, 0, prices, {{1, 4, "new"}}, call);
    const auto again = reopened(document, DocumentKind::spreadsheet, "again.numbers");
    EXPECT_EQ(facts(again, 0, table(again, 0, "Prices")).rows, 5);
    EXPECT_EQ(facts(again, 0, table(again, 0, "Prices")).columns, 3);
    EXPECT_EQ(office().cells(again, 0, table(again, 0, "Prices"), {1, 4, 2, 4}, call),
              (std::vector<CellValue>{"new", "beside"}));
    EXPECT_EQ(facts(again, 0, table(again, 0, "Stock")).rows, 2);
}

TEST_P(OfficeTables, CantBecomeLargerThanTheirSheet) {
    const auto document = shop();
    const auto prices = table(document, 0, "Prices");
    for (const auto& [rows, columns] : std::vector<std::pair<int32_t, int32_t>>{
             {2'000'000, 1}, {1, 2'000'000}, {0, 1}, {1, 0}, {-1, 1}, {2'147'483'647, 2'147'483'647}})
        EXPECT_EQ(errorOf([&, rows = rows, columns = columns] {
                      office().resizeTable(document, 0, prices, rows, columns, call);
                  }),
                  ScriptError::noSuchObject)
            << rows << ' ' << columns;
    EXPECT_EQ(facts(document, 0, prices).rows, 3);
    EXPECT_EQ(facts(document, 0, prices).columns, 2);
}

TEST_P(OfficeTables, TakeTheNameOfTheGridWhenTheyBearIt) {
    const auto document = planned({{{"Shop", {{"Table 1", {1, 1, 2, 2}}}}}});
    const auto names = tableNames(document, 0);
    ASSERT_EQ(names.size(), 2u);
    EXPECT_NE(names[0], "Table 1");
    EXPECT_EQ(names[1], "Table 1");
    office().setCells(document, 0, 1, {{0, 0, "corner"}}, call);
    EXPECT_EQ(cell(document, 1, 1), CellValue("corner"));
}

TEST_P(OfficeTables, MayHaveNamesThatAreHardToWrite) {
    const std::vector<std::string> names{
        "Say \"more\"", "It's", "\U0001F98A \u00e9", "\u05E9\u05DC\u05D5\u05DD", "a <&> b", "$A$1; {1}", " blank "};
    SpreadsheetPlan plan;
    for (const auto& name : names)
        plan.sheets.push_back({name, {{name + " table", {1, 1, 2, 2}}}});
    const auto document = planned(plan);
    for (size_t index = 0; index < names.size(); ++index) {
        const auto sheet = static_cast<int32_t>(index);
        EXPECT_EQ(office().sheets(document, call)[index].name, names[index]);
        EXPECT_EQ(tableNames(document, sheet), (std::vector<std::string>{"Table 1", names[index] + " table"}));
        office().setCells(document, sheet, 1, {{1, 1, names[index]}}, call);
    }
    const auto again = reopened(document, DocumentKind::spreadsheet, "again.numbers");
    for (size_t index = 0; index < names.size(); ++index) {
        const auto sheet = static_cast<int32_t>(index);
        EXPECT_EQ(office().sheets(again, call)[index].name, names[index]);
        EXPECT_EQ(tableNames(again, sheet), (std::vector<std::string>{"Table 1", names[index] + " table"}));
        EXPECT_EQ(office().cells(again, sheet, 1, {1, 1, 1, 1}, call), std::vector<CellValue>{names[index]});
    }
}

TEST_P(OfficeTables, LieOnTheSheetThatWasActiveWhenItWasSaved) {
    const auto document = planned({{{"One"}, {"Two"}, {"Three"}}, 2});
    EXPECT_EQ(office().activeSheet(document, call), 2);
}

} // namespace bridge::office
