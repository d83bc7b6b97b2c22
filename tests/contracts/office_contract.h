#pragma once

// The tests of the contract stand here: one file of a program includes this and names its adapters.

#include "tests/contracts/office_tables_contract.h"

namespace bridge::office {

TEST_P(OfficeContract, IsReadyForDocumentsOfEachKind) {
    EXPECT_EQ(office().whyUnavailable(), std::nullopt);
    const auto text = office().create(DocumentKind::text, call);
    const auto cells = office().create(DocumentKind::spreadsheet, call);
    const auto slides = office().create(DocumentKind::presentation, call);
    EXPECT_TRUE(office().isRunning());
    EXPECT_NE(text, cells);
    EXPECT_EQ(office().bodyText(text, call), "");
    EXPECT_EQ(office().sheets(cells, call).size(), 1u);
    EXPECT_EQ(office().activeSheet(cells, call), 0);
    const auto found = office().slides(slides, call);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(found[0].hasTitle && found[0].hasBody);
}

TEST_P(OfficeContract, NeverGivesANumberTwice) {
    const auto first = office().create(DocumentKind::text, call);
    office().close(first, call);
    EXPECT_NE(office().create(DocumentKind::text, call), first);
}

TEST_P(OfficeContract, KeepsTextOverSavingAndOpening) {
    const auto document = office().create(DocumentKind::text, call);
    const std::string text = "One\n\n  two \n" + oddText + "\n";
    office().setBodyText(document, text, call);
    EXPECT_EQ(office().bodyText(document, call), text);
    EXPECT_EQ(office().bodyText(reopened(document, DocumentKind::text, "a.pages"), call), text);
}

TEST_P(OfficeContract, TakesEveryLineBreakForOne) {
    const auto document = office().create(DocumentKind::text, call);
    office().setBodyText(document, "a\r\nb\rc\nd\r\n\r\ne", call);
    EXPECT_EQ(office().bodyText(document, call), "a\nb\nc\nd\n\ne");
}

TEST_P(OfficeContract, KeepsHalfAMillionCharacters) {
    std::string text;
    while (text.size() < 500'000)
        text += "The fox runs along line " + std::to_string(text.size()) + (text.size() % 3 == 0 ? "\n" : " ");
    text.resize(500'000, 'x');
    const auto document = office().create(DocumentKind::text, call);
    office().setBodyText(document, text, call);
    const auto again = reopened(document, DocumentKind::text, "long.pages");
    EXPECT_TRUE(office().bodyText(again, call) == text);
}

TEST_P(OfficeContract, TakesAnApostropheForASignOfText) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    EXPECT_EQ(typed(document, "'007"), CellValue("007"));
    EXPECT_EQ(typed(document, "'=1+1"), CellValue("=1+1"));
    EXPECT_EQ(typed(document, "5"), CellValue(5.0));
}

TEST_P(OfficeContract, KeepsEachKindOfValueOverSavingAndOpening) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    const std::string lines = "first\nsecond \"quoted\", too\n\U0001F98A \u05E9\u05DC\u05D5\u05DD";
    office().setCells(document, 0, 0,
                      {{0, 0, true}, {1, 0, 0.25}, {2, 0, lines}, {1, 1, "2026-08-14"}, {2, 1, false}, {0, 2, oddLine}},
                      call);
    const std::vector<CellValue> expected{true, 0.25, lines, {}, "2026-08-14", false, oddLine, {}, {}};
    EXPECT_EQ(office().cells(document, 0, 0, {0, 0, 2, 2}, call), expected);
    const auto again = reopened(document, DocumentKind::spreadsheet, "a.numbers");
    EXPECT_EQ(office().cells(again, 0, 0, {0, 0, 2, 2}, call), expected);
}

TEST_P(OfficeContract, KeepsALongTextInACell) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    const std::string text(100'000, 'x');
    office().setCells(document, 0, 0, {{0, 0, text}}, call);
    const auto again = reopened(document, DocumentKind::spreadsheet, "a.numbers");
    EXPECT_TRUE(cell(again, 0, 0) == CellValue(text));
}

TEST_P(OfficeContract, EmptiesCellsWithNothing) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0, {{0, 0, 1.0}, {1, 0, "text"}, {2, 0, true}}, call);
    office().setCells(document, 0, 0, {{0, 0, {}}, {1, 0, {}}, {2, 0, {}}}, call);
    EXPECT_EQ(office().cells(document, 0, 0, {0, 0, 2, 0}, call), (std::vector<CellValue>(3)));
}

