#include "tests/bridges/iwork/iwork_bridge_test.h"

namespace bridge {
namespace {

class PagesDocuments : public IWorkBridgeTest {
protected:
    Task<IWorkOperationResult> create(const std::string& path, std::string text = "Hello") {
        return bridge.createPagesDocument({rootID, path, std::move(text)});
    }
    Task<PagesDocumentContents> read(const std::string& path) { return bridge.readPagesDocument({rootID, path}); }
};

TEST_F(PagesDocuments, AreMadeByThisScript) {
    EXPECT_EQ(run(create("New.pages", "Dear \"Ada\",\n\\o/\r")),
              (IWorkOperationResult{"Pages", "New.pages", "create"}));
    EXPECT_EQ(script(), timed(R"(tell application "Pages"
    set newDocument to missing value
    try
        set newDocument to make new document
        set body text of newDocument to "Dear \"Ada\",\n\\o/\r"
        save newDocument in POSIX file )" +
                              quoted("New.pages") + R"(
        close newDocument saving yes
    on error errorMessage number errorNumber
        if newDocument is not missing value then close newDocument saving no
        error errorMessage number errorNumber
    end try
end tell)"));
}

TEST_F(PagesDocuments, AreReadByThisScript) {
    engine.willAnswer(scriptText("Dear Ada,\n"));
    EXPECT_EQ(run(read("./Plan.pages")), (PagesDocumentContents{"./Plan.pages", "Dear Ada,\n"}));
    EXPECT_EQ(script(), timed(R"(tell application "Pages"
    set targetDocument to missing value
    try
        set targetDocument to open POSIX file )" +
                              quoted("Plan.pages") + R"(
        set documentText to body text of targetDocument as text
        close targetDocument saving no
        return documentText
    on error errorMessage number errorNumber
        if targetDocument is not missing value then close targetDocument saving no
        error errorMessage number errorNumber
    end try
end tell)"));
}

TEST_F(PagesDocuments, WithoutATextAreEmpty) {
    EXPECT_EQ(run(read("Plan.pages")).text, "");
    EXPECT_EQ(run(create("Empty.pages", "")).path, "Empty.pages");
}

TEST_F(PagesDocuments, AreMadeWithAtMostHalfAMillionCharacters) {
    EXPECT_EQ(refusalOf(create("New.pages", std::string(500'001, 'x'))),
              malformed + "Pages text cannot exceed 500,000 characters.");
    EXPECT_EQ(failureOf(create("New.pages", std::string(500'000, 'x'))), "");
    EXPECT_NE(script().find('"' + std::string(500'000, 'x') + '"'), std::string::npos);
}

TEST_F(PagesDocuments, AreMeasuredInCharactersAsAPersonCountsThem) {
    const auto repeated = [](const std::string& character, int times) {
        std::string text;
        for (int time = 0; time < times; ++time)
            text += character;
        return text;
    };
    EXPECT_EQ(failureOf(create("New.pages", repeated("\r\n", 500'000))), "");
    EXPECT_EQ(failureOf(create("New.pages", repeated("e\u0301", 500'000))), "");
    EXPECT_EQ(refusalOf(create("New.pages", repeated("ä", 500'001))),
              malformed + "Pages text cannot exceed 500,000 characters.");
}

TEST_F(PagesDocuments, AreReadUpToHalfAMillionCharacters) {
    engine.willAnswer(scriptText(std::string(500'000, 'x')));
    EXPECT_EQ(run(read("Plan.pages")).text.size(), 500'000u);
    engine.willAnswer(scriptText(std::string(499'999, 'x') + "ä"));
    EXPECT_EQ(run(read("Plan.pages")).text.size(), 500'001u);
    engine.willAnswer(scriptText(std::string(500'001, 'x')));
    EXPECT_EQ(failureOf(read("Plan.pages")),
              "Operation failed: Pages document exceeds the 500,000-character read limit.");
    EXPECT_EQ(engine.sources().size(), 3u);
}

} // namespace
} // namespace bridge
