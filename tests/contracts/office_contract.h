#pragma once

// The tests of the contract stand here: one file of a program includes this and names its adapters.

#include "adapters/libreoffice/office.h"
#include "tests/support/temporary_folder.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>

namespace bridge::office {

// What the contract needs of one office program.
struct OfficeSite {
    virtual ~OfficeSite() = default;

    // Why it can't run on this machine; its tests are then skipped.
    virtual std::string hindrance() const { return {}; }
    virtual Office& office() = 0;
};

struct OfficeKind {
    std::string name;
    std::function<std::unique_ptr<OfficeSite>()> make;
};

inline void PrintTo(const OfficeKind& kind, std::ostream* out) {
    *out << kind.name;
}

inline std::string nameOf(const testing::TestParamInfo<OfficeKind>& info) {
    return info.param.name;
}

// The number of the ScriptError that the action ends with; nothing when it ends well.
template <typename Action> std::optional<int> errorOf(const Action& action) {
    try {
        action();
    } catch (const ScriptError& error) {
        EXPECT_NE(error.message().value_or(""), "");
        return error.number().value_or(0);
    }
    return std::nullopt;
}

class OfficeContract : public testing::TestWithParam<OfficeKind> {
protected:
    void SetUp() override {
        site = GetParam().make();
        if (const auto hindrance = site->hindrance(); !hindrance.empty()) GTEST_SKIP() << hindrance;
    }

    Office& office() { return site->office(); }

    // Written, closed and opened again.
    DocumentID reopened(DocumentID document, DocumentKind kind, const std::string& name) {
        office().saveAs(document, folder.file(name), call);
        office().close(document, call);
        return office().open(kind, folder.file(name), call);
    }
    CellValue cell(DocumentID document, int32_t column, int32_t row) {
        return office().cells(document, 0, 0, {column, row, column, row}, call).at(0);
    }
    // What a cell holds when that was typed into it.
    CellValue typed(DocumentID document, const std::string& text) {
        office().setCells(document, 0, 0, {{0, 0, text}}, call);
        return cell(document, 0, 0);
    }

    TemporaryFolder folder;
    applescript::ScriptCall call;
    std::unique_ptr<OfficeSite> site;
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(OfficeContract);

inline const std::string oddLine =
    "caf\u00e9 \U0001F98A\U0001F469\u200D\U0001F373 \u05E9\u05DC\u05D5\u05DD \u0645  <&>";
inline const std::string oddText = oddLine + "\ttab";

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

TEST_P(OfficeContract, RefusesCharactersThatNoDocumentCanStore) {
    const auto document = office().create(DocumentKind::text, call);
    office().setBodyText(document, "before", call);
    for (const std::string& text : {std::string("a\0b", 3), std::string("\x01"), std::string("\x1b[0m"),
                                    std::string("\xEF\xBF\xBE"), std::string("\x0c")})
        EXPECT_NE(errorOf([&] { office().setBodyText(document, text, call); }), std::nullopt);
    EXPECT_EQ(office().bodyText(document, call), "before");
    EXPECT_EQ(office().bodyText(reopened(document, DocumentKind::text, "a.pages"), call), "before");
}

TEST_P(OfficeContract, TakesCellsAsTyped) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    EXPECT_EQ(typed(document, "12.5"), CellValue(12.5));
    EXPECT_EQ(typed(document, "-0.1"), CellValue(-0.1));
    EXPECT_EQ(typed(document, "0.30000000000000004"), CellValue(0.30000000000000004));
    EXPECT_EQ(typed(document, "1e21"), CellValue(1e21));
    EXPECT_EQ(typed(document, "fox"), CellValue("fox"));
    EXPECT_EQ(typed(document, "Row 12"), CellValue("Row 12"));
    EXPECT_EQ(typed(document, "=2*21"), CellValue(42.0));
    EXPECT_EQ(typed(document, "=SUM(1,2)"), CellValue(3.0));
    EXPECT_EQ(typed(document, "TRUE"), CellValue(true));
    EXPECT_EQ(typed(document, "false"), CellValue(false));
    EXPECT_EQ(typed(document, "7"), CellValue(7.0));
    EXPECT_EQ(typed(document, "2026-08-14"), CellValue("2026-08-14"));
    EXPECT_EQ(typed(document, ""), CellValue());
}

TEST_P(OfficeContract, ReadsWhatHasAFormatAsItIsShown) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0, {{0, 0, "3 %"}, {1, 0, "$5"}, {2, 0, "12:30"}, {3, 0, "=1/0"}}, call);
    const auto cells = office().cells(document, 0, 0, {0, 0, 3, 0}, call);
    EXPECT_THAT(std::get<std::string>(cells[0]), testing::EndsWith("%"));
    EXPECT_THAT(std::get<std::string>(cells[1]), testing::StartsWith("$5"));
    EXPECT_THAT(std::get<std::string>(cells[2]), testing::StartsWith("12:30"));
    EXPECT_EQ(cells[3], CellValue("#DIV/0!"));
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
    EXPECT_NE(errorOf([&] { office().setCells(document, 0, 0, {{0, 0, 1.0}, {1, 0, "\x01"}}, call); }), std::nullopt);
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

