#include "tests/bridges/files/file_bridge_test.h"
#include "tests/support/without_system_call.h"

#include <sys/syscall.h>

namespace bridge {
namespace {

constexpr auto exists = "Operation failed: The destination exists and overwrite is false.";
constexpr auto rootRefused = "Operation failed: An authorized root cannot be moved or overwritten through the bridge.";
constexpr auto samePlace = "Malformed bridge request: Source and destination must be different paths.";
constexpr auto insideItself = "Malformed bridge request: A folder cannot be moved inside itself.";

class MoveFile : public FileBridgeTest {};
WITH_BOTH_WALKS(MoveFile);

TEST_P(MoveFile, RenamesAFileAndDescribesIt) {
    putFile(root / "a", "text");
    const auto item = move("a", "ab");
    EXPECT_FALSE(std::filesystem::exists(root / "a"));
    EXPECT_EQ(getFile(root / "ab"), "text");
    EXPECT_EQ(list(""), std::vector{item});
    EXPECT_EQ(item.relativePath, "ab");
    EXPECT_EQ(item.size, 4);
}

TEST_P(MoveFile, MovesAFolderAndMakesTheFoldersOnTheWay) {
    createDirectory("a");
    write("a/note.txt", "text");
    const auto item = move("a", "x/y/z");
    EXPECT_EQ(item.relativePath, "x/y/z");
    EXPECT_TRUE(item.isDirectory);
    EXPECT_EQ(getFile(root / "x/y/z/note.txt"), "text");
}

TEST_P(MoveFile, AllowsANameThatOnlyBeginsLikeTheSources) {
    createDirectory("a");
    EXPECT_EQ(move("a", "ab").relativePath, "ab");
    EXPECT_EQ(move("ab", "abc/d").relativePath, "abc/d");
}

TEST_P(MoveFile, RefusesTheRootItself) {
    putFile(root / "a", "text");
    EXPECT_EQ(failureOf([&] { move("", "x"); }), rootRefused);
    EXPECT_EQ(failureOf([&] { move("a", "."); }), rootRefused);
    EXPECT_EQ(failureOf([&] { move("a", "", true); }), rootRefused);
    EXPECT_EQ(failureOf([&] { move("", ""); }), rootRefused);
}

TEST_P(MoveFile, RefusesTheSamePlace) {
    putFile(root / "a", "text");
    std::filesystem::create_symlink("a", root / "link");
    for (const bool overwrite : {false, true}) {
        EXPECT_EQ(failureOf([&] { move("a", "./a", overwrite); }), samePlace);
        EXPECT_EQ(failureOf([&] { move("link", "a", overwrite); }), samePlace);
    }
    EXPECT_EQ(getFile(root / "a"), "text");
    EXPECT_TRUE(trashed().empty());
}

TEST_P(MoveFile, RefusesAFolderIntoItself) {
    createDirectory("a/b");
    for (const auto* destination : {"a/b", "a/c", "a/b/c/d"}) {
        EXPECT_EQ(failureOf([&] { move("a", destination); }), insideItself);
        EXPECT_EQ(failureOf([&] { move("a", destination, true); }), insideItself);
    }
    std::filesystem::create_symlink("a", root / "link");
    EXPECT_EQ(failureOf([&] { move("a", "link/c"); }), insideItself);
}

TEST_P(MoveFile, RefusesAFolderOverTheFolderThatHoldsIt) {
    createDirectory("a/b/c");
    EXPECT_EQ(failureOf([&] { move("a/b/c", "a", true); }),
              "Operation failed: A folder cannot be replaced by an item inside it.");
    EXPECT_EQ(failureOf([&] { move("a/b", "a"); }), exists);
    EXPECT_TRUE(std::filesystem::is_directory(root / "a/b/c"));
    EXPECT_TRUE(trashed().empty());
}

TEST_P(MoveFile, ReplacesOnlyWhenTold) {
    putFile(root / "a", "new");
    putFile(root / "b", "old");
    EXPECT_EQ(failureOf([&] { move("a", "b"); }), exists);
    EXPECT_EQ(getFile(root / "b"), "old");
    EXPECT_TRUE(trashed().empty());
}

TEST_P(MoveFile, PutsWhatItReplacesIntoTheTrash) {
    putFile(root / "a", "new");
    createDirectory("b");
    write("b/note.txt", "old");
    move("a", "b", true);
    EXPECT_EQ(getFile(root / "b"), "new");
    ASSERT_EQ(trashed().size(), 1u);
    EXPECT_EQ(trashed()[0].origin, (root / "b").string());
    EXPECT_EQ(getFile(trashed()[0].place / "note.txt"), "old");
}

TEST_P(MoveFile, MovesNothingWhenTheTrashFails) {
    putFile(root / "a", "new");
    putFile(root / "b", "old");
    trash.fails = true;
    EXPECT_EQ(failureOf([&] { move("a", "b", true); }), "platform: The Trash is full.");
    EXPECT_EQ(getFile(root / "a"), "new");
    EXPECT_EQ(getFile(root / "b"), "old");
}

TEST_P(MoveFile, LeavesTheOldItemInTheTrashWhenTheMoveThenFails) {
    putFile(root / "a", "new");
    putFile(root / "b", "old");
    trash.before = [&] { std::filesystem::remove(root / "a"); };
    EXPECT_THAT(failureOf([&] { move("a", "b", true); }), isPlatformError);
    EXPECT_FALSE(std::filesystem::exists(root / "b"));
    EXPECT_EQ(trashed().size(), 1u);
}

TEST_P(MoveFile, NeverReplacesWhatAppearsAtTheLastMoment) {
    putFile(root / "a", "new");
    putFile(root / "b", "old");
    trash.before = [&] {
        std::filesystem::rename(root / "b", root / "c");
        std::filesystem::create_symlink("c", root / "b");
        trash.before = [&] { ADD_FAILURE() << "trashed twice"; };
    };
    // What went to the Trash is the link; the move itself then finds the place free.
    move("a", "b", true);
    EXPECT_EQ(getFile(root / "c"), "old");

    std::string failure;
    putFile(root / "d", "more");
    if (!withoutSystemCall(SYS_renameat2, EEXIST, [&] { failure = failureOf([&] { move("d", "e"); }); }))
        GTEST_SKIP() << "no system call filter can be set here";
    EXPECT_EQ(failure, exists);
}

TEST_P(MoveFile, ChecksTheSourceFirst) {
    EXPECT_EQ(failureOf([&] { move("missing", "/x"); }), "Resource not found: missing");
    putFile(root / "a", "text");
    EXPECT_EQ(failureOf([&] { move("a", "/x"); }), "Path is outside the authorized roots: /x");
    EXPECT_EQ(failureOf([&] { move("../a", "/x"); }), "Path is outside the authorized roots: ../a");
}

TEST_P(MoveFile, RefusesEveryWayOut) {
    putFile(root / "a", "text");
    std::filesystem::create_symlink(outside, root / "link");
    std::filesystem::create_symlink(outside / "secret.txt", root / "file link");
    for (const bool overwrite : {false, true}) {
        EXPECT_EQ(failureOf([&] { move("a", "link/x", overwrite); }), "Path is outside the authorized roots: link/x");
        EXPECT_EQ(failureOf([&] { move("a", "link/x/y", overwrite); }),
                  "Path is outside the authorized roots: link/x/y");
        EXPECT_EQ(failureOf([&] { move("a", "file link", overwrite); }),
                  "Path is outside the authorized roots: file link");
        EXPECT_EQ(failureOf([&] { move("link/secret.txt", "b", overwrite); }),
                  "Path is outside the authorized roots: link/secret.txt");
        EXPECT_EQ(failureOf([&] { move("link", "b", overwrite); }), "Path is outside the authorized roots: link");
    }
    EXPECT_EQ(getFile(outside / "secret.txt"), "secret");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(outside), {}), 1);
}

