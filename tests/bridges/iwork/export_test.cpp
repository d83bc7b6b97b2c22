#include "tests/bridges/iwork/iwork_bridge_test.h"

#include <array>

namespace bridge {
namespace {

class Exports : public IWorkBridgeTest {
protected:
    Task<IWorkOperationResult> exportAs(const std::string& application, const std::string& format,
                                        const std::string& input, const std::string& output) {
        return bridge.exportDocument({application, rootID, input, output, format});
    }
};

TEST_F(Exports, AreDoneByThisScript) {
    EXPECT_EQ(run(exportAs("pages", "docx", "Plan.pages", "Out/Plan.docx")),
              (IWorkOperationResult{"Pages", "Out/Plan.docx", "export"}));
    EXPECT_EQ(script(), timed(R"(tell application "Pages"
    set targetDocument to missing value
    try
        set targetDocument to open POSIX file )" +
                              quoted("Plan.pages") + R"(
        export targetDocument to POSIX file )" +
                              quoted("Out/Plan.docx") + R"( as Microsoft Word
        close targetDocument saving no
    on error errorMessage number errorNumber
        if targetDocument is not missing value then close targetDocument saving no
        error errorMessage number errorNumber
    end try
end tell)"));
}

TEST_F(Exports, SpeakToTheApplicationOfTheRequest) {
    for (const auto& [application, format, input, display, type] : std::initializer_list<std::array<std::string, 5>>{
             {"NUMBERS", "csv", "Plan.numbers", "Numbers", "CSV"},
             {"Keynote", "MOVIE", "Plan.key", "Keynote", "QuickTime movie"},
             {"pages", "DOCX", "Plan.pages", "Pages", "Microsoft Word"}}) {
        EXPECT_EQ(run(exportAs(application, format, input, "out")).application, display);
        EXPECT_THAT(engine.sources().back(), testing::HasSubstr("    tell application \"" + display + "\"\n"));
        EXPECT_THAT(engine.sources().back(), testing::HasSubstr(" as " + type + "\n"));
    }
}

TEST_F(Exports, NeedAnApplicationAndAFormatOfIt) {
    EXPECT_EQ(refusalOf(exportAs("word", "pdf", "Plan.pages", "a.pdf")),
              malformed + "application must be pages, numbers, or keynote.");
    EXPECT_EQ(refusalOf(exportAs("numbers", "docx", "Plan.numbers", "a.docx")),
              malformed + "Unsupported Numbers export format: docx");
    EXPECT_EQ(refusalOf(exportAs("Pages", "Rich_Text", "Plan.pages", "a.rtf")),
              malformed + "Unsupported Pages export format: Rich_Text");
}

TEST_F(Exports, NeedADocumentOfTheApplication) {
    EXPECT_EQ(refusalOf(exportAs("numbers", "pdf", "Plan.pages", "a.pdf")),
              malformed + "Expected a .numbers file: Plan.pages");
    EXPECT_EQ(refusalOf(exportAs("keynote", "pdf", "Plan.numbers", "a.pdf")),
              malformed + "Expected a .key file: Plan.numbers");
    EXPECT_EQ(refusalOf(exportAs("pages", "pdf", "Other.pages", "a.pdf")), "Resource not found: Other.pages");
}

TEST_F(Exports, GoToAFileOfAnyName) {
    EXPECT_EQ(failureOf(exportAs("pages", "pdf", "Plan.pages", "Plan")), "");
    EXPECT_EQ(failureOf(exportAs("pages", "pdf", "Plan.pages", "Plan.docx")), "");
}

TEST_F(Exports, MakeTheFoldersOfTheirOutput) {
    run(exportAs("pages", "pdf", "Plan.pages", "a/b/Plan.pdf"));
    EXPECT_TRUE(std::filesystem::is_directory(root / "a/b"));
    EXPECT_TRUE(std::filesystem::is_empty(root / "a/b"));
}

TEST_F(Exports, NeverReplaceAnything) {
    putFile(root / "Plan.pdf", "kept");
    std::filesystem::create_directory(root / "Folder");
    std::filesystem::create_symlink("Plan.pdf", root / "link.pdf");
    for (const auto* output : {"Plan.pdf", "Folder", "link.pdf", "Plan.pages", ""})
        EXPECT_EQ(refusalOf(exportAs("pages", "pdf", "Plan.pages", output)), destinationExists) << output;
    EXPECT_EQ(getFile(root / "Plan.pdf"), "kept");
    EXPECT_EQ(getFile(root / "Plan.pages"), "document");
}

TEST_F(Exports, LookAtTheirPlacesFirst) {
    EXPECT_EQ(refusalOf(bridge.exportDocument({"word", "nobody", "a", "b", "?"})), "Resource not found: nobody");
    EXPECT_EQ(refusalOf(exportAs("pages", "?", "Plan.pages", "../b.pdf")),
              "Path is outside the authorized roots: ../b.pdf");
    EXPECT_EQ(refusalOf(exportAs("pages", "?", "missing.pages", "../b.pdf")), "Resource not found: missing.pages");
    EXPECT_THAT(refusalOf(exportAs("pages", "?", "Plan.key", "Plan.pages")), testing::HasSubstr("Expected a .pages"));
    EXPECT_THAT(refusalOf(exportAs("pages", "?", "Plan.pages", "Plan.pages")), testing::HasSubstr("Unsupported"));
}

} // namespace
} // namespace bridge
