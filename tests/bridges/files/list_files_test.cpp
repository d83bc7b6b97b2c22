#include "tests/bridges/files/file_bridge_test.h"

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>

namespace bridge {
namespace {

using testing::ElementsAre;

class ListFiles : public FileBridgeTest {
protected:
    void setModified(const std::filesystem::path& path, int64_t seconds, long nanoseconds = 0) {
        const timespec times[] = {{0, UTIME_OMIT}, {seconds, nanoseconds}};
        ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
    }
};
WITH_BOTH_WALKS(ListFiles);

TEST_P(ListFiles, DescribesFilesAndFolders) {
    putFile(root / "note.txt", "four");
    std::filesystem::create_directory(root / "folder");
    setModified(root / "note.txt", 1786706921, 999'999'999);
    setModified(root / "folder", -1);
    EXPECT_THAT(list(""), ElementsAre(FileItemDescriptor{"folder", "folder", true, std::nullopt, Date{-1}},
                                      FileItemDescriptor{"note.txt", "note.txt", false, 4, Date{1786706921}}));
}

TEST_P(ListFiles, GivesPathsRelativeToTheRoot) {
    std::filesystem::create_directories(root / "x/y/z");
    putFile(root / "x/y/note.txt", "");
    const auto items = list("x/y");
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].relativePath, "x/y/z");
    EXPECT_EQ(items[1].relativePath, "x/y/note.txt");
    EXPECT_EQ(items[1].name, "note.txt");
    EXPECT_EQ(items[1].size, 0);
}

TEST_P(ListFiles, GivesNothingForAnEmptyFolder) {
    EXPECT_TRUE(list("").empty());
}

TEST_P(ListFiles, SortsFoldersFirstAndWithoutRegardToCase) {
    for (const auto* name : {"cherry", "Banana", "apple",
                             "\xc3\xa9"
                             "clair",
                             "zebra", "Apple pie"})
        putFile(root / name, "");
    for (const auto* name : {"zoo", "Attic"})
        std::filesystem::create_directory(root / name);
    EXPECT_THAT(names(""), ElementsAre("Attic", "zoo", "apple", "Apple pie", "Banana", "cherry",
                                       "\xc3\xa9"
                                       "clair",
                                       "zebra"));
}

TEST_P(ListFiles, LeavesOutHiddenFilesButReadsThemByPath) {
    putFile(root / ".hidden", "seen");
    putFile(root / "shown", "");
    EXPECT_THAT(names(""), ElementsAre("shown"));
    EXPECT_EQ(read(".hidden").content, "seen");
    write(".hidden", "new", true);
    EXPECT_EQ(getFile(root / ".hidden"), "new");
}

TEST_P(ListFiles, TakesOnlyAFolder) {
    putFile(root / "note.txt", "");
    EXPECT_EQ(failureOf([&] { list("note.txt"); }), "Resource not found: note.txt");
    EXPECT_EQ(failureOf([&] { list("missing"); }), "Resource not found: missing");
    EXPECT_EQ(failureOf([&] { list("note.txt/x"); }), "Resource not found: note.txt/x");
}

TEST_P(ListFiles, DescribesALinkAndNotWhatItPointsTo) {
    std::filesystem::create_symlink(outside / "secret.txt", root / "file link");
    std::filesystem::create_symlink(outside, root / "folder link");
    std::filesystem::create_symlink("nowhere", root / "dangling");
    const auto items = list("");
    ASSERT_EQ(items.size(), 3u);
    for (const auto& item : items) {
        EXPECT_FALSE(item.isDirectory) << item.name;
        EXPECT_EQ(item.size, static_cast<int64_t>(std::filesystem::read_symlink(root / item.name).string().size()));
    }
}

TEST_P(ListFiles, FollowsALinkInsideTheRoot) {
    std::filesystem::create_directory(root / "real");
    putFile(root / "real/note.txt", "");
    std::filesystem::create_symlink(root / "real", root / "link");
    EXPECT_EQ(list("link")[0].relativePath, "real/note.txt");
}