TEST_P(MoveFile, FailsBelowAFile) {
    putFile(root / "a", "text");
    putFile(root / "b", "text");
    EXPECT_THAT(failureOf([&] { move("a", "b/c"); }), isPlatformError);
    EXPECT_EQ(getFile(root / "a"), "text");
}

TEST_P(MoveFile, MovesTheRealItemWhenALinkInsideTheRootNamesIt) {
    putFile(root / "real", "text");
    std::filesystem::create_symlink("real", root / "link");
    move("link", "moved");
    EXPECT_EQ(getFile(root / "moved"), "text");
    EXPECT_FALSE(std::filesystem::exists(root / "real"));
}

TEST_P(MoveFile, TellsTwoLinksToOneFileApart) {
    putFile(root / "a", "text");
    std::filesystem::create_hard_link(root / "a", root / "b");
    move("a", "b", true);
    EXPECT_EQ(getFile(root / "b"), "text");
    EXPECT_FALSE(std::filesystem::exists(root / "a"));
    EXPECT_EQ(trashed().size(), 1u);
}

TEST_P(MoveFile, WorksOnAVolumeThatCanNotRenameExclusively) {
    putFile(root / "a", "text");
    createDirectory("folder");
    createDirectory("taken");
    std::string failure;
    if (!withoutSystemCall(SYS_renameat2, EINVAL, [&] {
            move("a", "b");
            move("folder", "moved");
            failure = failureOf([&] { move("moved", "taken"); });
        }))
        GTEST_SKIP() << "no system call filter can be set here";
    EXPECT_EQ(names(""), (std::vector<std::string>{"moved", "taken", "b"}));
    EXPECT_EQ(failure, exists);
}

TEST_P(MoveFile, SaysWhenTheDestinationIsOnAnotherVolume) {
    putFile(root / "a", "text");
    std::string failure;
    if (!withoutSystemCall(SYS_renameat2, EXDEV, [&] { failure = failureOf([&] { move("a", "b"); }); }))
        GTEST_SKIP() << "no system call filter can be set here";
    EXPECT_EQ(failure, "platform: The item could not be moved: Invalid cross-device link");
    EXPECT_EQ(getFile(root / "a"), "text");
}

} // namespace
} // namespace bridge
