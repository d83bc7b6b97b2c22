#include "base/text.h"
#include "tests/bridges/files/file_bridge_test.h"

namespace bridge {
namespace {

constexpr auto key = "authorizedFileRoots.v1";

class FileRoots : public testing::Test {
protected:
    FileRoots() {
        std::filesystem::create_directory(folder);
        putFile(folder / "note.txt", "text");
    }
    std::unique_ptr<FileDataBridge> start() {
        return std::make_unique<FileDataBridge>(defaults, bookmarks, chooser, trash);
    }
    std::optional<AuthorizedFileRootDescriptor> choose(FileDataBridge& files) {
        auto task = files.chooseFolder();
        task.start();
        return task.take();
    }
    std::vector<StoredFileRoot> stored() {
        return decode<std::vector<StoredFileRoot>>(parseJSON(defaults.data(key).value()));
    }
    void store(const std::vector<StoredFileRoot>& roots) { defaults.setData(key, encodeJSON(roots)); }

    TemporaryFolder temporary;
    std::filesystem::path folder = temporary / "Documents";
    MemoryUserDefaults defaults;
    PosixBookmarks posixBookmarks;
    FailingBookmarks bookmarks{posixBookmarks};
    MemoryFolderChooser chooser;
    HomeTrash homeTrash{(temporary / "Trash").string()};
    FailingTrash trash{homeTrash};
};

TEST_F(FileRoots, AreNoneAtFirst) {
    const auto files = start();
    EXPECT_TRUE(files->authorizedRoots().empty());
    EXPECT_FALSE(defaults.contains(key));
}

TEST_F(FileRoots, AreAddedByTheUsersChoice) {
    const auto files = start();
    chooser.answer = folder.string();
    const auto added = choose(*files);
    ASSERT_TRUE(added);
    EXPECT_EQ(added->name, "Documents");
    EXPECT_EQ(added->path, folder.string());
    EXPECT_EQ(added->id.size(), 36u);
    EXPECT_EQ(added->id, uppercase(added->id));
    EXPECT_EQ(files->authorizedRoots(), std::vector{*added});
}

TEST_F(FileRoots, AreAskedForInTheseWords) {
    const auto files = start();
    choose(*files);
    ASSERT_EQ(chooser.questions.size(), 1u);
    EXPECT_EQ(chooser.questions[0].title, "Choose an iCloud Drive folder for Brindlefox");
    EXPECT_EQ(chooser.questions[0].message, "Brindlefox can only access folders you explicitly add here.");
    EXPECT_EQ(chooser.questions[0].confirmLabel, "Allow Folder");
}

TEST_F(FileRoots, StayAsTheyWereWhenTheUserCancels) {
    const auto files = start();
    EXPECT_FALSE(choose(*files));
    EXPECT_TRUE(files->authorizedRoots().empty());
    EXPECT_EQ(defaults.timesSet(), 0);
}

TEST_F(FileRoots, StayAsTheyWereWhenNoBookmarkCanBeMade) {
    const auto files = start();
    bookmarks.failsToCreate = true;
    chooser.answer = folder.string();
    EXPECT_FALSE(choose(*files));
    EXPECT_EQ(defaults.timesSet(), 0);
}

TEST_F(FileRoots, AreKeptAlthoughTheNewBookmarkDoesNotResolve) {
    const auto files = start();
    bookmarks.failsToResolve = true;
    EXPECT_FALSE(files->addFolder(folder.string()));
    EXPECT_TRUE(files->authorizedRoots().empty());
    EXPECT_EQ(stored().size(), 1u);
}

TEST_F(FileRoots, AreStoredAsIdNameAndBookmark) {
    const auto added = start()->addFolder(folder.string());
    const auto json = parseJSON(defaults.data(key).value());
    ASSERT_TRUE(json.array());
    const auto& record = *json.array()->at(0).object();
    EXPECT_EQ(record.size(), 3u);
    EXPECT_EQ(*record.at("id").string(), added->id);
    EXPECT_EQ(*record.at("name").string(), "Documents");
    const auto bookmark = decodeBase64(*record.at("bookmark").string());
    EXPECT_EQ(posixBookmarks.resolve(bookmark.value()).path, folder.string());
}

TEST_F(FileRoots, SurviveARestartInTheOrderOfAdding) {
    std::filesystem::create_directory(temporary / "Attic");
    auto files = start();
    const auto first = files->addFolder(folder.string());
    const auto second = files->addFolder((temporary / "Attic").string());
    files = start();
    EXPECT_EQ(files->authorizedRoots(), (std::vector{*first, *second}));
}

TEST_F(FileRoots, MayNameOneFolderTwice) {
    const auto files = start();
    const auto first = files->addFolder(folder.string());
    const auto second = files->addFolder(folder.string());
    EXPECT_NE(first->id, second->id);
    EXPECT_EQ(first->name, second->name);
    EXPECT_EQ(first->path, second->path);
    EXPECT_EQ(files->authorizedRoots().size(), 2u);
}

TEST_F(FileRoots, AreNamedByTheLastPartOfTheirPath) {
    const auto files = start();
    EXPECT_EQ(files->addFolder(folder.string() + "//")->name, "Documents");
    EXPECT_EQ(files->addFolder("/")->name, "/");
    std::filesystem::create_directory(temporary / "\xff");
    EXPECT_EQ(files->addFolder((temporary / "\xff").string())->name, "\xef\xbf\xbd");
}

TEST_F(FileRoots, AreRemovedById) {
    const auto files = start();
    const auto first = files->addFolder(folder.string());
    const auto second = files->addFolder(folder.string());
    files->removeRoot(first->id);
    EXPECT_EQ(files->authorizedRoots(), std::vector{*second});
    EXPECT_EQ(start()->authorizedRoots(), std::vector{*second});
}

TEST_F(FileRoots, AreNotRemovedByAnUnknownId) {
    const auto files = start();
    const auto id = files->addFolder(folder.string())->id;
    EXPECT_EQ(failureOf([&] { files->removeRoot("nobody"); }), "Resource not found: nobody");
    EXPECT_EQ(failureOf([&] { files->removeRoot(lowercase(id)); }), "Resource not found: " + lowercase(id));
    EXPECT_EQ(files->authorizedRoots().size(), 1u);
}

TEST_F(FileRoots, OfOneIdAreRemovedTogether) {
    const Bytes bookmark{posixBookmarks.create(folder.string())};
    store({{"A", "one", bookmark}, {"B", "two", bookmark}, {"A", "three", bookmark}});
    const auto files = start();
    files->removeRoot("A");
    EXPECT_EQ(stored(), (std::vector<StoredFileRoot>{{"B", "two", bookmark}}));
}

TEST_F(FileRoots, OfOneIdAreFoundByTheFirst) {
    std::filesystem::create_directory(temporary / "Attic");
    store({{"A", "one", {posixBookmarks.create(folder.string())}},
           {"A", "two", {posixBookmarks.create((temporary / "Attic").string())}}});
    EXPECT_EQ(start()->readText({"A", "note.txt", std::nullopt}).content, "text");
}

TEST_F(FileRoots, AreNoneWhenTheStoredListIsUnreadable) {
    for (const auto* bytes : {"", "{", "{}", "[1]", R"([{"id":"A","name":"one"}])", "\xff\xfe",
                              R"([{"id":"A","name":"one","bookmark":"not base64!"}])"}) {
        defaults.setData(key, bytes);
        EXPECT_TRUE(start()->authorizedRoots().empty()) << bytes;
        EXPECT_EQ(defaults.data(key), bytes) << "loading must not write";
        start()->addFolder(folder.string());
        EXPECT_EQ(stored().size(), 1u);
    }
}

TEST_F(FileRoots, AreNoneWhenTheStoredValueIsOfAnotherKind) {
    defaults.setString(key, "[]");
    EXPECT_TRUE(start()->authorizedRoots().empty());
}

TEST_F(FileRoots, WhoseFolderIsGoneAreStoredButNotShown) {
    const auto id = start()->addFolder(folder.string())->id;
    std::filesystem::remove_all(folder);
    const auto files = start();
    EXPECT_TRUE(files->authorizedRoots().empty());
    EXPECT_EQ(stored().size(), 1u);
    EXPECT_EQ(failureOf([&] {
                  files->listFiles({id, ""});
              }),
              "platform: The folder " + folder.string() + " was moved or replaced; add it again.");
    files->removeRoot(id);
    EXPECT_TRUE(stored().empty());
}

TEST_F(FileRoots, ThatCouldNotBeResolvedAreTriedAgain) {
    bookmarks.failsToResolve = true;
    const auto files = start();
    files->addFolder(folder.string());
    EXPECT_TRUE(files->authorizedRoots().empty());
    bookmarks.failsToResolve = false;
    EXPECT_EQ(files->readText({stored()[0].id, "note.txt", std::nullopt}).content, "text");
}

TEST_F(FileRoots, TellWhoWatchesOncePerChange) {
    const auto files = start();
    std::vector<size_t> sizes;
    const auto watching = files->roots.observe([&](const auto& roots) { sizes.push_back(roots.size()); });
    const auto id = files->addFolder(folder.string())->id;
    files->addFolder(folder.string());
    files->removeRoot(id);
    EXPECT_EQ(sizes, (std::vector<size_t>{1, 2, 1}));
}

TEST_F(FileRoots, AreOpenForTheLengthOfOneOperation) {
    const auto files = start();
    const auto id = files->addFolder(folder.string())->id;
    EXPECT_EQ(bookmarks.accesses, 0);
    const auto path = files->withAuthorizedRoot(id, [&](const OpenRoot& root) {
        EXPECT_EQ(bookmarks.accessing, 1);
        return root.path;
    });
    EXPECT_EQ(path, folder.string());
    EXPECT_EQ(bookmarks.accessing, 0);
    EXPECT_EQ(bookmarks.accesses, 1);
}

TEST_F(FileRoots, AreClosedWhenTheOperationFails) {
    const auto files = start();
    const auto id = files->addFolder(folder.string())->id;
    EXPECT_EQ(failureOf([&] {
                  files->withAuthorizedRoot(
                      id, [](const OpenRoot&) { throw AppleBridgeError::operationFailed("by the body"); });
              }),
              "Operation failed: by the body");
    EXPECT_EQ(bookmarks.accessing, 0);
    EXPECT_EQ(bookmarks.accesses, 1);
}

TEST_F(FileRoots, ThatAreUnknownFailEveryOperation) {
    const auto files = start();
    const std::string expected = "Resource not found: nobody";
    EXPECT_EQ(failureOf([&] { files->withAuthorizedRoot("nobody", [](const OpenRoot&) {}); }), expected);
    EXPECT_EQ(failureOf([&] { files->listFiles({"nobody", ""}); }), expected);
    EXPECT_EQ(failureOf([&] { files->readText({"nobody", "a", 5}); }), expected);
    EXPECT_EQ(failureOf([&] { files->writeText({"nobody", "a", "", false}); }), expected);
    EXPECT_EQ(failureOf([&] { files->createDirectory({"nobody", "a"}); }), expected);
    EXPECT_EQ(failureOf([&] { files->moveFile({"nobody", "a", "b", false}); }), expected);
    EXPECT_EQ(failureOf([&] { files->deleteFile({"nobody", "a"}); }), expected);
    EXPECT_EQ(failureOf([&] { files->fileExists("nobody", "a"); }), expected);
    EXPECT_EQ(failureOf([&] { files->confinedURL("nobody", "a", PathMayBeMissing::yes); }), expected);
}

TEST_F(FileRoots, WithAStaleBookmarkAreRefreshedOnFirstUse) {
    const auto files = start();
    const auto id = files->addFolder(folder.string())->id;
    std::filesystem::rename(folder, temporary / "Papers");
    const auto before = stored();
    EXPECT_EQ(files->readText({id, "note.txt", std::nullopt}).content, "text");
    const auto after = stored();
    EXPECT_EQ(after[0].id, before[0].id);
    EXPECT_EQ(after[0].name, "Documents");
    EXPECT_NE(after[0].bookmark, before[0].bookmark);
    EXPECT_FALSE(posixBookmarks.resolve(after[0].bookmark.value).isStale);
    EXPECT_EQ(files->authorizedRoots()[0].path, folder.string()) << "shown as it was until the list is made again";
    EXPECT_EQ(start()->authorizedRoots()[0].path, (temporary / "Papers").string());
}

TEST_F(FileRoots, OnlyTheStaleOneOfSeveralIsRefreshed) {
    const auto files = start();
    files->addFolder(temporary.path().string());
    const auto id = files->addFolder(folder.string())->id;
    files->addFolder(temporary.path().string());
    const auto before = stored();
    std::filesystem::rename(folder, temporary / "Papers");
    files->listFiles({id, ""});
    EXPECT_EQ(stored()[0], before[0]);
    EXPECT_NE(stored()[1], before[1]);
    EXPECT_EQ(stored()[2], before[2]);
}

TEST_F(FileRoots, WhoseStaleBookmarkCanNotBeRefreshedFailThatUse) {
    const auto files = start();
    const auto id = files->addFolder(folder.string())->id;
    const auto before = stored();
    bookmarks.isStale = true;
    bookmarks.failsToCreate = true;
    EXPECT_EQ(failureOf([&] { files->writeText({id, "new.txt", "", false}); }), "platform: No bookmark can be made.");
    EXPECT_FALSE(std::filesystem::exists(folder / "new.txt"));
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(bookmarks.accessing, 0);
    EXPECT_EQ(bookmarks.accesses, 1);
}

TEST_F(FileRoots, ReachedThroughALinkAreConfinedToTheRealFolder) {
    std::filesystem::create_directory_symlink(temporary.path(), temporary / "link");
    const auto files = start();
    const auto id = files->addFolder((temporary / "link/Documents").string())->id;
    EXPECT_EQ(files->readText({id, "note.txt", std::nullopt}).content, "text");
    EXPECT_EQ(files->confinedURL(id, "note.txt", PathMayBeMissing::no), (folder / "note.txt").string());
}

// Finds a folder, but lets another take its place before it is opened.
class LateBookmarks : public Bookmarks {
public:
    explicit LateBookmarks(std::function<void()> late) : m_late(std::move(late)) {}
    std::string create(const std::string& path) override { return m_real.create(path); }
    ResolvedBookmark resolve(const std::string& bookmark) override { return m_real.resolve(bookmark); }
    std::shared_ptr<void> startAccessing(const std::string&) override {
        m_late();
        return nullptr;
    }

private:
    PosixBookmarks m_real;
    std::function<void()> m_late;
};

TEST_F(FileRoots, AreNotMistakenForAFolderThatTakesTheirPlace) {
    std::filesystem::create_directory(temporary / "other");
    putFile(temporary / "other/note.txt", "other");
    LateBookmarks late([&] {
        std::filesystem::rename(folder, temporary / "away");
        std::filesystem::create_directory_symlink("other", folder);
    });
    FileDataBridge files(defaults, late, chooser, trash);
    const auto id = files.addFolder(folder.string())->id;
    EXPECT_EQ(failureOf([&] {
                  files.readText({id, "note.txt", std::nullopt});
              }),
              "platform: Another folder took the place of the authorized folder.");
}

} // namespace
} // namespace bridge
