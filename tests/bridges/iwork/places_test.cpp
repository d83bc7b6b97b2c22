#include "tests/bridges/iwork/iwork_bridge_test.h"

#include <set>

namespace bridge {
namespace {

namespace fs = std::filesystem;

class DocumentPlacesTest : public IWorkBridgeTest {
protected:
    Task<IWorkOperationResult> create(const std::string& path) {
        return bridge.createPagesDocument({rootID, path, "text"});
    }
    Task<PagesDocumentContents> read(const std::string& path) { return bridge.readPagesDocument({rootID, path}); }
    // What all seven operations answer for a place; both places of the export.
    std::set<std::string> everyRefusal(const std::string& id, const std::string& folder) {
        const auto pages = folder + "a.pages", numbers = folder + "a.numbers", key = folder + "a.key";
        return {refusalOf(bridge.createPagesDocument({id, pages, ""})),
                refusalOf(bridge.readPagesDocument({id, pages})),
                refusalOf(bridge.readNumbersRange({id, numbers, {}, {}, "A1"})),
                refusalOf(bridge.createNumbersSpreadsheet({id, numbers, {{{1.0}}}})),
                refusalOf(bridge.writeNumbersRange({id, numbers, {}, {}, "A1", {{{1.0}}}})),
                refusalOf(bridge.createKeynotePresentation({id, key, {{"a", {}}}})),
                refusalOf(bridge.exportDocument({"pages", id, pages, "b.pdf", "pdf"})),
                refusalOf(bridge.exportDocument({"pages", id, "Plan.pages", pages, "pdf"}))};
    }
    std::set<std::string> unsafe(const std::string& folder) {
        std::set<std::string> messages;
        for (const auto* name : {"a.pages", "a.numbers", "a.key"})
            messages.insert("Path is outside the authorized roots: " + folder + name);
        return messages;
    }
};

TEST_F(DocumentPlacesTest, AreInAKnownFolder) {
    EXPECT_EQ(everyRefusal("nobody", ""), std::set<std::string>{"Resource not found: nobody"});
}

TEST_F(DocumentPlacesTest, AreNowhereOutsideTheFolder) {
    fs::create_directory_symlink(outside, root / "link");
    for (const auto* name : {"a.pages", "a.numbers", "a.key"})
        putFile(outside / name, "secret");
    for (const std::string folder : {"../outside/", "/", "link/", "x/../"})
        EXPECT_EQ(everyRefusal(rootID, folder), unsafe(folder));
    EXPECT_EQ(std::distance(fs::directory_iterator(outside), {}), 3);
    EXPECT_FALSE(fs::exists(root / "b.pdf"));
}

TEST_F(DocumentPlacesTest, OfNewDocumentsLeadNowhereOutsideByLinks) {
    fs::create_directory_symlink(outside, root / "link");
    fs::create_symlink(outside / "new.pages", root / "dangling.pages");
    for (const std::string path : {"link/new/a.pages", "dangling.pages"})
        EXPECT_EQ(refusalOf(create(path)), "Path is outside the authorized roots: " + path);
    EXPECT_TRUE(fs::is_empty(outside));
}

TEST_F(DocumentPlacesTest, MustBeThereToBeRead) {
    EXPECT_EQ(refusalOf(read("missing.pages")), "Resource not found: missing.pages");
    EXPECT_EQ(refusalOf(read("missing.txt")), "Resource not found: missing.txt");
    EXPECT_EQ(refusalOf(bridge.readNumbersRange({rootID, "no.numbers", {}, {}, "?"})),
              "Resource not found: no.numbers");
    EXPECT_EQ(refusalOf(bridge.writeNumbersRange({rootID, "no.numbers", {}, {}, "?", {}})),
              "Resource not found: no.numbers");
}

TEST_F(DocumentPlacesTest, HaveTheExtensionOfTheApplication) {
    for (const auto& [path, name] :
         std::initializer_list<std::pair<const char*, const char*>>{{"a.txt", "a.txt"},
                                                                    {"Folder/a", "a"},
                                                                    {"a.pages.txt", "a.pages.txt"},
                                                                    {".pages", ".pages"},
                                                                    {"Folder/.pages", ".pages"},
                                                                    {"a.pages.", "a.pages."},
                                                                    {"apages", "apages"},
                                                                    {"a.pages ", "a.pages "},
                                                                    {"a.numbers", "a.numbers"},
                                                                    {"", "root"}})
        EXPECT_EQ(refusalOf(create(path)), malformed + "Expected a .pages file: " + name);
    EXPECT_FALSE(fs::exists(root / "Folder"));
    EXPECT_EQ(refusalOf(bridge.createKeynotePresentation({rootID, "a.keynote", {}})),
              malformed + "Expected a .key file: a.keynote");
    EXPECT_EQ(refusalOf(bridge.createNumbersSpreadsheet({rootID, "a.key", {}})),
              malformed + "Expected a .numbers file: a.key");
    EXPECT_EQ(failureOf(create("a.PAGES")), "");
    EXPECT_EQ(failureOf(create("..pages")), "");
    EXPECT_EQ(failureOf(create("a.txt.Pages")), "");
}

TEST_F(DocumentPlacesTest, AreNamedForTheFileThatALinkLeadsTo) {
    putFile(root / "real.txt", "text");
    fs::create_symlink("real.txt", root / "link.pages");
    fs::create_symlink("Plan.pages", root / "link.txt");
    EXPECT_EQ(refusalOf(read("link.pages")), malformed + "Expected a .pages file: real.txt");
    EXPECT_EQ(run(read("link.txt")).path, "link.txt");
    EXPECT_THAT(script(), testing::HasSubstr("open POSIX file " + quoted("Plan.pages") + "\n"));
}

TEST_F(DocumentPlacesTest, GoIntoTheScriptQuoted) {
    run(create("The \"new\"\\one\n.pages"));
    EXPECT_THAT(script(), testing::HasSubstr("in POSIX file \"" + root.string() + R"(/The \"new\"\\one\n.pages")"));
}

TEST_F(DocumentPlacesTest, GetTheFoldersOnTheWayToThem) {
    run(create("a/b/New.pages"));
    EXPECT_TRUE(fs::is_directory(root / "a/b"));
    EXPECT_THAT(script(), testing::HasSubstr("POSIX file " + quoted("a/b/New.pages")));
    run(create("a/b/Other.pages"));
    run(bridge.createNumbersSpreadsheet({rootID, "c/New.numbers", {{{1.0}}}}));
    run(bridge.createKeynotePresentation({rootID, "d/New.key", {{"a", {}}}}));
    EXPECT_TRUE(fs::is_directory(root / "c") && fs::is_directory(root / "d"));
}

TEST_F(DocumentPlacesTest, GetNoFolderForARequestThatIsRefused) {
    EXPECT_NE(refusalOf(create("a/New.txt")), "");
    EXPECT_NE(refusalOf(bridge.createPagesDocument({rootID, "a/New.pages", std::string(500'001, 'x')})), "");
    EXPECT_NE(refusalOf(bridge.createNumbersSpreadsheet({rootID, "a/New.numbers", {}})), "");
    EXPECT_NE(refusalOf(bridge.createKeynotePresentation({rootID, "a/New.key", {}})), "");
    EXPECT_NE(refusalOf(bridge.exportDocument({"pages", rootID, "Plan.pages", "a/x", "?"})), "");
    EXPECT_FALSE(fs::exists(root / "a"));
}

TEST_F(DocumentPlacesTest, ThatAreTakenStayAsTheyAre) {
    fs::create_directory(root / "Folder.pages");
    fs::create_symlink("Plan.pages", root / "link.pages");
    for (const auto* path : {"Plan.pages", "Folder.pages", "link.pages"})
        EXPECT_EQ(refusalOf(create(path)), destinationExists) << path;
    EXPECT_EQ(refusalOf(bridge.createNumbersSpreadsheet({rootID, "Plan.numbers", {{{1.0}}}})), destinationExists);
    EXPECT_EQ(refusalOf(bridge.createKeynotePresentation({rootID, "Plan.key", {{"a", {}}}})), destinationExists);
    for (const auto* name : {"Plan.pages", "Plan.numbers", "Plan.key"})
        EXPECT_EQ(getFile(root / name), "document");
    EXPECT_TRUE(fs::is_empty(root / "Folder.pages"));
}

TEST_F(DocumentPlacesTest, ThatAreTakenAreToldAfterEveryOtherFault) {
    EXPECT_EQ(refusalOf(bridge.createPagesDocument({rootID, "Plan.pages", std::string(500'001, 'x')})),
              malformed + "Pages text cannot exceed 500,000 characters.");
    EXPECT_EQ(refusalOf(bridge.createKeynotePresentation({rootID, "Plan.key", {}})),
              malformed + "Keynote presentations require between 1 and 100 slides.");
    EXPECT_THAT(refusalOf(bridge.createNumbersSpreadsheet({rootID, "Plan.numbers", {}})),
                testing::HasSubstr("non-empty"));
}

TEST_F(DocumentPlacesTest, BelowAFileFailAsThePlatformSays) {
    EXPECT_THAT(refusalOf(create("Plan.pages/New.pages")), testing::StartsWith("platform: The folder could not be"));
    EXPECT_EQ(getFile(root / "Plan.pages"), "document");
}

TEST_F(DocumentPlacesTest, ThatNoScriptCanNameAreRefused) {
    const auto odd = root / "odd\xff";
    fs::create_directory(odd);
    putFile(odd / "Plan.pages", "document");
    fs::create_directory_symlink(odd, root / "link");
    const auto refused = "platform: The document's path is not UTF-8 text, so no script can name it.";
    EXPECT_EQ(refusalOf(read("link/Plan.pages")), refused);
    EXPECT_EQ(refusalOf(create("link/New.pages")), refused);
}

} // namespace
} // namespace bridge