TEST_P(OfficeContract, ForgetsThatACellHeldATruth) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0, {{0, 0, true}}, call);
    office().setCells(document, 0, 0, {{0, 0, 1.0}}, call);
    EXPECT_EQ(cell(document, 0, 0), CellValue(1.0));
}

TEST_P(OfficeContract, LetsTheLastOfSeveralChangesOfACellCount) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0, {{0, 0, 1.0}, {1, 0, 5.0}, {0, 0, "2"}, {0, 0, 3.0}}, call);
    EXPECT_EQ(office().cells(document, 0, 0, {0, 0, 1, 0}, call), (std::vector<CellValue>{3.0, 5.0}));
}

TEST_P(OfficeContract, SetsScatteredCells) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    std::vector<CellChange> changes;
    for (int32_t index = 0; index < 40; ++index)
        changes.push_back({(index * 7) % 11, (index * 5) % 13, static_cast<double>(index)});
    office().setCells(document, 0, 0, changes, call);
    for (const auto& change : changes)
        EXPECT_EQ(cell(document, change.column, change.row), change.value);
    EXPECT_EQ(cell(document, 10, 20), CellValue());
}

TEST_P(OfficeContract, KeepsTenThousandCells) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    std::vector<CellChange> changes;
    std::vector<CellValue> expected;
    for (int32_t row = 0; row < 100; ++row)
        for (int32_t column = 0; column < 100; ++column) {
            const double number = row * 0.125 + column;
            const bool isText = column % 3 == 0;
            changes.push_back({column, row, isText ? CellValue("Text " + std::to_string(row)) : CellValue(number)});
            expected.push_back(changes.back().value);
        }
    office().setCells(document, 0, 0, changes, call);
    const auto again = reopened(document, DocumentKind::spreadsheet, "many.numbers");
    const auto found = office().cells(again, 0, 0, {0, 0, 99, 99}, call);
    ASSERT_EQ(found.size(), expected.size());
    for (size_t index = 0; index < found.size(); ++index)
        ASSERT_EQ(found[index], expected[index]) << index;
}

TEST_P(OfficeContract, HasNoCellsBeyondTheSheet) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    constexpr int32_t columnZZZ = 26 * 26 * 26 + 26 * 26 + 25;
    const auto read = [&](CellRange range) { return errorOf([&] { office().cells(document, 0, 0, range, call); }); };
    EXPECT_EQ(read({0, 0, columnZZZ, 0}), ScriptError::noSuchObject);
    EXPECT_EQ(read({-1, 0, 0, 0}), ScriptError::noSuchObject);
    EXPECT_EQ(read({0, 990'000, 0, 999'998}), std::nullopt);
    EXPECT_EQ(errorOf([&] { office().cells(document, 1, 0, {0, 0, 0, 0}, call); }), ScriptError::noSuchObject);
    EXPECT_EQ(errorOf([&] { office().cells(document, 0, 1, {0, 0, 0, 0}, call); }), ScriptError::noSuchObject);
}

TEST_P(OfficeContract, ChangesAllCellsOrNone) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    constexpr int32_t beyond = 1'000'000'000;
    EXPECT_EQ(errorOf([&] {
                  office().setCells(document, 0, 0, {{0, 0, 1.0}, {beyond, 0, 1.0}}, call);
              }),
              ScriptError::noSuchObject);
    EXPECT_EQ(cell(document, 0, 0), CellValue());
}

