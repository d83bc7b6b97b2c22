#include "tests/bridges/files/file_bridge_test.h"

namespace bridge {
namespace {

constexpr auto rootRefused = "Operation failed: An authorized root cannot be deleted through the bridge.";

class DeleteFile : public FileBridgeTest {};
WITH_BOTH_WALKS(DeleteFile);

TEST_P(DeleteFile, MovesAFileToTheTrash) {
    write("x/note.txt", "text");
    remove("x/note.txt");
    EXPECT_TRUE(std::filesystem::is_empty(root / "x"));
    ASSERT_EQ(trashed().size(), 1u);
    EXPECT_EQ(trashed()[0].origin, (root / "x/note.txt").string());
    EXPECT_EQ(getFile(trashed()[0].place), "text");
}

TEST_P(DeleteFile, MovesAFolderToTheTrash) {
    write("x/y/note.txt", "text");
    remove("x/");
    EXPECT_TRUE(std::filesystem::is_empty(root));
    EXPECT_EQ(getFile(trashed().at(0).place / "y/note.txt"), "text");
}

TEST_P(DeleteFile, RefusesTheRootItself) {
    std::filesystem::create_symlink(root, root / "self");
    for (const auto* path : {"", ".", "./", "self"})
        EXPECT_EQ(failureOf([&] { remove(path); }), rootRefused);
    EXPECT_TRUE(std::filesystem::exists(root));
}

TEST_P(DeleteFile, SaysThatNothingIsThere) {
    EXPECT_EQ(failureOf([&] { remove("missing"); }), "Resource not found: missing");
}

TEST_P(DeleteFile, LeavesTheItemWhenTheTrashFails) {
    write("note.txt", "text");
    trash.fails = true;
    EXPECT_EQ(failureOf([&] { remove("note.txt"); }), "platform: The Trash is full.");
    EXPECT_EQ(getFile(root / "note.txt"), "text");
}

TEST_P(DeleteFile, RefusesEveryWayOut) {
    std::filesystem::create_symlink(outside, root / "link");
    std::filesystem::create_symlink(outside / "secret.txt", root / "file link");
    for (const auto* path : {"link", "link/secret.txt", "file link", "../outside", "/etc"})
        EXPECT_EQ(failureOf([&] { remove(path); }), std::string("Path is outside the authorized roots: ") + path);
    EXPECT_EQ(getFile(outside / "secret.txt"), "secret");
    EXPECT_TRUE(trashed().empty());
}

} // namespace
} // namespace bridge
