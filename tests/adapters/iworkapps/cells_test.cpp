#include "adapters/iworkapps/cell_name.h"
#include "adapters/iworkapps/numbers_application.h"
#include "tests/adapters/iworkapps/office_script.h"

namespace bridge::iworkapps {

using office::FakeOffice;
using Values = std::vector<Value>;

class Cells : public OfficeScript<NumbersApplication> {
protected:
    Cells() {
        auto plan = FakeOffice::emptyContent(DocumentKind::spreadsheet);
        plan.sheets.front().cells = {{{0, 0}, std::string("a")}, {{0, 1}, 1.5}, {{1, 1}, true}};
        plan.sheets.front().named = {{"Prices", {0, 0, 1, 1}}};
        office.files.emplace("/plan.numbers", plan);
        document = open("/plan.numbers");
        table = at(at(document, "sheet", 1), "table", 1);
    }

    ObjectPointer cell(const std::string& name) { return named(table, "cell", name); }
    std::optional<Values> values(const ObjectPointer& container) {
        return container->propertyOfElements("cell", "value", call);
    }
    const FakeOffice::Grid& saved() { return office.files.at("/plan.numbers").sheets.front().cells; }

    const Value a = std::string("a"), nothing = MissingValue{};
    ObjectPointer document, table;
};

TEST_F(Cells, HaveAValue) {
    EXPECT_EQ(get(cell("A1"), "value"), a);
    EXPECT_EQ(get(cell("b1"), "value"), Value(1.5));
    EXPECT_EQ(get(cell("B2"), "value"), Value(true));
    EXPECT_EQ(get(cell("Q17"), "value"), nothing);
}

TEST_F(Cells, KnowWhereTheyAre) {
    const auto cell = this->cell("B2");
    EXPECT_EQ(get(cell, "name"), Value(std::string("B2")));
    EXPECT_EQ(get(getObject(cell, "row"), "address"), Value(int64_t{2}));
    EXPECT_EQ(get(getObject(cell, "column"), "name"), Value(std::string("B")));
    EXPECT_EQ(cell->description(),
              "cell \"B2\" of table \"Table 1\" of sheet \"Sheet 1\" of document \"plan.numbers\"");
}

TEST_F(Cells, AreCountedRowByRow) {
    EXPECT_EQ(get(at(table, "cell", 2), "name"), Value(std::string("B1")));
    EXPECT_EQ(get(at(table, "cell", 3), "name"), Value(std::string("A2")));
    EXPECT_EQ(at(table, "cell", 5), nullptr);
    EXPECT_EQ(at(table, "cell", 0), nullptr);
}

TEST_F(Cells, AreReadTogether) {
    EXPECT_EQ(values(named(table, "range", "A1:C2")), (Values{a, 1.5, nothing, nothing, true, nothing}));
    EXPECT_EQ(values(named(table, "range", "b1")), (Values{1.5}));
    EXPECT_EQ(values(at(table, "row", 2)), (Values{nothing, true}));
    EXPECT_EQ(values(named(table, "column", "B")), (Values{1.5, true}));
    EXPECT_EQ(values(table), (Values{a, 1.5, nothing, true}));
    EXPECT_EQ(office.count("cells"), 5U);
}

TEST_F(Cells, OfRowsAndColumnsAreFound) {
    EXPECT_EQ(get(at(named(table, "row", "2"), "cell", 2), "name"), Value(std::string("B2")));
    EXPECT_EQ(get(named(at(table, "column", 2), "cell", "B1"), "value"), Value(1.5));
    EXPECT_EQ(named(at(table, "column", 2), "cell", "A1"), nullptr);
    EXPECT_EQ(named(table, "column", "C"), nullptr);
    EXPECT_EQ(at(table, "row", 3), nullptr);
    EXPECT_EQ(named(table, "row", "first"), nullptr);
}

TEST_F(Cells, WithoutANameDoNotExist) {
    for (const auto* name : {"", "A0", "AAAA1", "A1:B2", "Total"})
        EXPECT_EQ(cell(name), nullptr) << name;
    EXPECT_EQ(named(table, "range", "A1:"), nullptr);
}

TEST_F(Cells, AreSetTogetherInTheirOrder) {
    for (int row = 0; row < 100; ++row)
        for (int column = 0; column < 100; ++column)
            set(cell(cellName({column, row})), "value", static_cast<int64_t>(row * 100 + column));
    set(cell("A1"), "value", std::string("last"));
    EXPECT_EQ(office.count("setCells"), 0U);

    perform("save", document);
    perform("close", document, {{"saving", yes()}});
    EXPECT_EQ(office.count("setCells"), 1U);
    EXPECT_EQ(office.lastChanges(), 10'001U);
    EXPECT_EQ(office.count("save"), 1U);
    EXPECT_EQ(office.count("sheets"), 1U);
    EXPECT_EQ(saved().size(), 10'000U);
    EXPECT_EQ(saved().at({0, 0}), CellValue(std::string("last")));
    EXPECT_EQ(saved().at({99, 99}), CellValue(9999.0));
}

TEST_F(Cells, AreThereForWhoeverReadsThem) {
    set(cell("A1"), "value", std::string("12.5"));
    EXPECT_EQ(get(cell("A1"), "value"), Value(12.5));
    set(cell("A1"), "value", nothing);
    EXPECT_EQ(values(named(table, "range", "A1:B1")), (Values{nothing, 1.5}));
    set(cell("C1"), "value", false);
    perform("export", document, {{"to", File{"/p.csv"}}, {"as", Constant{"csv"}}});
    EXPECT_EQ(office.exports.at("/p.csv").content.sheets.front().cells.at({0, 2}), CellValue(false));
    set(cell("D1"), "value", false);
    perform("close", document, {{"saving", yes()}});
    EXPECT_TRUE(saved().contains({0, 3}));
}

TEST_F(Cells, OfAnotherTableAreSetAfterThose) {
    const auto prices = at(at(document, "sheet", 1), "table", 2);
    set(cell("A1"), "value", std::string("x"));
    set(cell("A2"), "value", std::string("x"));
    set(named(prices, "cell", "A1"), "value", std::string("y"));
    EXPECT_EQ(office.count("setCells"), 1U);
    set(cell("A2"), "value", std::string("z"));
    perform("save", document);
    EXPECT_EQ(saved().at({0, 0}), CellValue(std::string("y")));
    EXPECT_EQ(saved().at({1, 0}), CellValue(std::string("z")));
}

TEST_F(Cells, OfADocumentThatIsDiscardedNeverLeave) {
    set(cell("A1"), "value", std::string("x"));
    EXPECT_EQ(get(document, "modified"), Value(true));
    perform("close", document, {{"saving", no()}});
    EXPECT_EQ(office.count("setCells"), 0U);
    set(named(at(at(open("/plan.numbers"), "sheet", 1), "table", 1), "cell", "A1"), "value", std::string("x"));
    application.scriptEnded();
    EXPECT_EQ(office.count("setCells"), 0U);
}

TEST_F(Cells, ThatFailAreReportedToWhoeverNeedsThemAndGone) {
    set(cell("A1"), "value", std::string("x"));
    set(cell("Z50"), "value", std::string("x"));
    office.failAt("setCells", 1, ScriptError(-10000, "The sheet is protected."));
    EXPECT_EQ(refusalOf([&] { perform("save", document); }), (Refusal{-10000, "The sheet is protected."}));
    EXPECT_EQ(office.count("save"), 0U);
    EXPECT_EQ(get(table, "row count"), Value(int64_t{2}));
    EXPECT_EQ(get(cell("A1"), "value"), a);
    EXPECT_EQ(office.count("setCells"), 1U);
}

TEST_F(Cells, BeyondTheGridAreRefusedByTheOfficeProgram) {
    set(cell("ZZZ1"), "value", std::string("x"));
    EXPECT_EQ(refusalOf([&] { perform("save", document); }).number, ScriptError::noSuchObject);
    EXPECT_EQ(refusalOf([&] { values(named(table, "range", "A1:ZZZ2")); }).number, ScriptError::noSuchObject);
}

TEST_F(Cells, AreSetOneByOneInARange) {
    for (const auto& cell : named(table, "range", "A1:J10")->elements("cell", call))
        set(cell, "value", std::string("x"));
    EXPECT_EQ(values(named(table, "range", "J9:J11")), (Values{std::string("x"), std::string("x"), nothing}));
    EXPECT_EQ(office.count("setCells"), 1U);
}

TEST_F(Cells, AreCleared) {
    perform("clear", named(table, "range", "A1:A2"));
    perform("clear", cell("B1"));
    EXPECT_EQ(values(table), (Values{nothing, nothing, nothing, true}));
}

TEST_F(Cells, AreNotHandledByTheMillion) {
    const auto huge = named(table, "range", "A1:Z999999");
    const auto refusal = refusalOf([&] { values(huge); });
    EXPECT_EQ(refusal.number, -10000);
    EXPECT_EQ(refusalOf([&] { huge->elements("cell", call); }), refusal);
    EXPECT_EQ(refusalOf([&] { perform("clear", huge); }), refusal);
    EXPECT_EQ(huge->count("cell", call), 25'999'974U);
    EXPECT_EQ(get(huge->elementAt("cell", 27, call), "name"), Value(std::string("A2")));
    EXPECT_EQ(office.count("cells"), 0U);
}

TEST_F(Cells, RefuseWhatTheyCannotHold) {
    EXPECT_EQ(refusalOf([&] { set(cell("A1"), "value", Constant{"yes"}); }),
              (Refusal{-1700, "Can’t make yes into type cell value."}));
    EXPECT_EQ(refusalOf([&] { set(cell("A1"), "row", int64_t{2}); }).number, -10006);
    EXPECT_EQ(refusalOf([&] { set(cell("A1"), "name", std::string("B1")); }).number, -10006);
    EXPECT_EQ(refusalOf([&] { set(at(table, "row", 1), "value", int64_t{1}); }).number, -10006);
    EXPECT_EQ(refusalOf([&] { get(cell("A1"), "formula"); }).number, -1728);
    EXPECT_EQ(refusalOf([&] { get(at(table, "row", 1), "value"); }).number, -1728);
    EXPECT_EQ(get(document, "modified"), Value(false));
}

TEST_F(Cells, AreTheSameWhereverTheyWereFound) {
    EXPECT_TRUE(cell("B1")->isSameAs(*at(table, "cell", 2)));
    EXPECT_FALSE(cell("B1")->isSameAs(*cell("B2")));
    EXPECT_FALSE(cell("B1")->isSameAs(*named(table, "range", "B1")));
    const auto prices = at(at(document, "sheet", 1), "table", 2);
    EXPECT_FALSE(cell("B1")->isSameAs(*named(prices, "cell", "B1")));
}

TEST_F(Cells, CannotBeUsedAfterTheirDocument) {
    const auto cell = this->cell("A1");
    perform("close", document, {{"saving", no()}});
    EXPECT_EQ(refusalOf([&] { get(cell, "value"); }).number, -1728);
    EXPECT_EQ(refusalOf([&] { set(cell, "value", true); }).number, -1728);
    EXPECT_EQ(refusalOf([&] { this->cell("A1"); }).number, -1728);
    EXPECT_EQ(refusalOf([&] { at(document, "sheet", 1); }).number, -1728);
}

} // namespace bridge::iworkapps
