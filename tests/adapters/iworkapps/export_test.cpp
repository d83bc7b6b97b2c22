#include "adapters/iworkapps/keynote_application.h"
#include "adapters/iworkapps/numbers_application.h"
#include "adapters/iworkapps/pages_application.h"
#include "tests/adapters/iworkapps/office_script.h"

#include <algorithm>

namespace bridge::iworkapps {

using PagesExport = OfficeScript<PagesApplication>;
using NumbersExport = OfficeScript<NumbersApplication>;
using KeynoteExport = OfficeScript<KeynoteApplication>;

namespace {

using Formats = std::vector<std::pair<const char*, ExportFormat>>;

const Formats pages{{"pdf", ExportFormat::pdf},
                    {"microsoft word", ExportFormat::docx},
                    {"epub", ExportFormat::epub},
                    {"unformatted text", ExportFormat::text}};
const Formats numbers{{"pdf", ExportFormat::pdf}, {"microsoft excel", ExportFormat::xlsx}, {"csv", ExportFormat::csv}};
const Formats keynote{
    {"pdf", ExportFormat::pdf}, {"microsoft powerpoint", ExportFormat::pptx}, {"quicktime movie", ExportFormat::movie}};

template <typename Script> void exportEach(Script perform, office::FakeOffice& office, const Formats& formats) {
    for (const auto& [constant, format] : formats) {
        const auto path = std::string("/") + constant;
        perform(path, Constant{constant});
        EXPECT_EQ(office.exports.at(path).format, format);
    }
}

} // namespace

TEST_F(PagesExport, HasFourFormats) {
    const auto document = make("document");
    exportEach(
        [&](auto path, auto as) {
            perform("export", document, {{"to", File{path}}, {"as", as}});
        },
        office, pages);
}

TEST_F(NumbersExport, HasThreeFormats) {
    const auto document = make("document");
    exportEach(
        [&](auto path, auto as) {
            perform("export", document, {{"to", File{path}}, {"as", as}});
        },
        office, numbers);
}

TEST_F(KeynoteExport, HasThreeFormats) {
    const auto document = make("document");
    exportEach(
        [&](auto path, auto as) {
            perform("export", document, {{"to", File{path}}, {"as", as}});
        },
        office, keynote);
}

TEST_F(PagesExport, NeedsNoSaving) {
    const auto document = make("document");
    set(document, "body text", std::string("x"));
    perform("export", document, {{"to", File{"/x.pdf"}}, {"as", Constant{"pdf"}}});
    EXPECT_EQ(office.exports.at("/x.pdf").content.body, "x");
    EXPECT_EQ(get(document, "modified"), Value(true));
}

TEST_F(PagesExport, SaysWhoseFormatItIs) {
    const auto document = make("document");
    const auto as = [&](const Value& format) {
        return refusalOf([&] { perform("export", document, {{"to", File{"/x"}}, {"as", format}}); });
    };
    EXPECT_EQ(as(Constant{"microsoft excel"}),
              (Refusal{-10000, "“Microsoft Excel” is an export format of Numbers, not of Pages."}));
    EXPECT_EQ(as(Constant{"quicktime movie"}),
              (Refusal{-10000, "“QuickTime movie” is an export format of Keynote, not of Pages."}));
    EXPECT_EQ(as(Constant{"yes"}), (Refusal{-1700, "Can’t make yes into type export format."}));
    EXPECT_EQ(as(std::string("pdf")).number, -1700);
    EXPECT_EQ(office.count("exportTo"), 0U);
}

TEST_F(PagesExport, NeedsAPlaceAndAFormat) {
    const auto document = make("document");
    EXPECT_EQ(refusalOf([&] {
                  perform("export", document, {{"as", Constant{"pdf"}}});
              }),
              (Refusal{-1701, "The “to” parameter is missing for export."}));
    EXPECT_EQ(refusalOf([&] { perform("export", document, {{"to", File{"/x"}}}); }).number, -1701);
    EXPECT_EQ(refusalOf([&] {
                  perform("export", std::nullopt, {{"to", File{"/x"}}, {"as", Constant{"pdf"}}});
              }).number,
              -1708);
}

TEST_F(PagesExport, HasTheWordsOfAllItsFormatsInItsDictionary) {
    const auto& constants = application.dictionary().constants;
    for (const auto& formats : {pages, numbers, keynote})
        for (const auto& [constant, format] : formats)
            EXPECT_EQ(std::ranges::count(constants, constant), 1) << constant;
}

} // namespace bridge::iworkapps
