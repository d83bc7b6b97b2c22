#include "bridges/files/path_confinement.h"
#include "tests/bridges/files/file_bridge_test.h"

#include <climits>

namespace bridge {
namespace {

class PathConfinement : public testing::Test {
protected:
    PathConfinement() {
        std::filesystem::create_directories(root / "a/b");
        std::filesystem::create_directories(temporary / "outside/deep");
        std::filesystem::create_directories(temporary / "rootlike");
        putFile(root / "a/file", "text");
    }
    std::string resolve(const std::string& path, PathMayBeMissing missing = PathMayBeMissing::no) {
        return resolveConfinedPath(root.string(), path, missing).relative();
    }
    std::string failure(const std::string& path, PathMayBeMissing missing = PathMayBeMissing::yes) {
        return failureOf([&] { resolve(path, missing); });
    }
    void link(const std::filesystem::path& target, const std::string& name) {
        std::filesystem::create_symlink(target, root / name);
    }

    TemporaryFolder temporary;
    std::filesystem::path root = temporary / "chosen";
};

TEST_F(PathConfinement, KeepsAPlainPath) {
    EXPECT_EQ(resolve(""), "");
    EXPECT_EQ(resolve("a"), "a");
    EXPECT_EQ(resolve("a/b"), "a/b");
    EXPECT_EQ(resolve("new", PathMayBeMissing::yes), "new");
}

TEST_F(PathConfinement, DropsEmptyPiecesAndFullStops) {
    EXPECT_EQ(resolve("./a"), "a");
    EXPECT_EQ(resolve("."), "");
    EXPECT_EQ(resolve("a//b/"), "a/b");
    EXPECT_EQ(resolve("a/./b/."), "a/b");
    EXPECT_EQ(resolve("a/file/."), "a/file");
    EXPECT_EQ(resolve("...", PathMayBeMissing::yes), "...");
    EXPECT_EQ(resolve("..a/b..", PathMayBeMissing::yes), "..a/b..");
}

TEST_F(PathConfinement, RefusesAbsolutePaths) {
    EXPECT_EQ(failure("/"), "Path is outside the authorized roots: /");
    EXPECT_EQ(failure("/etc/passwd"), "Path is outside the authorized roots: /etc/passwd");
    EXPECT_EQ(failure((root / "a").string()), "Path is outside the authorized roots: " + (root / "a").string());
}

TEST_F(PathConfinement, RefusesEveryStepUpwards) {
    for (const auto* path : {"..", "../chosen/a", "a/../b", "a/..", "a/b/../..", "./..", "a//..//b"})
        EXPECT_EQ(failure(path), std::string("Path is outside the authorized roots: ") + path);
}

TEST_F(PathConfinement, RefusesAZeroByte) {
    for (const auto& path : {std::string("a\0b", 3), std::string("\0", 1), std::string("a\0/../../outside", 16)})
        EXPECT_THROW(resolve(path, PathMayBeMissing::yes), AppleBridgeError);
}

TEST_F(PathConfinement, RefusesALinkThatLeadsOutside) {
    link(temporary / "outside", "absolute");
    link("../outside", "relative");
    link("/", "top");
    link("a/../../outside", "winding");
    for (const auto* path :
         {"absolute", "relative", "top", "winding", "absolute/deep", "relative/missing", "top/etc/passwd"})
        EXPECT_EQ(failure(path), std::string("Path is outside the authorized roots: ") + path);
}

TEST_F(PathConfinement, RefusesALinkToAFolderWhoseNameOnlyBeginsLikeTheRoots) {
    link("../rootlike", "link");
    EXPECT_EQ(failure("link"), "Path is outside the authorized roots: link");
}

TEST_F(PathConfinement, RefusesADanglingLinkThatLeadsOutside) {
    link(temporary / "outside/missing", "link");
    EXPECT_EQ(failure("link"), "Path is outside the authorized roots: link");
}

TEST_F(PathConfinement, FollowsLinksThatStayInside) {
    link("a/b", "relative");
    link(root / "a", "absolute");
    link("../file", "a/b/up");
    link("../chosen/a", "around");
    link(".", "self");
    EXPECT_EQ(resolve("relative"), "a/b");
    EXPECT_EQ(resolve("absolute/file"), "a/file");
    EXPECT_EQ(resolve("relative/up"), "a/file");
    EXPECT_EQ(resolve("around/b"), "a/b");
    EXPECT_EQ(resolve("self/self/self/a"), "a");
    EXPECT_EQ(resolve("self"), "");
}

TEST_F(PathConfinement, FollowsALinkThatComesBackThroughAnotherLinkOutside) {
    std::filesystem::create_directory_symlink(root, temporary / "outside/back");
    link(temporary / "outside/back/a", "link");
    EXPECT_EQ(resolve("link/file"), "a/file");
}

TEST_F(PathConfinement, FollowsADanglingLinkInside) {
    link("a/missing", "link");
    EXPECT_EQ(resolve("link/tail", PathMayBeMissing::yes), "a/missing/tail");
    EXPECT_EQ(failure("link", PathMayBeMissing::no), "Resource not found: link");
}

TEST_F(PathConfinement, LooksAgainAfterALinkCameBackFromSomethingMissing) {
    link("../outside", "out");
    link("missing/../out", "ghost");
    link("missing/deep/../../out/deep", "deeperGhost");
    link("missing/../a/gone/../b", "honest");
    for (const auto* path : {"ghost", "ghost/new", "deeperGhost"})
        EXPECT_EQ(failure(path), std::string("Path is outside the authorized roots: ") + path);
    EXPECT_EQ(resolve("honest", PathMayBeMissing::yes), "a/b");
    EXPECT_EQ(failure("honest", PathMayBeMissing::no), "Resource not found: honest");
}

TEST_F(PathConfinement, FindsNothingWhereLinksGoRoundInCircles) {
    link("second", "first");
    link("first", "second");
    link("own", "own");
    for (const auto* path : {"first/x", "own"}) {
        EXPECT_EQ(failure(path, PathMayBeMissing::no), std::string("Resource not found: ") + path);
        EXPECT_EQ(failure(path, PathMayBeMissing::yes),
                  "platform: The path can't be used: Too many levels of symbolic links");
    }
}

TEST_F(PathConfinement, KeepsAMissingTailAsWritten) {
    link("a", "link");
    EXPECT_EQ(resolve("link/x/y/z", PathMayBeMissing::yes), "a/x/y/z");
    EXPECT_EQ(failure("link/x/y", PathMayBeMissing::no), "Resource not found: link/x/y");
}

TEST_F(PathConfinement, FindsNothingBelowAFile) {
    EXPECT_EQ(failure("a/file/x", PathMayBeMissing::no), "Resource not found: a/file/x");
    EXPECT_EQ(resolve("a/file/x", PathMayBeMissing::yes), "a/file/x");
}

TEST_F(PathConfinement, FindsNothingUnderAnImpossibleName) {
    const std::string name(300, 'x');
    EXPECT_EQ(failure(name, PathMayBeMissing::no), "Resource not found: " + name);
}

TEST_F(PathConfinement, RefusesAPathThatNoSystemCallTakes) {
    std::string path;
    while (path.size() < 2 * PATH_MAX)
        path += "x/";
    EXPECT_EQ(failure(path, PathMayBeMissing::no), "Resource not found: " + path);
    EXPECT_THAT(failure(path), isPlatformError);
}

TEST_F(PathConfinement, KnowsEveryPathInTheRootOfTheFileSystem) {
    EXPECT_EQ(resolveConfinedPath("/", "dev/null", PathMayBeMissing::no).relative(), "dev/null");
    EXPECT_TRUE(resolveConfinedPath("/", "", PathMayBeMissing::no).isRoot());
}

} // namespace
} // namespace bridge
