#include "base/atomic_file.h"

#include "base/platform_error.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <sys/resource.h>

namespace bridge {
namespace {

struct AtomicFile : testing::Test {
    TemporaryFolder temporary;
    std::filesystem::path root = temporary.path();
    FileDescriptor folder{open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};

    struct stat write(const std::string& name, std::string_view content, IfExists ifExists = IfExists::replace,
                      mode_t mode = 0600) {
        return writeFileAtomically(folder.get(), name, content, mode, ifExists);
    }
    std::string read(const std::string& name) {
        std::ifstream file(root / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::set<std::string> names() {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(root))
            found.insert(entry.path().filename().string());
        return found;
    }
};
using Names = std::set<std::string>;

TEST_F(AtomicFile, HasTheContentAndNothingIsLeftBeside) {
    const std::string content = std::string("a\0b\n", 4) + std::string(1'000'000, 'x');
    write("notes.txt", content);
    EXPECT_EQ(read("notes.txt"), content);
    write("notes.txt", "");
    EXPECT_EQ(read("notes.txt"), "");
    EXPECT_EQ(names(), (Names{"notes.txt"}));
}

TEST_F(AtomicFile, HasExactlyTheModeWhateverTheUmask) {
    for (const mode_t mask : {0077, 0000, 0777, 0022}) {
        const mode_t before = umask(mask);
        for (const mode_t mode : {0600, 0644, 0666, 0400, 0755}) {
            const auto status = write("file", "x", IfExists::replace, mode);
            EXPECT_EQ(status.st_mode, S_IFREG | mode);
            struct stat found {};
            EXPECT_EQ(fstatat(folder.get(), "file", &found, AT_SYMLINK_NOFOLLOW), 0);
            EXPECT_EQ(found.st_mode, S_IFREG | mode);
        }
        umask(before);
    }
}

TEST_F(AtomicFile, ReportsTheFileThatWasWritten) {
    for (const auto ifExists : {IfExists::fail, IfExists::replace}) {
        const auto status = write("file", "12345", ifExists);
        struct stat found {};
        ASSERT_EQ(fstatat(folder.get(), "file", &found, AT_SYMLINK_NOFOLLOW), 0);
        EXPECT_EQ(status.st_ino, found.st_ino);
        EXPECT_EQ(status.st_size, 5);
        EXPECT_EQ(status.st_nlink, 1u);
        EXPECT_EQ(found.st_nlink, 1u);
    }
}

TEST_F(AtomicFile, ReplacesALinkAndNotWhatItPointsTo) {
    write("target", "keep");
    std::filesystem::create_symlink("target", root / "link");
    write("link", "new");
    EXPECT_EQ(read("target"), "keep");
    EXPECT_EQ(read("link"), "new");
    EXPECT_TRUE(std::filesystem::is_regular_file(std::filesystem::symlink_status(root / "link")));

    std::filesystem::create_symlink("nowhere", root / "dangling");
    write("dangling", "new");
    EXPECT_EQ(names(), (Names{"target", "link", "dangling"}));
}

TEST_F(AtomicFile, LeavesAnOtherHardLinkWithTheOldContent) {
    write("one", "old");
    std::filesystem::create_hard_link(root / "one", root / "two");
    write("one", "new");
    EXPECT_EQ(read("two"), "old");
}

TEST_F(AtomicFile, ReplacesNothingWhenToldToFail) {
    write("new", "first", IfExists::fail);
    EXPECT_EQ(read("new"), "first");
    EXPECT_THROW(write("new", "second", IfExists::fail), PlatformError);
    EXPECT_EQ(read("new"), "first");

    std::filesystem::create_symlink("nowhere", root / "dangling");
    EXPECT_THROW(write("dangling", "x", IfExists::fail), PlatformError);
    std::filesystem::create_directory(root / "folder");
    EXPECT_THROW(write("folder", "x", IfExists::fail), PlatformError);
    EXPECT_EQ(names(), (Names{"new", "dangling", "folder"}));
}

TEST_F(AtomicFile, LeavesNoTraceWhenTheNameIsTooLong) {
    for (const auto ifExists : {IfExists::replace, IfExists::fail})
        EXPECT_THROW(write(std::string(300, 'n'), "x", ifExists), PlatformError);
    EXPECT_EQ(names(), Names{});
}

TEST_F(AtomicFile, TakesTheLongestNameThereIs) {
    const std::string name(255, 'n');
    write(name, "x");
    EXPECT_EQ(names(), Names{name});
}

TEST_F(AtomicFile, LeavesNoTraceWhenAFolderStandsInTheWay) {
    std::filesystem::create_directories(root / "folder" / "inner");
    EXPECT_THROW(write("folder", "x"), PlatformError);
    EXPECT_THROW(write("..", "x"), PlatformError);
    EXPECT_THROW(write(".", "x"), PlatformError);
    EXPECT_THROW(write("", "x"), PlatformError);
    EXPECT_EQ(names(), (Names{"folder"}));
    EXPECT_TRUE(std::filesystem::is_directory(root / "folder" / "inner"));
}

TEST_F(AtomicFile, SaysWhatWentWrong) {
    std::filesystem::create_directory(root / "folder");
    try {
        write("folder", "x");
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_STREQ(error.what(), "The file could not be put in its place: Is a directory");
    }
    try {
        writeFileAtomically(-1, "x", "x", 0600, IfExists::replace);
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_STREQ(error.what(), "The file could not be created: Bad file descriptor");
    }
}

// Stands in for a full disk: a write that goes in part, then one that fails.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limited{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    void (*m_handler)(int);
    rlimit m_before{};
};

TEST_F(AtomicFile, KeepsTheOldContentWhenThereIsNoRoomForTheNew) {
    write("file", "old");
    std::string problem;
    {
        const FileSizeLimit limit(4096);
        try {
            write("file", std::string(100'000, 'x'));
        } catch (const PlatformError& error) {
            problem = error.what();
        }
    }
    EXPECT_EQ(problem, "The file could not be written: File too large");
    EXPECT_EQ(read("file"), "old");
    EXPECT_EQ(names(), (Names{"file"}));
}

} // namespace
} // namespace bridge
