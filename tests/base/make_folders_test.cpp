#include "base/make_folders.h"

#include "base/platform_error.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace bridge {
namespace {

mode_t permissions(const std::filesystem::path& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

std::string failureOf(const std::filesystem::path& path) {
    try {
        makeFolders(path, "It could not be made");
        return {};
    } catch (const PlatformError& error) {
        return error.what();
    }
}

class MakingFolders : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(MakingFolders, MakesThemAllForTheUserAlone) {
    const auto former = umask(0);
    makeFolders(folder / "a/b/c", "");
    umask(former);
    for (const auto* made : {"a", "a/b", "a/b/c"})
        EXPECT_EQ(permissions(folder / made), 0700U) << made;
}

TEST_F(MakingFolders, LeavesThoseThatAreThereAlone) {
    std::filesystem::create_directory(folder / "open");
    chmod((folder / "open").c_str(), 0755);
    makeFolders(folder / "open/closed", "");
    makeFolders(folder / "open", "");
    EXPECT_EQ(permissions(folder / "open"), 0755U);
    EXPECT_EQ(permissions(folder / "open/closed"), 0700U);
}

TEST_F(MakingFolders, FollowsLinks) {
    std::filesystem::create_directory(folder / "real");
    std::filesystem::create_directory_symlink("real", folder / "link");
    makeFolders(folder / "link/new", "");
    makeFolders(folder / "link", "");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "real/new"));
}

TEST_F(MakingFolders, SaysWhatStandsInTheWay) {
    putFile(folder / "file", "");
    std::filesystem::create_symlink("nowhere/at/all", folder / "dangling");
    for (const auto* path : {"file", "file/below", "file/far/below"})
        EXPECT_EQ(failureOf(folder / path), "It could not be made: Not a directory") << path;
    EXPECT_EQ(failureOf(folder / "dangling/below"), "It could not be made: No such file or directory");
    EXPECT_EQ(failureOf(""), "It could not be made: No such file or directory");
}

TEST_F(MakingFolders, AsksNothingOfTheFoldersAboveOneThatIsThere) {
    if (geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
    makeFolders(folder / "closed/open", "");
    chmod((folder / "closed").c_str(), 0500);
    EXPECT_EQ(failureOf(folder / "closed/open/new"), "");
    EXPECT_EQ(failureOf(folder / "closed/new"), "It could not be made: Permission denied");
    chmod((folder / "closed").c_str(), 0700);
}

} // namespace
} // namespace bridge
