#include "tests/bridges/files/file_bridge_test.h"

namespace bridge {
namespace {

// Where another program is to make a file.
class MakeWay : public FileBridgeTest {
protected:
    std::string makeWayTo(const std::string& path) { return files.makeWayTo(rootID, path); }
    std::string failure(const std::string& path) {
        return failureOf([&] { makeWayTo(path); });
    }
};
WITH_BOTH_WALKS(MakeWay);

TEST_P(MakeWay, MakesTheFoldersAndNotTheFile) {
    EXPECT_EQ(makeWayTo("a/b/new.txt"), (root / "a/b/new.txt").string());
    EXPECT_TRUE(std::filesystem::is_directory(root / "a/b"));
    EXPECT_TRUE(std::filesystem::is_empty(root / "a/b"));
    EXPECT_EQ(makeWayTo("a/b/new.txt"), (root / "a/b/new.txt").string());
    EXPECT_EQ(makeWayTo("./new.txt"), (root / "new.txt").string());
}

TEST_P(MakeWay, GoesThroughLinksThatStayInside) {
    std::filesystem::create_directory(root / "real");
    std::filesystem::create_directory_symlink("real", root / "link");
    std::filesystem::create_symlink("real/target.txt", root / "dangling");
    EXPECT_EQ(makeWayTo("link/deep/new.txt"), (root / "real/deep/new.txt").string());
    EXPECT_TRUE(std::filesystem::is_directory(root / "real/deep"));
    EXPECT_EQ(makeWayTo("dangling"), (root / "real/target.txt").string());
}

TEST_P(MakeWay, LeadsNowhereOutside) {
    std::filesystem::create_directory_symlink("../outside", root / "link");
    std::filesystem::create_symlink("../outside/new/file.txt", root / "dangling");
    for (const std::string path :
         {"link/new/file.txt", "dangling", "../outside/new/file.txt", "/new/file.txt", "a/../b"})
        EXPECT_EQ(failure(path), "Path is outside the authorized roots: " + path);
    EXPECT_FALSE(std::filesystem::exists(outside / "new"));
}

TEST_P(MakeWay, RefusesTheRootItself) {
    EXPECT_EQ(failure(""), "Path is outside the authorized roots: ");
    EXPECT_EQ(failureOf([&] { files.makeWayTo("nobody", "a"); }), "Resource not found: nobody");
}

TEST_P(MakeWay, FailsWhereAFileStandsInTheWay) {
    putFile(root / "note.txt", "text");
    EXPECT_THAT(failure("note.txt/new.txt"), isPlatformError);
    EXPECT_EQ(getFile(root / "note.txt"), "text");
}

} // namespace
} // namespace bridge
