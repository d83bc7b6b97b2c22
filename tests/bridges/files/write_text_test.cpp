#include "tests/bridges/files/file_bridge_test.h"
#include "tests/support/without_system_call.h"

#include <sys/stat.h>
#include <sys/syscall.h>

namespace bridge {
namespace {

using testing::ElementsAre;

constexpr auto exists = "Operation failed: The destination exists and overwrite is false.";

class WriteText : public FileBridgeTest {
protected:
    mode_t modeOf(const std::string& name) {
        struct stat status {};
        EXPECT_EQ(stat((root / name).c_str(), &status), 0);
        return status.st_mode & 07777;
    }
};
WITH_BOTH_WALKS(WriteText);

TEST_P(WriteText, MakesAFileAndDescribesIt) {
    const auto item = write("note.txt", "Zo\xc3\xab");
    EXPECT_EQ(getFile(root / "note.txt"), "Zo\xc3\xab");
    EXPECT_EQ(list(""), std::vector{item});
    EXPECT_EQ(item.relativePath, "note.txt");
    EXPECT_EQ(item.name, "note.txt");
    EXPECT_FALSE(item.isDirectory);
    EXPECT_EQ(item.size, 4);
    EXPECT_TRUE(item.modifiedAt);
}

TEST_P(WriteText, MakesTheFoldersOnTheWay) {
    EXPECT_EQ(write("x/y/z.txt", "text").relativePath, "x/y/z.txt");
    EXPECT_EQ(getFile(root / "x/y/z.txt"), "text");
    write("x/y/other.txt", "text");
    EXPECT_THAT(names("x/y"), ElementsAre("other.txt", "z.txt"));
}

TEST_P(WriteText, LeavesNothingElseBehind) {
    write("note.txt", "one");
    write("note.txt", "two", true);
    failureOf([&] { write("note.txt", "three"); });
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(root), {}), 1);
}

TEST_P(WriteText, OverwritesOnlyWhenTold) {
    write("note.txt", "one");
    EXPECT_EQ(failureOf([&] { write("note.txt", "two"); }), exists);
    EXPECT_EQ(getFile(root / "note.txt"), "one");
    EXPECT_EQ(write("note.txt", "longer", true).size, 6);
    EXPECT_EQ(getFile(root / "note.txt"), "longer");
    EXPECT_EQ(write("new.txt", "text", true).size, 4);
}

TEST_P(WriteText, TakesAMillionBytesAndNoMore) {
    EXPECT_EQ(write("fits", std::string(1'000'000, 'a')).size, 1'000'000);
    const auto refusal = "Malformed bridge request: Text-file writes cannot exceed 1,000,000 UTF-8 bytes.";
    EXPECT_EQ(failureOf([&] { write("long", std::string(1'000'001, 'a')); }), refusal);
    EXPECT_FALSE(std::filesystem::exists(root / "long"));
    EXPECT_EQ(failureOf([&] { files.writeText({"nobody", "/etc/x", std::string(1'000'001, 'a'), false}); }), refusal);
}

TEST_P(WriteText, RefusesTheRootItself) {
    std::filesystem::create_symlink(".", root / "self");
    for (const auto* path : {"", ".", "./", "self"})
        EXPECT_EQ(failureOf([&] { write(path, "text", true); }),
                  std::string("Path is outside the authorized roots: ") + path);
}

TEST_P(WriteText, RefusesEveryWayOut) {
    std::filesystem::create_symlink(outside / "secret.txt", root / "file link");
    std::filesystem::create_symlink(outside, root / "folder link");
    std::filesystem::create_symlink(outside / "new.txt", root / "dangling");
    for (const auto* path :
         {"file link", "folder link/secret.txt", "folder link/x/y", "dangling", "../outside/x", "a/../b"})
        for (const bool overwrite : {false, true})
            EXPECT_EQ(failureOf([&] { write(path, "text", overwrite); }),
                      std::string("Path is outside the authorized roots: ") + path);
    EXPECT_EQ(getFile(outside / "secret.txt"), "secret");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(outside), {}), 1);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(root), {}), 3);
}

