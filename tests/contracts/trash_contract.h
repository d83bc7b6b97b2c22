#pragma once

#include "base/file_descriptor.h"
#include "base/platform_error.h"
#include "platform/trash.h"
#include "tests/support/read_trash.h"

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

// What every adapter of Trash keeps. Instantiate TrashContract with a maker of the adapter and its surroundings.

namespace bridge {

class TrashUnderTest {
public:
    virtual ~TrashUnderTest() = default;
    virtual Trash& trash() = 0;
    virtual std::filesystem::path folder() = 0; // existing, writable, for things to throw away
    virtual std::vector<TrashedItem> contents() = 0;
    virtual bool isAvailable() { return true; }
};

class TrashContract : public testing::TestWithParam<std::function<std::unique_ptr<TrashUnderTest>()>> {
protected:
    void SetUp() override {
        if (!setting->isAvailable()) GTEST_SKIP() << "no second volume can be mounted here";
    }
    void throwAway(const std::string& name) {
        const FileDescriptor open(::open(setting->folder().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        setting->trash().moveToTrash({open.get(), name, (setting->folder() / name).string()});
    }
    TrashedItem onlyItem() {
        const auto items = setting->contents();
        EXPECT_EQ(items.size(), 1u);
        return items.empty() ? TrashedItem{} : items.front();
    }

    std::unique_ptr<TrashUnderTest> setting = GetParam()();
};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TrashContract);

TEST_P(TrashContract, KeepsAFileAndWhereItCameFrom) {
    putFile(setting->folder() / "note.txt", "bytes");
    throwAway("note.txt");
    EXPECT_FALSE(std::filesystem::exists(setting->folder() / "note.txt"));
    EXPECT_EQ(getFile(onlyItem().place), "bytes");
    EXPECT_EQ(onlyItem().origin, (setting->folder() / "note.txt").string());
}

TEST_P(TrashContract, KeepsAFolderWithAllThatIsInIt) {
    std::filesystem::create_directories(setting->folder() / "folder/deep");
    putFile(setting->folder() / "folder/deep/note.txt", "bytes");
    throwAway("folder");
    EXPECT_EQ(getFile(onlyItem().place / "deep/note.txt"), "bytes");
}

TEST_P(TrashContract, MovesALinkAndNotWhatItPointsTo) {
    putFile(setting->folder() / "note.txt", "bytes");
    std::filesystem::create_symlink("note.txt", setting->folder() / "link");
    throwAway("link");
    EXPECT_EQ(getFile(setting->folder() / "note.txt"), "bytes");
    EXPECT_TRUE(std::filesystem::is_symlink(onlyItem().place));
}

TEST_P(TrashContract, KeepsItemsOfOneNameApart) {
    for (int number = 0; number < 60; ++number) {
        putFile(setting->folder() / "note.txt", std::to_string(number));
        throwAway("note.txt");
    }
    std::vector<int> kept;
    for (const auto& item : setting->contents()) {
        kept.push_back(std::stoi(getFile(item.place)));
        EXPECT_EQ(item.origin, (setting->folder() / "note.txt").string());
    }
    std::ranges::sort(kept);
    ASSERT_EQ(kept.size(), 60u);
    for (int number = 0; number < 60; ++number)
        EXPECT_EQ(kept[static_cast<size_t>(number)], number);
}

TEST_P(TrashContract, KeepsOddNames) {
    const std::string names[] = {
        "Zo\xc3\xab \xf0\x9f\x90\xb1",      "line\nbreak", "100%25", "\xff not text", " ", "-rf", ".hidden",
        "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d", "a.trashinfo"};
    std::vector<std::string> expected;
    for (const auto& name : names) {
        putFile(setting->folder() / name, name);
        throwAway(name);
        expected.push_back((setting->folder() / name).string());
    }
    std::vector<std::string> origins;
    for (const auto& item : setting->contents()) {
        origins.push_back(item.origin);
        EXPECT_EQ((setting->folder() / getFile(item.place)).string(), item.origin);
    }
    std::ranges::sort(expected);
    std::ranges::sort(origins);
    EXPECT_EQ(origins, expected);
}

TEST_P(TrashContract, KeepsTheLongestNames) {
    // 255 bytes, of which a cut must not split the last character.
    const std::string names[] = {std::string(255, 'a'),
                                 std::string(243, 'b') + "\xe2\x82\xac\xe2\x82\xac\xe2\x82\xac\xe2\x82\xac",
                                 std::string(255, '\xff')};
    for (const auto& name : names)
        for (int number = 0; number < 30; ++number) {
            putFile(setting->folder() / name, "bytes");
            throwAway(name);
        }
    EXPECT_EQ(setting->contents().size(), 90u);
}

TEST_P(TrashContract, KeepsAThousandItems) {
    for (int number = 0; number < 1000; ++number) {
        const auto name = std::to_string(number);
        putFile(setting->folder() / name, name);
        throwAway(name);
    }
    EXPECT_EQ(setting->contents().size(), 1000u);
    EXPECT_TRUE(std::filesystem::is_empty(setting->folder()));
}

TEST_P(TrashContract, FailsForAMissingItemAndKeepsNothing) {
    EXPECT_THROW(throwAway("missing"), PlatformError);
    EXPECT_TRUE(setting->contents().empty());
}

TEST_P(TrashContract, RefusesANameThatLeadsElsewhere) {
    std::filesystem::create_directory(setting->folder() / "folder");
    putFile(setting->folder() / "folder/note.txt", "bytes");
    for (const auto* name : {"", ".", "..", "folder/note.txt", "folder/"})
        EXPECT_THROW(throwAway(name), PlatformError) << name;
    EXPECT_EQ(getFile(setting->folder() / "folder/note.txt"), "bytes");
    EXPECT_TRUE(setting->contents().empty());
}

TEST_P(TrashContract, TakesTheItemOfTheOpenFolderWhateverThePathSays) {
    std::filesystem::create_directory(setting->folder() / "mine");
    putFile(setting->folder() / "mine/note.txt", "mine");
    const FileDescriptor open(::open((setting->folder() / "mine").c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    std::filesystem::rename(setting->folder() / "mine", setting->folder() / "moved");
    std::filesystem::create_directory(setting->folder() / "mine");
    putFile(setting->folder() / "mine/note.txt", "other");

    setting->trash().moveToTrash({open.get(), "note.txt", (setting->folder() / "mine/note.txt").string()});
    EXPECT_EQ(getFile(setting->folder() / "mine/note.txt"), "other");
    EXPECT_EQ(getFile(onlyItem().place), "mine");
}

} // namespace bridge
