#include "tests/adapters/libreoffice/flat_documents.h"
#include "tests/adapters/libreoffice/office_test.h"

namespace bridge::office {

namespace {

class NamedTables : public OfficeTest {
protected:
    DocumentID opened(const std::string& body, const std::string& before = {}) {
        putFile(folder / "a.numbers", flatDocument("spreadsheet", body, before));
        return office().open(DocumentKind::spreadsheet, folder.file("a.numbers"), call);
    }
    std::vector<std::string> names(DocumentID document, size_t sheet) {
        const auto tables = office().sheets(document, call).at(sheet).tables;
        std::vector<std::string> found;
        for (const auto& table : tables)
            found.push_back(table.name);
        return found;
    }
};

// The names of a document or a sheet.
std::string expressions(const std::string& content) {
    return "<table:named-expressions>" + content + "</table:named-expressions>";
}

const std::string formulaName =
    "<table:named-expression table:name=\"Answer\" table:base-cell-address=\"$One.$A$1\" table:expression=\"6*7\"/>";

} // namespace

TEST_F(NamedTables, AreNamesOfTheDocumentAndOfItsSheets) {
    const auto document =
        opened("<table:table table:name=\"One\"><table:table-row><table:table-cell/></table:table-row>" +
               expressions(namedRange("Own", "One", {0, 0, 1, 1})) + "</table:table>" + emptySheet("Two") +
               expressions(namedRange("Common", "One", {2, 2, 3, 3}) + formulaName +
                           namedRange("There", "Two", {0, 0, 0, 0})) +
               "<table:database-ranges>" + databaseRange("Base", "One", {5, 5, 6, 6}) + "</table:database-ranges>");
    EXPECT_THAT(names(document, 0), testing::ElementsAre("Table 1", "Base", "Common", "Own"));
    EXPECT_THAT(names(document, 1), testing::ElementsAre("Table 1", "There"));
    for (const int32_t table : {1, 2, 3}) {
        office().setCells(document, 0, table, {{1, 1, static_cast<double>(table)}}, call);
        office().resizeTable(document, 0, table, 3, 2, call);
        office().setCells(document, 0, table, {{0, 2, -1.0}}, call);
    }
    EXPECT_EQ(cell(document, 6, 6), CellValue(1.0));
    EXPECT_EQ(cell(document, 3, 3), CellValue(2.0));
    EXPECT_EQ(cell(document, 1, 1), CellValue(3.0));
    office().saveAs(document, folder.file("b.numbers"), call);
    const auto again = office().open(DocumentKind::spreadsheet, folder.file("b.numbers"), call);
    EXPECT_EQ(names(again, 0), names(document, 0));
    for (const int32_t table : {1, 2, 3})
        EXPECT_EQ(office().cells(again, 0, table, {0, 2, 1, 2}, call), (std::vector<CellValue>{-1.0, {}})) << table;
}

TEST_F(NamedTables, OfAHiddenSheetCanBeUsed) {
    const auto document =
        opened(emptySheet("Seen") + emptySheet("Hidden", " table:style-name=\"ta1\"") + "<table:database-ranges>" +
                   databaseRange("Secrets", "Hidden", {1, 1, 2, 2}) + "</table:database-ranges>",
               activeSheetSettings("Hidden") +
                   "<office:automatic-styles><style:style style:name=\"ta1\" style:family=\"table\">"
                   "<style:table-properties table:display=\"false\"/></style:style></office:automatic-styles>");
    EXPECT_EQ(office().activeSheet(document, call), 0);
    EXPECT_THAT(names(document, 1), testing::ElementsAre("Table 1", "Secrets"));
    office().setCells(document, 1, 1, {{0, 0, "found"}}, call);
    EXPECT_EQ(office().cells(document, 1, 0, {1, 1, 1, 1}, call), std::vector<CellValue>{"found"});
}

} // namespace bridge::office
