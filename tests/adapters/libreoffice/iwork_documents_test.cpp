#include "tests/adapters/libreoffice/iwork_documents.h"
#include "tests/adapters/libreoffice/office_test.h"

namespace bridge::office {

namespace {

class IWorkDocuments : public OfficeTest {
protected:
    DocumentID opened(DocumentKind kind, const std::string& name, const std::string& content) {
        putFile(folder / name, content);
        return office().open(kind, folder.file(name), call);
    }
    void expectNotSaved(DocumentID document, const std::string& name) {
        const auto before = getFile(folder / name);
        EXPECT_EQ(failureOf([&] { office().save(document, call); }).second,
                  "\"" + name +
                      "\" was made by another program in a format that can be read but not written. Export it "
                      "instead.");
        EXPECT_EQ(getFile(folder / name), before);
    }
};

} // namespace

TEST_F(IWorkDocuments, OfTextCanBeReadAndExportedButNotSaved) {
    const auto document = opened(DocumentKind::text, "Letter.pages", pagesDocument());
    EXPECT_EQ(office().bodyText(document, call), "From a Mac\ncaf\u00e9");
    office().setBodyText(document, "changed", call);
    expectNotSaved(document, "Letter.pages");
    office().exportTo(document, folder.file("Letter.txt"), ExportFormat::text, call);
    EXPECT_EQ(getFile(folder / "Letter.txt"), "changed\n");
    office().exportTo(document, folder.file("Letter.pdf"), ExportFormat::pdf, call);
    EXPECT_THAT(getFile(folder / "Letter.pdf"), testing::StartsWith("%PDF-"));
}

TEST_F(IWorkDocuments, OfTextCanBeSavedElsewhere) {
    const auto document = opened(DocumentKind::text, "Letter.pages", pagesDocument());
    office().saveAs(document, folder.file("Own.pages"), call);
    office().setBodyText(document, "my own", call);
    office().save(document, call);
    office().close(document, call);
    EXPECT_EQ(getFile(folder / "Letter.pages"), pagesDocument());
    EXPECT_EQ(office().bodyText(office().open(DocumentKind::text, folder.file("Own.pages"), call), call), "my own");
}

TEST_F(IWorkDocuments, WithTablesHaveThemAsSheets) {
    const auto document = opened(DocumentKind::spreadsheet, "Plan.numbers", numbersDocument());
    const auto sheets = office().sheets(document, call);
    ASSERT_EQ(sheets.size(), 1u);
    EXPECT_EQ(sheets[0].name, "Prices");
    EXPECT_EQ(office().cells(document, 0, 0, {0, 0, 1, 1}, call), (std::vector<CellValue>{"Pear", 2.5, "Fig", 4.0}));
    office().setCells(document, 0, 0, {{0, 0, "changed"}}, call);
    expectNotSaved(document, "Plan.numbers");
    office().exportTo(document, folder.file("Plan.csv"), ExportFormat::csv, call);
    EXPECT_THAT(getFile(folder / "Plan.csv"), testing::StartsWith("changed,2.5"));
    office().saveAs(document, folder.file("Own.numbers"), call);
    office().setCells(document, 0, 0, {{0, 0, "own"}}, call);
    office().save(document, call);
    EXPECT_EQ(cell(office().open(DocumentKind::spreadsheet, folder.file("Own.numbers"), call), 0, 0), CellValue("own"));
    EXPECT_EQ(getFile(folder / "Plan.numbers"), numbersDocument());
}

TEST_F(IWorkDocuments, OfAnotherKindAreRefused) {
    EXPECT_NE(failureOf([&] { opened(DocumentKind::spreadsheet, "a.numbers", pagesDocument()); }).second, "");
    EXPECT_NE(failureOf([&] { opened(DocumentKind::text, "a.pages", numbersDocument()); }).second, "");
}

TEST_F(IWorkDocuments, WithoutAnythingThatCanBeReadAreRefused) {
    EXPECT_NE(failureOf([&] {
                  opened(DocumentKind::text, "a.pages", archiveOf("Index/Document.iwa", std::string(64, '\0')));
              }).second,
              "");
    EXPECT_NE(failureOf([&] { opened(DocumentKind::text, "b.pages", archiveOf("index.xml", "<sl:document")); }).second,
              "");
    EXPECT_EQ(failureOf([&] { office().create(DocumentKind::text, call); }).second, "");
}

} // namespace bridge::office
