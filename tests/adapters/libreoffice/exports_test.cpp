#include "tests/adapters/libreoffice/office_test.h"
#include "tests/support/child_process.h"

#include <cstdlib>

namespace bridge::office {

namespace {

class Exports : public OfficeTest {
protected:
    std::string exported(DocumentID document, ExportFormat format, const std::string& name) {
        office().exportTo(document, folder.file(name), format, call);
        return getFile(folder / name);
    }
};

} // namespace

TEST_F(Exports, HaveTheFormatThatWasAskedFor) {
    const auto text = office().create(DocumentKind::text, call);
    office().setBodyText(text, "Fox", call);
    EXPECT_THAT(exported(text, ExportFormat::pdf, "a.pdf"), testing::StartsWith("%PDF-"));
    EXPECT_THAT(exported(text, ExportFormat::docx, "a.docx"), testing::HasSubstr("word/document.xml"));
    EXPECT_THAT(exported(text, ExportFormat::epub, "a.epub"), testing::HasSubstr("application/epub+zip"));
    const auto cells = office().create(DocumentKind::spreadsheet, call);
    office().setCells(cells, 0, 0, {{0, 0, 1.0}}, call);
    EXPECT_THAT(exported(cells, ExportFormat::pdf, "b.pdf"), testing::StartsWith("%PDF-"));
    EXPECT_THAT(exported(cells, ExportFormat::xlsx, "b.xlsx"), testing::HasSubstr("xl/workbook.xml"));
    const auto slides = office().create(DocumentKind::presentation, call);
    EXPECT_THAT(exported(slides, ExportFormat::pdf, "c.pdf"), testing::StartsWith("%PDF-"));
    EXPECT_THAT(exported(slides, ExportFormat::pptx, "c.pptx"), testing::HasSubstr("ppt/presentation.xml"));
}

TEST_F(Exports, AreMoviesThatOtherProgramsPlay) {
    if (!ChildProcess::isInstalled("ffprobe")) GTEST_SKIP() << "ffprobe is not installed";
    const auto document = office().create(DocumentKind::presentation, call);
    office().setSlideTitle(document, 0, "Fox", call);
    office().addSlide(document, call);
    office().addSlide(document, call);
    office().exportTo(document, folder.file("a.mov"), ExportFormat::movie, call);
    ChildProcess probe({"ffprobe", "-v", "error", "-count_frames", "-show_entries",
                        "stream=codec_name,width,height,nb_read_frames:format=duration", "-of", "csv=nokey=1:p=0",
                        folder.file("a.mov")},
                       {}, "");
    EXPECT_EQ(probe.readLine(), "mjpeg,1280,720,3");
    EXPECT_NEAR(std::atof(probe.readLine().c_str()), 15, 0.01);
    EXPECT_EQ(probe.readLine(), "");
}

TEST_F(Exports, LeaveTheDocumentAsItIs) {
    const auto document = savedText("a.pages", "one");
    exported(document, ExportFormat::docx, "a.docx");
    office().setBodyText(document, "two", call);
    office().save(document, call);
    office().close(document, call);
    EXPECT_EQ(office().bodyText(office().open(DocumentKind::text, folder.file("a.pages"), call), call), "two");
}

} // namespace bridge::office
