#include "adapters/posix/folder_mark.h"
#include "adapters/posix/posix_bookmarks.h"
#include "tests/contracts/bookmarks_contract.h"
#include "tests/support/without_system_call.h"

#include <sys/syscall.h>

namespace bridge {
namespace {

INSTANTIATE_TEST_SUITE_P(Posix, BookmarksContract, testing::Values([] { return std::make_unique<PosixBookmarks>(); }));

std::string failure(Bookmarks& bookmarks, const std::string& bookmark) {
    try {
        return "found " + bookmarks.resolve(bookmark).path;
    } catch (const PlatformError& error) {
        return error.what();
    }
}

class PosixBookmarksTest : public testing::Test {
protected:
    std::filesystem::path makeFolder(const std::string& name) {
        std::filesystem::create_directory(temporary / name);
        return temporary / name;
    }
    // The bookmark of `documents` with one value of its mark replaced.
    std::string altered(const std::string& name, const std::optional<std::string>& value) {
        auto data = parseJSON(bookmarks.create(temporary / "documents"));
        auto& folder = std::get<JSONValue::Object>(std::get<JSONValue::Object>(data.value).at("folder").value);
        if (value)
            folder[name] = JSONValue{*value};
        else
            folder.erase(name);
        return writeJSON(data);
    }

    TemporaryFolder temporary;
    PosixBookmarks bookmarks;
};

TEST_F(PosixBookmarksTest, FindsARenamedFolderBesideItsOldPlace) {
    const auto bookmark = bookmarks.create(makeFolder("before"));
    for (int number = 0; number < 100; ++number)
        makeFolder(std::to_string(number));
    std::filesystem::rename(temporary / "before", temporary / "after");
    const auto found = bookmarks.resolve(bookmark);
    EXPECT_EQ(found.path, (temporary / "after").string());
    EXPECT_TRUE(found.isStale);
}

TEST_F(PosixBookmarksTest, FindsARenamedFolderAlthoughAnotherTookItsPlace) {
    const auto bookmark = bookmarks.create(makeFolder("before"));
    std::filesystem::rename(temporary / "before", temporary / "after");
    makeFolder("before");
    EXPECT_EQ(bookmarks.resolve(bookmark).path, (temporary / "after").string());
}

TEST_F(PosixBookmarksTest, SaysWhatToDoWhenTheFolderWasMovedElsewhere) {
    const auto bookmark = bookmarks.create(makeFolder("documents"));
    std::filesystem::rename(makeFolder("documents"), makeFolder("elsewhere") / "documents");
    EXPECT_EQ(failure(bookmarks, bookmark),
              "The folder " + (temporary / "documents").string() + " was moved or replaced; add it again.");
}

TEST_F(PosixBookmarksTest, IsNotMisledByALinkInItsPlace) {
    const auto bookmark = bookmarks.create(makeFolder("documents"));
    makeFolder("other");
    std::filesystem::remove(temporary / "documents");
    std::filesystem::create_symlink("other", temporary / "documents");
    EXPECT_THROW(bookmarks.resolve(bookmark), PlatformError);
}

TEST_F(PosixBookmarksTest, KeepsThePlaceThatALinkLeadsTo) {
    makeFolder("documents");
    std::filesystem::create_symlink("documents", temporary / "link");
    const auto bookmark = bookmarks.create(temporary / "link");
    std::filesystem::remove(temporary / "link");
    EXPECT_EQ(bookmarks.resolve(bookmark).path, (temporary / "documents").string());
}

TEST_F(PosixBookmarksTest, IsStaleWhenOnlyTheDeviceNumberChanged) {
    makeFolder("documents");
    const auto found = bookmarks.resolve(altered("device", "1"));
    EXPECT_EQ(found.path, (temporary / "documents").string());
    EXPECT_TRUE(found.isStale);
}

TEST_F(PosixBookmarksTest, DoesNotTrustAnInodeNumberAloneOnAnotherDevice) {
    const FolderMark then{"1", "2", std::nullopt, std::nullopt};
    const FolderMark now{"9", "2", "5.6", Bytes{"h"}};
    EXPECT_EQ(compare(then, now), SameFolder::no);
}

TEST_F(PosixBookmarksTest, TellsFoldersApartByEveryPartOfTheirMark) {
    const FolderMark mark{"1", "2", "5.6", Bytes{"h"}};
    EXPECT_EQ(compare(mark, mark), SameFolder::yes);
    EXPECT_EQ(compare(mark, {"1", "3", "5.6", Bytes{"h"}}), SameFolder::no);
    EXPECT_EQ(compare(mark, {"1", "2", "5.7", Bytes{"h"}}), SameFolder::no);
    EXPECT_EQ(compare(mark, {"1", "2", "5.6", Bytes{"i"}}), SameFolder::no);
    EXPECT_EQ(compare(mark, {"9", "2", "5.6", std::nullopt}), SameFolder::afterRemount);
    EXPECT_EQ(compare(mark, {"9", "2", std::nullopt, Bytes{"h"}}), SameFolder::afterRemount);
    EXPECT_EQ(compare(mark, {"9", "2", std::nullopt, std::nullopt}), SameFolder::no);
}

TEST_F(PosixBookmarksTest, RefusesAFolderWhoseInodeNumberWasGivenToAnother) {
    makeFolder("documents");
    EXPECT_THROW(bookmarks.resolve(altered("birth", "1.2")), PlatformError);
    EXPECT_THROW(bookmarks.resolve(altered("inode", "1")), PlatformError);
}

TEST_F(PosixBookmarksTest, WorksWhereTheKernelGivesNoHandles) {
    const auto path = makeFolder("documents");
    const bool filtered = withoutSystemCall(SYS_name_to_handle_at, EPERM, [&] {
        const auto bookmark = bookmarks.create(path);
        EXPECT_EQ(bookmarks.resolve(bookmark).path, path.string());
        EXPECT_FALSE(bookmarks.resolve(bookmark).isStale);
    });
    if (!filtered) GTEST_SKIP() << "no system call filter can be set here";
}

TEST_F(PosixBookmarksTest, ReadsNoOtherVersion) {
    makeFolder("documents");
    auto data = parseJSON(bookmarks.create(temporary / "documents"));
    std::get<JSONValue::Object>(data.value)["version"] = JSONValue{2.0};
    EXPECT_EQ(failure(bookmarks, writeJSON(data)), "This is no bookmark of a folder.");
}

TEST_F(PosixBookmarksTest, RemembersTheRootOfTheFileSystem) {
    EXPECT_EQ(bookmarks.resolve(bookmarks.create("/")).path, "/");
}

} // namespace
} // namespace bridge