TEST_P(OfficeContract, EmptiesWhatLiesBeyondANewSize) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0, {{0, 0, 1.0}, {1, 0, 2.0}, {0, 1, 3.0}, {1, 1, 4.0}, {2, 2, 5.0}}, call);
    office().resizeTable(document, 0, 0, 2, 1, call);
    EXPECT_EQ(office().cells(document, 0, 0, {0, 0, 1, 1}, call), (std::vector<CellValue>{1.0, {}, 3.0, {}}));
    EXPECT_EQ(cell(document, 2, 2), CellValue());
    const auto table = office().sheets(document, call).at(0).tables.at(0);
    EXPECT_EQ(table.name, "Table 1");
    EXPECT_EQ(table.rows, 2);
    EXPECT_EQ(table.columns, 1);
    office().setCells(document, 0, 0, {{9, 9, 1.0}}, call);
    EXPECT_EQ(cell(document, 9, 9), CellValue(1.0));
}

TEST_P(OfficeContract, KeepsSlidesOverSavingAndOpening) {
    const auto document = office().create(DocumentKind::presentation, call);
    office().addSlide(document, call);
    office().setSlideTitle(document, 0, oddText, call);
    office().setSlideTitle(document, 1, "Second", call);
    office().setSlideBody(document, 1, "one\r\ntwo\n\nfour", call);
    const auto again = reopened(document, DocumentKind::presentation, "a.key");
    const auto slides = office().slides(again, call);
    ASSERT_EQ(slides.size(), 2u);
    EXPECT_EQ(slides[0].title, oddText);
    EXPECT_EQ(slides[0].body, "");
    EXPECT_EQ(slides[1].title, "Second");
    EXPECT_EQ(slides[1].body, "one\ntwo\n\nfour");
    EXPECT_EQ(errorOf([&] { office().setSlideTitle(again, 2, "x", call); }), ScriptError::noSuchObject);
}

TEST_P(OfficeContract, SavesInPlace) {
    const auto path = folder.file("a.pages");
    const auto document = office().create(DocumentKind::text, call);
    EXPECT_NE(errorOf([&] { office().save(document, call); }), std::nullopt);
    office().setBodyText(document, "one", call);
    office().saveAs(document, path, call);
    office().setBodyText(document, "two", call);
    office().save(document, call);
    office().setBodyText(document, "three", call);
    office().close(document, call);
    EXPECT_EQ(office().bodyText(office().open(DocumentKind::text, path, call), call), "two");
}

TEST_P(OfficeContract, KnowsNothingOfADocumentThatIsClosed) {
    const auto document = office().create(DocumentKind::text, call);
    office().close(document, call);
    EXPECT_EQ(errorOf([&] { office().close(document, call); }), std::nullopt);
    EXPECT_EQ(errorOf([&] { office().bodyText(document, call); }), ScriptError::noSuchObject);
    EXPECT_EQ(errorOf([&] { office().save(document, call); }), ScriptError::noSuchObject);
}

TEST_P(OfficeContract, ClosesAllAtOnce) {
    const auto first = office().create(DocumentKind::text, call);
    const auto second = office().create(DocumentKind::presentation, call);
    office().closeAll();
    EXPECT_EQ(errorOf([&] { office().bodyText(first, call); }), ScriptError::noSuchObject);
    EXPECT_EQ(errorOf([&] { office().slides(second, call); }), ScriptError::noSuchObject);
}

TEST_P(OfficeContract, DoesNothingForAScriptThatWasGivenUp) {
    const auto document = office().create(DocumentKind::text, call);
    applescript::ScriptCall over;
    over.cancel();
    EXPECT_EQ(errorOf([&] { office().setBodyText(document, "too late", over); }), ScriptError::timedOut);
    EXPECT_EQ(errorOf([&] { office().create(DocumentKind::text, call); }), std::nullopt);
}

} // namespace bridge::office
