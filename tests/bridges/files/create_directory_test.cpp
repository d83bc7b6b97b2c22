#include "tests/bridges/files/file_bridge_test.h"

namespace bridge {
namespace {

class CreateDirectory : public FileBridgeTest {};
WITH_BOTH_WALKS(CreateDirectory);

TEST_P(CreateDirectory, MakesAFolderAndTheOnesOnTheWay) {
    const auto item = createDirectory("x/y/z");
    EXPECT_TRUE(std::filesystem::is_directory(root / "x/y/z"));
    EXPECT_EQ(item.relativePath, "x/y/z");
    EXPECT_EQ(item.name, "z");
    EXPECT_TRUE(item.isDirectory);
    EXPECT_EQ(item.size, std::nullopt);
    EXPECT_EQ(list("x/y"), std::vector{item});
}

TEST_P(CreateDirectory, IsContentWithAFolderThatExists) {
    createDirectory("x");
    write("x/note.txt", "text");
    EXPECT_EQ(createDirectory("x").relativePath, "x");
    EXPECT_EQ(read("x/note.txt").content, "text");
}

TEST_P(CreateDirectory, RefusesTheRootItself) {
    for (const auto* path : {"", ".", "./."})
        EXPECT_EQ(failureOf([&] { createDirectory(path); }),
                  std::string("Path is outside the authorized roots: ") + path);
}

TEST_P(CreateDirectory, FailsWhereAFileIs) {
    putFile(root / "note.txt", "text");
    EXPECT_THAT(failureOf([&] { createDirectory("note.txt"); }), isPlatformError);
    EXPECT_THAT(failureOf([&] { createDirectory("note.txt/deeper"); }), isPlatformError);
    EXPECT_EQ(getFile(root / "note.txt"), "text");
}

TEST_P(CreateDirectory, RefusesEveryWayOut) {
    std::filesystem::create_symlink(outside, root / "link");
    std::filesystem::create_symlink(outside / "new", root / "dangling");
    for (const auto* path : {"link", "link/x", "link/x/y", "dangling", "dangling/x", "../x", "/x"})
        EXPECT_EQ(failureOf([&] { createDirectory(path); }),
                  std::string("Path is outside the authorized roots: ") + path);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(outside), {}), 1);
}

TEST_P(CreateDirectory, GoesThroughALinkInsideTheRoot) {
    createDirectory("real");
    std::filesystem::create_symlink(root / "real", root / "link");
    EXPECT_EQ(createDirectory("link/x").relativePath, "real/x");
    EXPECT_EQ(createDirectory("link").relativePath, "real");
}

} // namespace
} // namespace bridge