TEST_P(WriteText, WritesThroughALinkInsideTheRoot) {
    putFile(root / "real.txt", "old");
    std::filesystem::create_symlink("real.txt", root / "link");
    std::filesystem::create_symlink(root / "new.txt", root / "dangling");
    EXPECT_EQ(write("link", "new", true).relativePath, "real.txt");
    EXPECT_EQ(write("dangling", "made").relativePath, "new.txt");
    EXPECT_TRUE(std::filesystem::is_symlink(root / "link"));
    EXPECT_EQ(getFile(root / "real.txt"), "new");
    EXPECT_EQ(getFile(root / "new.txt"), "made");
}

TEST_P(WriteText, RefusesToReplaceWhatIsNoFile) {
    std::filesystem::create_directory(root / "folder");
    ASSERT_EQ(mkfifo((root / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(failureOf([&] { write("folder", "text", true); }), "platform: The item is a folder, not a file.");
    EXPECT_EQ(failureOf([&] { write("pipe", "text", true); }), "platform: The item is not a regular file.");
    EXPECT_EQ(failureOf([&] { write("folder", "text"); }), exists);
    EXPECT_EQ(failureOf([&] { write("pipe", "text"); }), exists);
}

TEST_P(WriteText, FailsBelowAFile) {
    putFile(root / "note.txt", "text");
    EXPECT_THAT(failureOf([&] { write("note.txt/deeper", "text"); }), isPlatformError);
    EXPECT_THAT(failureOf([&] { write("note.txt/deeper/still", "text", true); }), isPlatformError);
    EXPECT_EQ(getFile(root / "note.txt"), "text");
}

TEST_P(WriteText, FailsForANameThatIsTooLong) {
    EXPECT_THAT(failureOf([&] { write(std::string(256, 'x'), "text"); }), isPlatformError);
    EXPECT_EQ(write(std::string(255, 'x'), "text").size, 4);
}

TEST_P(WriteText, KeepsThePermissionsOfTheFileItReplaces) {
    for (const mode_t mode : {0600u, 0444u, 0755u, 0666u}) {
        putFile(root / "note.txt", "old");
        chmod((root / "note.txt").c_str(), mode);
        write("note.txt", "new", true);
        EXPECT_EQ(modeOf("note.txt"), mode);
        std::filesystem::remove(root / "note.txt");
    }
}

TEST_P(WriteText, GivesNewFilesAndFoldersWhatTheUmaskLeaves) {
    for (const mode_t mask : {022u, 077u, 002u}) {
        const mode_t before = umask(mask);
        FileDataBridge fresh(defaults, bookmarks, chooser, trash, GetParam());
        fresh.writeText({rootID, "x/note.txt", "", false});
        umask(before);
        EXPECT_EQ(modeOf("x/note.txt"), 0666u & ~mask);
        EXPECT_EQ(modeOf("x"), 0777u & ~mask);
        std::filesystem::remove_all(root / "x");
    }
}

TEST_P(WriteText, HoldsToItsWordWhenAFileAppearsAtTheLastMoment) {
    // The kernel finds the name taken only when the new file is put in its place.
    std::string failure;
    if (!withoutSystemCall(SYS_renameat2, EEXIST, [&] { failure = failureOf([&] { write("note.txt", "text"); }); }))
        GTEST_SKIP() << "no system call filter can be set here";
    EXPECT_EQ(failure, exists);
    EXPECT_TRUE(std::filesystem::is_empty(root));
}

TEST_P(WriteText, WorksOnAVolumeThatCanNotRenameExclusively) {
    putFile(root / "taken.txt", "old");
    std::string failure;
    if (!withoutSystemCall(SYS_renameat2, EINVAL, [&] { failure = failureOf([&] { write("note.txt", "text"); }); }))
        GTEST_SKIP() << "no system call filter can be set here";
    EXPECT_EQ(failure, "");
    EXPECT_EQ(getFile(root / "note.txt"), "text");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(root), {}), 2);
}

} // namespace
} // namespace bridge
