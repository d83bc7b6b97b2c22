#include "adapters/gio/gio_trash.h"
#include "adapters/gio/mount_point.h"
#include "tests/contracts/trash_contract.h"
#include "tests/support/second_volume.h"

#include <sys/stat.h>

namespace bridge {
namespace {

class GioTrashAtHome : public TrashUnderTest {
public:
    GioTrashAtHome() { std::filesystem::create_directory(folder()); }
    Trash& trash() override { return m_trash; }
    std::filesystem::path folder() override { return m_temporary / "work"; }
    std::vector<TrashedItem> contents() override { return readTrash(m_temporary / "Trash", "/"); }

private:
    TemporaryFolder m_temporary;
    HomeTrash m_home{(m_temporary / "Trash").string()};
    GioTrash m_trash{m_home};
};

class GioTrashElsewhere : public TrashUnderTest {
public:
    GioTrashElsewhere() {
        if (volume.isMounted()) std::filesystem::create_directory(folder());
    }
    Trash& trash() override { return m_trash; }
    std::filesystem::path folder() override { return volume.path() / "work"; }
    std::vector<TrashedItem> contents() override { return readTrash(ownTrash(), volume.path()); }
    bool isAvailable() override { return volume.isMounted(); }

    std::filesystem::path ownTrash() const { return volume.path() / (".Trash-" + std::to_string(getuid())); }
    std::filesystem::path sharedTrash() const { return volume.path() / ".Trash" / std::to_string(getuid()); }

    SecondVolume volume;
    TemporaryFolder temporary;

private:
    HomeTrash m_home{(temporary / "Trash").string()};
    GioTrash m_trash{m_home};
};

using Maker = std::function<std::unique_ptr<TrashUnderTest>()>;
INSTANTIATE_TEST_SUITE_P(GioAtHome, TrashContract,
                         testing::Values(Maker([] { return std::make_unique<GioTrashAtHome>(); })));
INSTANTIATE_TEST_SUITE_P(GioElsewhere, TrashContract,
                         testing::Values(Maker([] { return std::make_unique<GioTrashElsewhere>(); })));

class GioTrashTest : public testing::Test {
protected:
    void SetUp() override {
        if (!setting.isAvailable()) GTEST_SKIP() << "no second volume can be mounted here";
        putFile(setting.folder() / "note.txt", "bytes");
    }
    void throwAway() {
        const FileDescriptor open(::open(setting.folder().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        setting.trash().moveToTrash({open.get(), "note.txt", (setting.folder() / "note.txt").string()});
    }

    GioTrashElsewhere setting;
};

TEST_F(GioTrashTest, UsesTheVolumesOwnTrashAndRecordsAPathInsideTheVolume) {
    throwAway();
    EXPECT_EQ(getFile(setting.ownTrash() / "files/note.txt"), "bytes");
    EXPECT_TRUE(
        getFile(setting.ownTrash() / "info/note.txt.trashinfo").starts_with("[Trash Info]\nPath=work/note.txt\n"));
    EXPECT_EQ(std::filesystem::status(setting.ownTrash()).permissions(), std::filesystem::perms::owner_all);
    EXPECT_TRUE(std::filesystem::is_empty(setting.temporary / "Trash/info"));
}

TEST_F(GioTrashTest, UsesTheSharedTrashOfTheVolumeWhenThatIsSticky) {
    std::filesystem::create_directory(setting.volume.path() / ".Trash");
    chmod((setting.volume.path() / ".Trash").c_str(), 01777);
    throwAway();
    EXPECT_EQ(getFile(setting.sharedTrash() / "files/note.txt"), "bytes");
    EXPECT_FALSE(std::filesystem::exists(setting.ownTrash()));
}

TEST_F(GioTrashTest, DistrustsASharedTrashThatIsNotSticky) {
    std::filesystem::create_directory(setting.volume.path() / ".Trash");
    throwAway();
    EXPECT_EQ(getFile(setting.ownTrash() / "files/note.txt"), "bytes");
    EXPECT_TRUE(std::filesystem::is_empty(setting.volume.path() / ".Trash"));
}

TEST_F(GioTrashTest, DistrustsASharedTrashThatIsALink) {
    std::filesystem::create_directory(setting.volume.path() / "trap");
    chmod((setting.volume.path() / "trap").c_str(), 01777);
    std::filesystem::create_directory_symlink("trap", setting.volume.path() / ".Trash");
    throwAway();
    EXPECT_EQ(getFile(setting.ownTrash() / "files/note.txt"), "bytes");
    EXPECT_TRUE(std::filesystem::is_empty(setting.volume.path() / "trap"));
}

TEST_F(GioTrashTest, DistrustsATrashThatIsALink) {
    std::filesystem::create_directory(setting.volume.path() / "trap");
    std::filesystem::create_directory_symlink("trap", setting.ownTrash());
    EXPECT_THROW(throwAway(), PlatformError);
    EXPECT_EQ(getFile(setting.folder() / "note.txt"), "bytes");
    EXPECT_TRUE(std::filesystem::is_empty(setting.volume.path() / "trap"));
}

TEST_F(GioTrashTest, DistrustsATrashOfAnotherUser) {
    std::filesystem::create_directory(setting.ownTrash());
    if (chown(setting.ownTrash().c_str(), 12345, 12345) != 0) GTEST_SKIP() << "only root can give a folder away";
    EXPECT_THROW(throwAway(), PlatformError);
    EXPECT_EQ(getFile(setting.folder() / "note.txt"), "bytes");
}

TEST_F(GioTrashTest, RecordsWhereTheItemIsWhenThePathLeadsElsewhere) {
    const FileDescriptor open(::open(setting.folder().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    setting.trash().moveToTrash({open.get(), "note.txt", "/somewhere/else/note.txt"});
    EXPECT_TRUE(
        getFile(setting.ownTrash() / "info/note.txt.trashinfo").starts_with("[Trash Info]\nPath=work/note.txt\n"));
}

TEST(MountPoint, IsTheDeepestThatHoldsThePath) {
    const SecondVolume volume;
    if (!volume.isMounted()) GTEST_SKIP() << "no second volume can be mounted here";
    EXPECT_EQ(mountPointOf(volume.path().string()), volume.path().string());
    EXPECT_EQ(mountPointOf((volume.path() / "a/b").string()), volume.path().string());
    EXPECT_NE(mountPointOf(volume.path().string() + "-not"), volume.path().string());
}

} // namespace
} // namespace bridge