TEST_P(OfficeContract, ReplacesNothingWithANewFile) {
    putFile(folder / "there", "kept");
    const auto document = office().create(DocumentKind::text, call);
    EXPECT_NE(errorOf([&] { office().saveAs(document, folder.file("there"), call); }), std::nullopt);
    EXPECT_NE(errorOf([&] { office().exportTo(document, folder.file("there"), ExportFormat::pdf, call); }),
              std::nullopt);
    EXPECT_NE(errorOf([&] { office().saveAs(document, folder.file("nowhere/a.pages"), call); }), std::nullopt);
    EXPECT_EQ(getFile(folder / "there"), "kept");
}

TEST_P(OfficeContract, ExportsTextAsItIs) {
    const auto document = office().create(DocumentKind::text, call);
    office().setBodyText(document, "caf\u00e9\n\U0001F98A", call);
    office().exportTo(document, folder.file("a.txt"), ExportFormat::text, call);
    EXPECT_EQ(getFile(folder / "a.txt"), "caf\u00e9\n\U0001F98A\n");
}

TEST_P(OfficeContract, ExportsCellsAsTheyAreShown) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0,
                      {{0, 0, "a,b"}, {1, 0, 0.5}, {2, 0, "2026-08-14"}, {0, 1, "\u00e9"}, {1, 1, true}}, call);
    office().exportTo(document, folder.file("a.csv"), ExportFormat::csv, call);
    EXPECT_EQ(getFile(folder / "a.csv"), "\"a,b\",0.5,2026-08-14\n\u00e9,TRUE,\n");
}

TEST_P(OfficeContract, RefusesAFormatOfAnotherKind) {
    const auto document = office().create(DocumentKind::text, call);
    EXPECT_NE(errorOf([&] { office().exportTo(document, folder.file("a.csv"), ExportFormat::csv, call); }),
              std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(folder / "a.csv"));
}

TEST_P(OfficeContract, RefusesWhatIsNoDocumentOfThatKind) {
    const auto open = [&](DocumentKind kind, const std::string& name) {
        return errorOf([&] { office().open(kind, folder.file(name), call); });
    };
    putFile(folder / "text.pages", "just some text\n");
    putFile(folder / "empty.numbers", "");
    putFile(folder / "rows.numbers", "a,b\n1,2\n");
    putFile(folder / "zip.key", std::string("PK\x03\x04", 4) + std::string(200, 'x'));
    EXPECT_NE(open(DocumentKind::text, "text.pages"), std::nullopt);
    EXPECT_NE(open(DocumentKind::spreadsheet, "empty.numbers"), std::nullopt);
    EXPECT_NE(open(DocumentKind::spreadsheet, "rows.numbers"), std::nullopt);
    EXPECT_NE(open(DocumentKind::presentation, "zip.key"), std::nullopt);
    EXPECT_NE(open(DocumentKind::text, "missing.pages"), std::nullopt);
    EXPECT_NE(open(DocumentKind::text, ""), std::nullopt);
    office().saveAs(office().create(DocumentKind::text, call), folder.file("text.numbers"), call);
    EXPECT_NE(open(DocumentKind::spreadsheet, "text.numbers"), std::nullopt);
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