TEST_P(ListFiles, RefusesALinkOutOfTheRoot) {
    std::filesystem::create_symlink(outside, root / "link");
    EXPECT_EQ(failureOf([&] { list("link"); }), "Path is outside the authorized roots: link");
}

TEST_P(ListFiles, ShowsNamesThatAreNotText) {
    putFile(root / "bad\xff\xfename", "");
    putFile(root / "good", "");
    EXPECT_THAT(names(""), ElementsAre("bad\xef\xbf\xbd\xef\xbf\xbdname", "good"));
}

TEST_P(ListFiles, ShowsPipesAndSocketsWithoutOpeningThem) {
    ASSERT_EQ(mkfifo((root / "pipe").c_str(), 0600), 0);
    const auto items = list("");
    ASSERT_EQ(items.size(), 1u);
    EXPECT_FALSE(items[0].isDirectory);
    EXPECT_EQ(items[0].size, 0);
}

TEST_P(ListFiles, LeavesOutADateThatCanNotBeWritten) {
    // Past the year 9999; some file systems can't keep it either.
    putFile(root / "note.txt", "");
    setModified(root / "note.txt", 300'000'000'000);
    struct stat status;
    ASSERT_EQ(stat((root / "note.txt").c_str(), &status), 0);
    const auto modified = list("")[0].modifiedAt;
    if (status.st_mtim.tv_sec > 253402300799) {
        EXPECT_EQ(modified, std::nullopt);
    }
    if (modified) {
        EXPECT_EQ(parseDate(formatDate(*modified)), modified);
    }
}

TEST_P(ListFiles, SortsTenThousandEntries) {
    for (int number = 0; number < 10'000; ++number)
        putFile(root / ("file " + std::to_string(number)), "");
    const auto items = list("");
    ASSERT_EQ(items.size(), 10'000u);
    EXPECT_EQ(items.front().name, "file 0");
    EXPECT_EQ(items[1].name, "file 1");
    EXPECT_EQ(items.back().name, "file 9999");
}

TEST_P(ListFiles, TellsOnlyWhetherSomethingExists) {
    putFile(root / "note.txt", "");
    std::filesystem::create_symlink("nowhere", root / "dangling");
    std::filesystem::create_symlink(outside, root / "link");
    EXPECT_TRUE(files.fileExists(rootID, ""));
    EXPECT_TRUE(files.fileExists(rootID, "note.txt"));
    EXPECT_FALSE(files.fileExists(rootID, "missing"));
    EXPECT_FALSE(files.fileExists(rootID, "missing/deeper"));
    EXPECT_FALSE(files.fileExists(rootID, "note.txt/deeper"));
    EXPECT_FALSE(files.fileExists(rootID, "dangling"));
    EXPECT_FALSE(files.fileExists(rootID, std::string(300, 'x')));
    EXPECT_EQ(failureOf([&] { files.fileExists(rootID, "link/secret.txt"); }),
              "Path is outside the authorized roots: link/secret.txt");
}

TEST_P(ListFiles, GivesTheConfinedPlaceToOthers) {
    std::filesystem::create_directory(root / "real");
    std::filesystem::create_symlink("real", root / "link");
    EXPECT_EQ(files.confinedURL(rootID, "", PathMayBeMissing::no), root.string());
    EXPECT_EQ(files.confinedURL(rootID, "link/new.txt", PathMayBeMissing::yes), (root / "real/new.txt").string());
    EXPECT_EQ(failureOf([&] { files.confinedURL(rootID, "link/new.txt", PathMayBeMissing::no); }),
              "Resource not found: link/new.txt");
    EXPECT_EQ(failureOf([&] { files.confinedURL(rootID, "../x", PathMayBeMissing::yes); }),
              "Path is outside the authorized roots: ../x");
}

} // namespace
} // namespace bridge
