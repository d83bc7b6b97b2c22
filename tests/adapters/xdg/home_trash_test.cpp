#include "adapters/xdg/home_trash.h"
#include "adapters/xdg/trash_folder.h"
#include "tests/contracts/trash_contract.h"
#include "tests/support/without_system_call.h"

#include <sys/stat.h>
#include <sys/syscall.h>

namespace bridge {
namespace {

class HomeTrashUnderTest : public TrashUnderTest {
public:
    HomeTrashUnderTest() { std::filesystem::create_directory(folder()); }
    Trash& trash() override { return m_trash; }
    std::filesystem::path folder() override { return m_temporary / "work"; }
    std::vector<TrashedItem> contents() override { return readTrash(m_temporary / "data/Trash", "/"); }

private:
    TemporaryFolder m_temporary;
    HomeTrash m_trash{(m_temporary / "data/Trash").string()};
};

INSTANTIATE_TEST_SUITE_P(HomeTrash, TrashContract,
                         testing::Values([] { return std::make_unique<HomeTrashUnderTest>(); }));

class HomeTrashTest : public testing::Test {
protected:
    void throwAway(const std::string& name) {
        const FileDescriptor open(::open(temporary.path().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        trash.moveToTrash({open.get(), name, (temporary / name).string()});
    }
    mode_t modeOf(const std::string& name) {
        struct stat status {};
        EXPECT_EQ(stat((temporary / name).c_str(), &status), 0) << name;
        return status.st_mode & 07777;
    }

    TemporaryFolder temporary;
    HomeTrash trash{(temporary / "home/data/Trash").string()};
};

TEST_F(HomeTrashTest, IsMadeForItsUserAlone) {
    putFile(temporary / "note.txt", "bytes");
    throwAway("note.txt");
    for (const auto* folder : {"home", "home/data", "home/data/Trash", "home/data/Trash/files", "home/data/Trash/info"})
        EXPECT_EQ(modeOf(folder), 0700u) << folder;
    EXPECT_EQ(modeOf("home/data/Trash/info/note.txt.trashinfo"), 0600u);
}

TEST_F(HomeTrashTest, RecordsTheMomentInLocalTime) {
    setenv("TZ", "Asia/Kathmandu-5:45", 1);
    tzset();
    putFile(temporary / "note.txt", "bytes");
    const auto before = time(nullptr);
    throwAway("note.txt");
    const auto info = getFile(temporary / "home/data/Trash/info/note.txt.trashinfo");
    tm local{};
    const auto start = info.find("\nDeletionDate=");
    ASSERT_NE(start, std::string::npos);
    const char* end = strptime(info.c_str() + start + 14, "%Y-%m-%dT%H:%M:%S", &local);
    ASSERT_NE(end, nullptr);
    EXPECT_STREQ(end, "\n");
    const auto recorded = mktime(&local);
    EXPECT_GE(recorded, before);
    EXPECT_LE(recorded, time(nullptr));
    unsetenv("TZ");
    tzset();
}

TEST_F(HomeTrashTest, TakesAFreeNameWhenAnItemHasNoInfoFile) {
    std::filesystem::create_directories(temporary / "home/data/Trash/files");
    putFile(temporary / "home/data/Trash/files/note.txt", "stray");
    putFile(temporary / "note.txt", "bytes");
    throwAway("note.txt");
    EXPECT_EQ(getFile(temporary / "home/data/Trash/files/note.txt"), "stray");
    EXPECT_EQ(getFile(temporary / "home/data/Trash/files/note.txt.2"), "bytes");
    EXPECT_FALSE(std::filesystem::exists(temporary / "home/data/Trash/info/note.txt.trashinfo"));
}

TEST_F(HomeTrashTest, TakesAFreeNameWhenAnInfoFileHasNoItem) {
    std::filesystem::create_directories(temporary / "home/data/Trash/info");
    putFile(temporary / "home/data/Trash/info/note.txt.trashinfo", "stray");
    putFile(temporary / "note.txt", "bytes");
    throwAway("note.txt");
    EXPECT_EQ(getFile(temporary / "home/data/Trash/info/note.txt.trashinfo"), "stray");
    EXPECT_EQ(getFile(temporary / "home/data/Trash/files/note.txt.2"), "bytes");
}

TEST_F(HomeTrashTest, SaysThatAnotherVolumeIsTheReason) {
    putFile(temporary / "note.txt", "bytes");
    const bool filtered = withoutSystemCall(SYS_renameat2, EXDEV, [&] {
        try {
            throwAway("note.txt");
            ADD_FAILURE() << "was moved";
        } catch (const TrashOnAnotherVolume& error) {
            EXPECT_STREQ(error.what(), "The item is on another volume than the Trash.");
        }
    });
    if (!filtered) GTEST_SKIP() << "no system call filter can be set here";
    EXPECT_EQ(getFile(temporary / "note.txt"), "bytes");
    EXPECT_TRUE(std::filesystem::is_empty(temporary / "home/data/Trash/info"));
}

TEST_F(HomeTrashTest, MayBeALinkButItsFoldersMayNot) {
    std::filesystem::create_directories(temporary / "home/data");
    std::filesystem::create_directory(temporary / "elsewhere");
    std::filesystem::create_symlink(temporary / "elsewhere", temporary / "home/data/Trash");
    putFile(temporary / "note.txt", "bytes");
    throwAway("note.txt");
    EXPECT_EQ(getFile(temporary / "elsewhere/files/note.txt"), "bytes");

    std::filesystem::remove_all(temporary / "elsewhere/files");
    std::filesystem::create_directory(temporary / "stranger");
    std::filesystem::create_symlink(temporary / "stranger", temporary / "elsewhere/files");
    putFile(temporary / "note.txt", "bytes");
    EXPECT_THROW(throwAway("note.txt"), PlatformError);
    EXPECT_TRUE(std::filesystem::exists(temporary / "note.txt"));
}

TEST_F(HomeTrashTest, FailsWhenAFileIsInItsPlace) {
    putFile(temporary / "home", "a file");
    putFile(temporary / "note.txt", "bytes");
    EXPECT_THROW(throwAway("note.txt"), PlatformError);
    EXPECT_TRUE(std::filesystem::exists(temporary / "note.txt"));
}

} // namespace
} // namespace bridge
