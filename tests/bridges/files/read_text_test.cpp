#include "tests/bridges/files/file_bridge_test.h"
#include "tests/support/without_system_call.h"

#include <limits>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/un.h>

namespace bridge {
namespace {

class ReadText : public FileBridgeTest {};
WITH_BOTH_WALKS(ReadText);

TEST_P(ReadText, GivesTheWholeTextAndItsLength) {
    putFile(root / "note.txt", "Zo\xc3\xab \xf0\x9f\x90\xb1\n");
    const auto contents = read("./note.txt");
    EXPECT_EQ(contents.rootID, rootID);
    EXPECT_EQ(contents.path, "./note.txt");
    EXPECT_EQ(contents.content, "Zo\xc3\xab \xf0\x9f\x90\xb1\n");
    EXPECT_EQ(contents.bytes, 10);
}

TEST_P(ReadText, GivesAnEmptyFileAsEmpty) {
    putFile(root / "empty", "");
    EXPECT_EQ(read("empty").content, "");
    EXPECT_EQ(read("empty").bytes, 0);
}

TEST_P(ReadText, StopsAtTwoHundredThousandBytesUnlessTold) {
    putFile(root / "fits", std::string(200'000, 'a'));
    putFile(root / "long", std::string(200'001, 'a'));
    EXPECT_EQ(read("fits").bytes, 200'000);
    EXPECT_EQ(failureOf([&] { read("long"); }), "Operation failed: File exceeds the 200000-byte read limit.");
    EXPECT_EQ(read("long", 200'001).bytes, 200'001);
}

TEST_P(ReadText, ReadsAtLeastOneByte) {
    putFile(root / "one", "a");
    putFile(root / "two", "ab");
    for (const int64_t limit : {int64_t{1}, int64_t{0}, int64_t{-5}, std::numeric_limits<int64_t>::min()}) {
        EXPECT_EQ(read("one", limit).content, "a");
        EXPECT_EQ(failureOf([&] { read("two", limit); }), "Operation failed: File exceeds the 1-byte read limit.");
    }
}

TEST_P(ReadText, ReadsAtMostAMillionBytes) {
    putFile(root / "fits", std::string(1'000'000, 'a'));
    putFile(root / "long", std::string(1'000'001, 'a'));
    for (const int64_t limit : {int64_t{1'000'000}, int64_t{5'000'000}, std::numeric_limits<int64_t>::max()}) {
        EXPECT_EQ(read("fits", limit).bytes, 1'000'000);
        EXPECT_EQ(failureOf([&] { read("long", limit); }),
                  "Operation failed: File exceeds the 1000000-byte read limit.");
    }
}

TEST_P(ReadText, RefusesWhatIsNotText) {
    for (const auto* bytes : {"\xff", "ab\xc3", "\xed\xa0\x80", "\xc0\x80"}) {
        putFile(root / "data", bytes);
        EXPECT_EQ(failureOf([&] { read("data"); }), "Operation failed: The selected file is not UTF-8 text.");
    }
}

TEST_P(ReadText, KeepsZeroBytesAndByteOrderMarks) {
    const std::string text("\xef\xbb\xbf"
                           "a\0b",
                           6);
    putFile(root / "note.txt", text);
    EXPECT_EQ(read("note.txt").content, text);
}

TEST_P(ReadText, SaysThatNothingIsThere) {
    EXPECT_EQ(failureOf([&] { read("missing"); }), "Resource not found: missing");
    EXPECT_EQ(failureOf([&] { read("missing/deeper"); }), "Resource not found: missing/deeper");
}

TEST_P(ReadText, RefusesAFolder) {
    std::filesystem::create_directory(root / "folder");
    EXPECT_EQ(failureOf([&] { read(""); }), "platform: The item is a folder, not a file.");
    EXPECT_EQ(failureOf([&] { read("folder"); }), "platform: The item is a folder, not a file.");
}

TEST_P(ReadText, NeverWaitsForAPipeOrASocket) {
    ASSERT_EQ(mkfifo((root / "pipe").c_str(), 0600), 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    (root / "socket").string().copy(address.sun_path, sizeof address.sun_path - 1);
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    for (const auto* path : {"pipe", "socket"})
        EXPECT_EQ(failureOf([&] { read(path); }), "platform: The item is not a regular file.") << path;
}

TEST_P(ReadText, RefusesADevice) {
    if (mknod((root / "zero").c_str(), S_IFCHR | 0600, makedev(1, 5)) != 0)
        GTEST_SKIP() << "only root can make a device";
    EXPECT_EQ(failureOf([&] { read("zero"); }), "platform: The item is not a regular file.");
}

TEST_P(ReadText, RefusesEveryWayOut) {
    std::filesystem::create_symlink(outside / "secret.txt", root / "file link");
    std::filesystem::create_symlink(outside, root / "folder link");
    for (const auto* path : {"file link", "folder link/secret.txt", "../outside/secret.txt", "folder link/missing"})
        EXPECT_EQ(failureOf([&] { read(path); }), std::string("Path is outside the authorized roots: ") + path);
    const auto absolute = (outside / "secret.txt").string();
    EXPECT_EQ(failureOf([&] { read(absolute); }), "Path is outside the authorized roots: " + absolute);
    EXPECT_THAT(failureOf([&] { read(std::string("a\0b", 3)); }),
                testing::StartsWith("Path is outside the authorized roots: "));
}

TEST_P(ReadText, FollowsLinksInsideTheRoot) {
    std::filesystem::create_directories(root / "a/b");
    putFile(root / "a/b/note.txt", "text");
    std::filesystem::create_symlink(root / "a", root / "absolute");
    std::filesystem::create_symlink("absolute/b/note.txt", root / "relative");
    EXPECT_EQ(read("relative").content, "text");
    EXPECT_EQ(read("absolute/b/note.txt").path, "absolute/b/note.txt");
}

TEST_P(ReadText, WorksOnAKernelWithoutTheWholeWalk) {
    std::filesystem::create_directories(root / "a/b");
    putFile(root / "a/b/note.txt", "text");
    for (const int error : {ENOSYS, EPERM}) {
        std::string content;
        if (!withoutSystemCall(SYS_openat2, error, [&] { content = read("a/b/note.txt").content; }))
            GTEST_SKIP() << "no system call filter can be set here";
        EXPECT_EQ(content, "text");
    }
}

TEST(ReadTextWhileLinksChange, GivesUpAfterAWhile) {
    // The kernel says each time that a link was swapped in.
    for (const int error : {ELOOP, EXDEV, EAGAIN}) {
        std::string failure;
        if (!withoutSystemCall(SYS_openat2, error, [&] {
                TemporaryFolder temporary;
                std::filesystem::create_directories(temporary / "root/a");
                putFile(temporary / "root/a/note.txt", "text");
                MemoryUserDefaults defaults;
                PosixBookmarks bookmarks;
                MemoryFolderChooser chooser;
                HomeTrash trash((temporary / "Trash").string());
                FileDataBridge files(defaults, bookmarks, chooser, trash);
                const auto id = files.addFolder((temporary / "root").string())->id;
                failure = failureOf([&] { files.readText({id, "a/note.txt", std::nullopt}); });
            }))
            GTEST_SKIP() << "no system call filter can be set here";
        EXPECT_EQ(failure, "Path is outside the authorized roots: a/note.txt");
    }
}

} // namespace
} // namespace bridge
