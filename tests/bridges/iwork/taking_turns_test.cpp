#include "tests/bridges/iwork/iwork_bridge_test.h"

namespace bridge {
namespace {

namespace fs = std::filesystem;

// The applications take their time: a script runs until the test lets it end.
class TakingTurns : public IWorkBridgeTest {
protected:
    TakingTurns() { engine.hold(); }

    Task<IWorkOperationResult> create(const std::string& path) {
        return start(bridge.createPagesDocument({rootID, path, "text"}));
    }
    Task<PagesDocumentContents> read(const std::string& path) {
        return start(bridge.readPagesDocument({rootID, path}));
    }
    template <typename T> static std::string failureIn(Task<T>& started) {
        if (!started.done()) return "It waits.";
        try {
            started.take();
        } catch (const AppleBridgeError& error) {
            return error.message();
        }
        return "";
    }
};

TEST_F(TakingTurns, IsDoneByAllApplications) {
    auto pages = create("a.pages");
    auto numbers = start(bridge.createNumbersSpreadsheet({rootID, "a.numbers", {{{1.0}}}}));
    auto keynote = start(bridge.createKeynotePresentation({rootID, "a.key", {{"a", {}}}}));
    auto reading = read("Plan.pages");
    for (size_t begun = 1; begun <= 4; ++begun) {
        EXPECT_EQ(engine.sources().size(), begun);
        EXPECT_EQ(engine.waiting(), 1u);
        engine.releaseOne();
    }
    EXPECT_TRUE(pages.done() && numbers.done() && keynote.done() && reading.done());
    EXPECT_EQ(engine.mostAtOnce(), 1u);
    EXPECT_THAT(engine.sources()[0], testing::HasSubstr("Pages"));
    EXPECT_THAT(engine.sources()[1], testing::HasSubstr("Numbers"));
    EXPECT_THAT(engine.sources()[2], testing::HasSubstr("Keynote"));
    EXPECT_THAT(engine.sources()[3], testing::HasSubstr("documentText"));
}

TEST_F(TakingTurns, DoesNotDelayARefusal) {
    auto running = read("Plan.pages");
    EXPECT_EQ(refusalOf(bridge.createPagesDocument({rootID, "Plan.pages", ""})), destinationExists);
    EXPECT_EQ(refusalOf(bridge.readPagesDocument({rootID, "no.pages"})), "Resource not found: no.pages");
    EXPECT_FALSE(running.done());
}

TEST_F(TakingTurns, DoesNotReplaceWhatWasMadeMeanwhile) {
    engine.application = [&](const std::string&) { putFile(root / "same.pages", "first"); };
    auto first = create("same.pages"), second = create("same.pages");
    EXPECT_FALSE(second.done());
    engine.releaseOne();
    EXPECT_EQ(failureIn(first), "");
    EXPECT_EQ(failureIn(second), destinationExists);
    EXPECT_EQ(engine.sources().size(), 1u);
    EXPECT_EQ(getFile(root / "same.pages"), "first");
}

TEST_F(TakingTurns, DoesNotExportOverWhatWasMadeMeanwhile) {
    auto first = read("Plan.pages");
    auto second = start(bridge.exportDocument({"pages", rootID, "Plan.pages", "out.pdf", "pdf"}));
    putFile(root / "out.pdf", "theirs");
    engine.releaseOne();
    EXPECT_EQ(failureIn(second), destinationExists);
    EXPECT_EQ(engine.sources().size(), 1u);
}

TEST_F(TakingTurns, FollowsNoLinkThatCameMeanwhile) {
    fs::create_directory(root / "Folder");
    putFile(root / "Folder/a.pages", "inside");
    putFile(outside / "a.pages", "secret");
    auto first = read("Plan.pages");
    auto reading = read("Folder/a.pages");
    auto creating = create("Folder/new.pages");
    auto writing = start(bridge.exportDocument({"pages", rootID, "Folder/a.pages", "out.pdf", "pdf"}));
    fs::rename(root / "Folder", root / "Other");
    fs::create_directory_symlink(outside, root / "Folder");
    engine.releaseOne();
    EXPECT_EQ(failureIn(reading), "Path is outside the authorized roots: Folder/a.pages");
    EXPECT_EQ(failureIn(creating), "Path is outside the authorized roots: Folder/new.pages");
    EXPECT_EQ(failureIn(writing), "Path is outside the authorized roots: Folder/a.pages");
    EXPECT_EQ(engine.sources().size(), 1u);
}

TEST_F(TakingTurns, DoesNotGoWhereALinkInsideCameToLead) {
    fs::create_directory(root / "Folder");
    fs::create_directory(root / "Other");
    putFile(root / "Folder/a.pages", "one");
    putFile(root / "Other/a.pages", "other");
    auto first = read("Plan.pages");
    auto reading = read("Folder/a.pages");
    auto creating = create("Folder/new.pages");
    fs::rename(root / "Folder", root / "Kept");
    fs::create_directory_symlink("Other", root / "Folder");
    engine.releaseOne();
    EXPECT_EQ(failureIn(reading), "Path is outside the authorized roots: Folder/a.pages");
    EXPECT_EQ(failureIn(creating), "Path is outside the authorized roots: Folder/new.pages");
}

TEST_F(TakingTurns, EndsForAFolderThatTheUserTookBack) {
    auto first = read("Plan.pages");
    auto reading = read("Plan.pages");
    auto creating = create("new.pages");
    files.removeRoot(rootID);
    engine.releaseOne();
    EXPECT_EQ(failureIn(first), "");
    EXPECT_EQ(failureIn(reading), "Resource not found: " + rootID);
    EXPECT_EQ(failureIn(creating), "Resource not found: " + rootID);
}

TEST_F(TakingTurns, GoesOnWithoutARequestThatIsDropped) {
    std::optional running = create("a.pages"), waiting = create("b.pages");
    auto last = create("c.pages");
    waiting.reset();
    running.reset();
    EXPECT_EQ(engine.waiting(), 1u);
    engine.releaseOne();
    EXPECT_EQ(failureIn(last), "");
    EXPECT_THAT(engine.sources().back(), testing::HasSubstr("c.pages"));
    EXPECT_EQ(engine.sources().size(), 2u);
}

} // namespace
} // namespace bridge
