#pragma once

// These tests are for what has formats, formulas and files on a disk; a double in memory goes without.

#include "tests/contracts/office_fixture.h"

namespace bridge::office {

TEST_P(OfficeProgramContract, RefusesCharactersThatNoDocumentCanStore) {
    const auto document = office().create(DocumentKind::text, call);
    office().setBodyText(document, "before", call);
    for (const std::string& text : {std::string("a\0b", 3), std::string("\x01"), std::string("\x1b[0m"),
                                    std::string("\xEF\xBF\xBE"), std::string("\x0c")})
        EXPECT_NE(errorOf([&] { office().setBodyText(document, text, call); }), std::nullopt);
    EXPECT_EQ(office().bodyText(document, call), "before");
    EXPECT_EQ(office().bodyText(reopened(document, DocumentKind::text, "a.pages"), call), "before");
}

TEST_P(OfficeProgramContract, ChangesNoCellWhenOneOfThemCantBeStored) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    EXPECT_NE(errorOf([&] { office().setCells(document, 0, 0, {{0, 0, 1.0}, {1, 0, "\x01"}}, call); }), std::nullopt);
    EXPECT_EQ(cell(document, 0, 0), CellValue());
}

TEST_P(OfficeProgramContract, TakesCellsAsTyped) {
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

TEST_P(OfficeProgramContract, ReadsWhatHasAFormatAsItIsShown) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0, {{0, 0, "3 %"}, {1, 0, "$5"}, {2, 0, "12:30"}, {3, 0, "=1/0"}}, call);
    const auto cells = office().cells(document, 0, 0, {0, 0, 3, 0}, call);
    EXPECT_THAT(std::get<std::string>(cells[0]), testing::EndsWith("%"));
    EXPECT_THAT(std::get<std::string>(cells[1]), testing::StartsWith("$5"));
    EXPECT_THAT(std::get<std::string>(cells[2]), testing::StartsWith("12:30"));
    EXPECT_EQ(cells[3], CellValue("#DIV/0!"));
}

TEST_P(OfficeProgramContract, ReplacesNothingWithANewFile) {
    putFile(folder / "there", "kept");
    const auto document = office().create(DocumentKind::text, call);
    EXPECT_NE(errorOf([&] { office().saveAs(document, folder.file("there"), call); }), std::nullopt);
    EXPECT_NE(errorOf([&] { office().exportTo(document, folder.file("there"), ExportFormat::pdf, call); }),
              std::nullopt);
    EXPECT_NE(errorOf([&] { office().saveAs(document, folder.file("nowhere/a.pages"), call); }), std::nullopt);
    EXPECT_EQ(getFile(folder / "there"), "kept");
}

TEST_P(OfficeProgramContract, ExportsTextAsItIs) {
    const auto document = office().create(DocumentKind::text, call);
    office().setBodyText(document, "caf\u00e9\n\U0001F98A", call);
    office().exportTo(document, folder.file("a.txt"), ExportFormat::text, call);
    EXPECT_EQ(getFile(folder / "a.txt"), "caf\u00e9\n\U0001F98A\n");
}

TEST_P(OfficeProgramContract, ExportsCellsAsTheyAreShown) {
    const auto document = office().create(DocumentKind::spreadsheet, call);
    office().setCells(document, 0, 0,
                      {{0, 0, "a,b"}, {1, 0, 0.5}, {2, 0, "2026-08-14"}, {0, 1, "\u00e9"}, {1, 1, true}}, call);
    office().exportTo(document, folder.file("a.csv"), ExportFormat::csv, call);
    EXPECT_EQ(getFile(folder / "a.csv"), "\"a,b\",0.5,2026-08-14\n\u00e9,TRUE,\n");
}

TEST_P(OfficeProgramContract, RefusesAFormatOfAnotherKind) {
    const auto document = office().create(DocumentKind::text, call);
    EXPECT_NE(errorOf([&] { office().exportTo(document, folder.file("a.csv"), ExportFormat::csv, call); }),
              std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(folder / "a.csv"));
}

TEST_P(OfficeProgramContract, RefusesWhatIsNoDocumentOfThatKind) {
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

} // namespace bridge::office
