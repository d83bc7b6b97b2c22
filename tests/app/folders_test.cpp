#include "tests/app/installation.h"

#include <unistd.h>

namespace bridge {
namespace {

class Folders : public InstallationTest {
protected:
    Folders() {
        run->start();
        std::filesystem::create_directory(folder / "Documents");
    }
    void wait(Task<> task) { run->loop.runUntilDone(std::move(task)); }
    void add() { wait(model().addFolder()); }
    std::vector<std::string> names() {
        std::vector<std::string> found;
        for (const auto& root : model().files.roots.get())
            found.push_back(root.name);
        return found;
    }
    std::optional<std::string> lastError() { return model().lastError.get(); }

    using Names = std::vector<std::string>;
};

TEST_F(Folders, AreChosenByTheUser) {
    run->folderChooser.answer = folder.file("Documents");
    add();
    EXPECT_EQ(names(), Names{"Documents"});
    EXPECT_EQ(lastError(), std::nullopt);
    ASSERT_EQ(run->folderChooser.questions.size(), 1u);
    EXPECT_EQ(run->folderChooser.questions[0].message, "Brindlefox can only access folders you explicitly add here.");
}

TEST_F(Folders, AreNotAddedWhenTheUserCancels) {
    add();
    EXPECT_EQ(names(), Names());
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(Folders, SayWhenThereIsNoDialog) {
    run->folderChooser.fails = true;
    add();
    EXPECT_EQ(lastError(), "The dialog can't be shown.");
    run->folderChooser.fails = false;
    run->folderChooser.answer = folder.file("Documents");
    add();
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(Folders, AreChosenInOneDialogAtATime) {
    run->folderChooser.answer = folder.file("Documents");
    run->folderChooser.waits = true;
    auto first = model().addFolder();
    first.start();
    add();
    EXPECT_EQ(run->folderChooser.questions.size(), 1u);
    EXPECT_EQ(names(), Names());
    run->folderChooser.answered.open();
    run->finish(std::move(first));
    EXPECT_EQ(names(), Names{"Documents"});
    run->folderChooser.waits = false;
    add();
    EXPECT_EQ(names(), (Names{"Documents", "Documents"}));
}

TEST_F(Folders, ADialogThatGoesAwayLetsTheNextOneCome) {
    run->folderChooser.waits = true;
    {
        auto dropped = model().addFolder();
        dropped.start();
    }
    run->folderChooser.waits = false;
    run->folderChooser.answer = folder.file("Documents");
    add();
    EXPECT_EQ(names(), Names{"Documents"});
}

TEST_F(Folders, AreRemoved) {
    run->folderChooser.answer = folder.file("Documents");
    add();
    const auto id = model().files.roots.get().at(0).id;
    model().removeFolder(id);
    EXPECT_EQ(names(), Names());
    EXPECT_EQ(lastError(), std::nullopt);
    model().removeFolder(id);
    EXPECT_EQ(lastError(), AppleBridgeError::resourceNotFound(id).message());
    wait(model().refresh());
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(Folders, ThatAreGoneAreGoneAtTheNextRefreshAndComeBack) {
    run->folderChooser.answer = folder.file("Documents");
    add();
    std::filesystem::rename(folder / "Documents", folder / "Papers");
    std::filesystem::remove_all(folder / "Papers");
    EXPECT_EQ(names(), Names{"Documents"});
    wait(model().refresh());
    EXPECT_EQ(names(), Names());
}

TEST_F(Folders, ThatAreAwayForAWhileComeBack) {
    std::filesystem::create_directory(folder / "volume");
    std::filesystem::create_directory(folder / "volume/Documents");
    run->folderChooser.answer = folder.file("volume/Documents");
    add();
    const auto shown = model().files.roots.get();
    std::filesystem::rename(folder / "volume", folder / "away");
    wait(model().refresh());
    EXPECT_EQ(names(), Names());
    std::filesystem::rename(folder / "away", folder / "volume");
    wait(model().refreshOnOpening());
    EXPECT_EQ(model().files.roots.get(), shown);
}

// Root may write anywhere, so it is somebody else for a while.
class Somebody {
public:
    Somebody() : m_wasRoot(geteuid() == 0 && seteuid(65534) == 0) {}
    ~Somebody() {
        if (m_wasRoot && seteuid(0) != 0) std::abort();
    }

private:
    bool m_wasRoot;
};

TEST_F(Folders, ThatCanNotBeChangedAreMarked) {
    for (const auto* each : {"Documents", "Archive"}) {
        std::filesystem::create_directory(folder / each);
        run->folderChooser.answer = folder.file(each);
        add();
    }
    EXPECT_EQ(model().readOnlyFolderIDs.get(), std::set<std::string>());
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(folder / "Documents", std::filesystem::perms(0777));
    std::filesystem::permissions(folder / "Archive", std::filesystem::perms(0555));
    std::set<std::string> readOnly;
    {
        const Somebody somebody;
        readOnly = model().files.readOnlyRootIDs();
    }
    EXPECT_EQ(readOnly, std::set{model().files.roots.get().at(1).id});
}

} // namespace
} // namespace bridge
