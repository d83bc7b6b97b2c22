#pragma once

#include "base/platform_error.h"
#include "platform/bookmarks.h"
#include "tests/support/temporary_folder.h"

#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>

// What every adapter of Bookmarks keeps. Instantiate BookmarksContract with a maker of the adapter.

namespace bridge {

class BookmarksContract : public testing::TestWithParam<std::function<std::unique_ptr<Bookmarks>()>> {
protected:
    std::string makeFolder(const std::string& name) {
        std::filesystem::create_directory(temporary / name);
        return (temporary / name).string();
    }

    TemporaryFolder temporary;
    std::unique_ptr<Bookmarks> bookmarks = GetParam()();
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(BookmarksContract);

TEST_P(BookmarksContract, FindsTheFolderAgain) {
    const auto path = makeFolder("documents");
    const auto found = bookmarks->resolve(bookmarks->create(path));
    EXPECT_EQ(found.path, path);
    EXPECT_FALSE(found.isStale);
}

TEST_P(BookmarksContract, SaysWhichFolderItFound) {
    const auto path = makeFolder("documents");
    const auto found = bookmarks->resolve(bookmarks->create(path));
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    if (found.identity) {
        EXPECT_EQ(*found.identity, (FolderIdentity{status.st_dev, status.st_ino}));
    }
}

TEST_P(BookmarksContract, OutlivesTheObjectThatMadeIt) {
    const auto path = makeFolder("documents");
    const auto bookmark = bookmarks->create(path);
    EXPECT_EQ(GetParam()()->resolve(bookmark).path, path);
}

TEST_P(BookmarksContract, FindsAFolderWithAnOddName) {
    const std::string names[] = {"Zo\xc3\xab \xf0\x9f\x90\xb1", "line\nbreak", "quote\"back\\slash",
                                 "\xff\xfe not text", " "};
    for (const auto& name : names) {
        const auto path = makeFolder(name);
        EXPECT_EQ(bookmarks->resolve(bookmarks->create(path)).path, path);
    }
}

TEST_P(BookmarksContract, FindsARenamedFolderOrFails) {
    const auto bookmark = bookmarks->create(makeFolder("before"));
    std::filesystem::rename(temporary / "before", temporary / "after");
    try {
        const auto found = bookmarks->resolve(bookmark);
        EXPECT_EQ(found.path, (temporary / "after").string());
        EXPECT_TRUE(found.isStale);
    } catch (const PlatformError&) {
        // Not finding it is allowed, finding anything else is not.
    }
}

TEST_P(BookmarksContract, FailsWhenTheFolderIsGone) {
    const auto bookmark = bookmarks->create(makeFolder("documents"));
    std::filesystem::remove(temporary / "documents");
    EXPECT_THROW(bookmarks->resolve(bookmark), PlatformError);
}

TEST_P(BookmarksContract, NeverNamesAnotherFolderInTheSamePlace) {
    // Again and again: a file system likes to give a new folder the number of the one just removed.
    for (int round = 0; round < 50; ++round) {
        const auto path = makeFolder("documents");
        const auto bookmark = bookmarks->create(path);
        std::filesystem::remove(path);
        makeFolder("documents");
        EXPECT_THROW(bookmarks->resolve(bookmark), PlatformError);
        std::filesystem::remove(path);
    }
}

TEST_P(BookmarksContract, NeverNamesAFolderThatWasMovedInItsPlace) {
    const auto bookmark = bookmarks->create(makeFolder("documents"));
    makeFolder("other");
    std::filesystem::remove(temporary / "documents");
    std::filesystem::rename(temporary / "other", temporary / "documents");
    EXPECT_THROW(bookmarks->resolve(bookmark), PlatformError);
}

TEST_P(BookmarksContract, RefusesWhatIsNoFolder) {
    putFile(temporary / "file", "text");
    EXPECT_THROW(bookmarks->create((temporary / "file").string()), PlatformError);
    EXPECT_THROW(bookmarks->create((temporary / "missing").string()), PlatformError);
    EXPECT_THROW(bookmarks->create("relative"), PlatformError);
    EXPECT_THROW(bookmarks->create(""), PlatformError);
}

TEST_P(BookmarksContract, RefusesWhatIsNoBookmark) {
    const auto real = bookmarks->create(makeFolder("documents"));
    const std::string texts[] = {
        "", "{}", "[]", "null", "/tmp", real.substr(0, real.size() / 2), std::string(1, '\0') + real};
    for (const auto& text : texts)
        EXPECT_THROW(bookmarks->resolve(text), PlatformError) << text;
}

TEST_P(BookmarksContract, TellsTwoFoldersApart) {
    const auto one = bookmarks->create(makeFolder("one"));
    const auto two = bookmarks->create(makeFolder("two"));
    EXPECT_EQ(bookmarks->resolve(one).path, (temporary / "one").string());
    EXPECT_EQ(bookmarks->resolve(two).path, (temporary / "two").string());
}

TEST_P(BookmarksContract, MayBeAccessedTwiceAtOnce) {
    const auto bookmark = bookmarks->create(makeFolder("documents"));
    const auto one = bookmarks->startAccessing(bookmark);
    const auto two = bookmarks->startAccessing(bookmark);
    EXPECT_NO_THROW(bookmarks->resolve(bookmark));
}

} // namespace bridge
