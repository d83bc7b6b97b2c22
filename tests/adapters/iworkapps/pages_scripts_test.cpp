#include "tests/adapters/iworkapps/scripted_office.h"

namespace bridge::iworkapps {

using office::FakeOffice;
using PagesScripts = ScriptedOffice;

namespace {

FakeOffice::Content letter(const std::string& body) {
    auto content = FakeOffice::emptyContent(DocumentKind::text);
    content.body = body;
    return content;
}

} // namespace

TEST_F(PagesScripts, MakeADocument) {
    run(createPages("/home/letter.pages", "Dear all,\nyours"));
    EXPECT_EQ(office.files.at("/home/letter.pages").body, "Dear all,\nyours");
    EXPECT_EQ(office.calls, (std::vector<std::string>{"create", "setBodyText", "saveAs", "close"}));
}

TEST_F(PagesScripts, ReadADocument) {
    office.files.emplace("/home/letter.pages", letter("One\nTwo"));
    EXPECT_EQ(text(readPages("/home/letter.pages")), "One\nTwo");
    EXPECT_EQ(office.calls, (std::vector<std::string>{"open", "bodyText", "close"}));
}

TEST_F(PagesScripts, ReadAnEmptyDocument) {
    office.files.emplace("/home/letter.pages", letter(""));
    EXPECT_EQ(text(readPages("/home/letter.pages")), "");
}

TEST_F(PagesScripts, TakeEveryTextAndPathAsItIs) {
    for (const auto& hostile : hostileTexts) {
        const auto path = "/home/" + hostile + ".pages";
        run(createPages(path, hostile));
        EXPECT_EQ(text(readPages(path)), hostile);
        run(exportDocument("Pages", path, path + ".pdf", "PDF"));
        EXPECT_TRUE(office.exports.contains(path + ".pdf"));
    }
    EXPECT_EQ(office.files.size(), hostileTexts.size());
}

TEST_F(PagesScripts, CarryHalfAMillionCharacters) {
    std::string novel;
    for (int character = 0; character < 500'000; ++character)
        novel += character % 80 == 79 ? "\n" : "é";
    run(createPages("/novel.pages", novel));
    EXPECT_EQ(text(readPages("/novel.pages")), novel);
}

TEST_F(PagesScripts, ExportInEveryFormat) {
    office.files.emplace("/l.pages", letter("x"));
    for (const auto& [type, format] : std::vector<std::pair<std::string, ExportFormat>>{
             {"PDF", ExportFormat::pdf},
             {"Microsoft Word", ExportFormat::docx},
             {"EPUB", ExportFormat::epub},
             {"unformatted text", ExportFormat::text},
         }) {
        run(exportDocument("Pages", "/l.pages", "/out/" + type, type));
        EXPECT_EQ(office.exports.at("/out/" + type).format, format);
    }
    EXPECT_EQ(refusal(exportDocument("Pages", "/l.pages", "/out/x", "Microsoft Excel")),
              (Refusal{-10000, "“Microsoft Excel” is an export format of Numbers, not of Pages."}));
    EXPECT_EQ(office.count("close"), 5U);
}

TEST_F(PagesScripts, CloseWhatTheyOpenedWhenSomethingFails) {
    office.files.emplace("/l.pages", letter("x"));
    for (const auto* name : {"setBodyText", "saveAs"}) {
        office.failAt(name, 1, ScriptError(-34, std::string(name) + " is impossible."));
        EXPECT_EQ(refusal(createPages("/new.pages", "x")), (Refusal{-34, std::string(name) + " is impossible."}));
        EXPECT_EQ(office.calls.back(), "close") << name;
    }
    office.failAt("bodyText", 1, ScriptError(-10000, "It is damaged."));
    EXPECT_EQ(refusal(readPages("/l.pages")), (Refusal{-10000, "It is damaged."}));
    EXPECT_EQ(office.count("close"), 3U);
    EXPECT_EQ(office.files.size(), 1U);
}

TEST_F(PagesScripts, SayWhatFailedBeforeThereWasADocument) {
    EXPECT_EQ(refusal(readPages("/no.pages")), (Refusal{-43, "There is no file /no.pages."}));
    office.unavailable = "Install an office program.";
    EXPECT_EQ(refusal(createPages("/new.pages", "x")), (Refusal{-10000, "Install an office program."}));
    EXPECT_EQ(office.count("close"), 0U);
}

TEST_F(PagesScripts, ReportThatTheTimeIsOver) {
    office.timeOutAt("setBodyText", 1);
    EXPECT_EQ(refusal(createPages("/new.pages", "x")).number, ScriptError::timedOut);
    office.hangAt("bodyText", 1);
    office.files.emplace("/l.pages", letter("x"));
    EXPECT_EQ(refusal("tell application \"Pages\"\nset d to open POSIX file \"/l.pages\"\nwith timeout of 0.001 "
                      "seconds\nbody text of d\nend timeout\nend tell")
                  .number,
              ScriptError::timedOut);
    run(createPages("/new.pages", "x"));
}

TEST_F(PagesScripts, SpeakAsPeopleDo) {
    EXPECT_EQ(text("tell application \"Pages\"\n"
                   "activate\n"
                   "tell (make new document with properties {body text:\"Dear all,\"})\n"
                   "set body text to (body text) & return & \"yours\"\n"
                   "save in POSIX file \"/l.pages\"\n"
                   "set its body text to \"other\"\n"
                   "close saving no\n"
                   "end tell\n"
                   "count documents\n"
                   "end tell"),
              "0");
    EXPECT_EQ(office.files.at("/l.pages").body, "Dear all,\nyours");
    EXPECT_EQ(texts("tell application \"Pages\"\n"
                    "make new document\n"
                    "set d to make new document with properties {document template:template \"Blank\"}\n"
                    "{name of d, modified of d, count documents, name of document 2, exists document \"x\", "
                    "name of first template}\n"
                    "end tell"),
              (std::vector<std::string>{"Untitled 2", "false", "2", "Untitled", "false", "Blank"}));
    EXPECT_EQ(text("tell application \"Pages\"\nmake new document\nmake new document\n"
                   "close every document saving no\ncount documents\nend tell"),
              "0");
}

} // namespace bridge::iworkapps
