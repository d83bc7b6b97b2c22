#include "tests/bridges/files/file_bridge_test.h"

#include <atomic>
#include <cstdio>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>
#include <thread>

namespace bridge {
namespace {

// While one thread exchanges folders and files of the root with links that lead outside, every operation runs against
// them. Nothing outside may be seen, changed or made.
class ExchangedLinks : public FileBridgeTest {
protected:
    static constexpr int rounds = 100'000;
    static constexpr int64_t outsideSize = 4242; // of every file outside, and of no file inside

    ExchangedLinks() {
        std::filesystem::remove(outside / "secret.txt");
        for (const auto* name :
             {"note.txt", "write.txt", "a.txt", "b.txt", "gone.txt", "deep/note.txt", "only outside.txt"}) {
            std::filesystem::create_directories((outside / name).parent_path());
            putFile(outside / name, std::string(outsideSize, 'X'));
        }
        std::filesystem::create_directories(root / "swing/deep");
        putFile(root / "swing/note.txt", "inside");
        putFile(root / "swing/deep/note.txt", "inside");
        std::filesystem::create_symlink(outside, root / "swing link");
        putFile(root / "leaf.txt", "inside");
        std::filesystem::create_symlink(outside / "note.txt", root / "leaf link");
        renewTarget();
    }

    // The write replaces the link once it meets it, so it is made anew.
    void renewTarget() {
        unlink((root / "target.txt").c_str());
        unlink((root / "target link").c_str());
        putFile(root / "target.txt", "inside");
        std::filesystem::create_symlink(outside / "write.txt", root / "target link");
    }

    void exchange(const char* one, const char* other) {
        renameat2(AT_FDCWD, (root / one).c_str(), AT_FDCWD, (root / other).c_str(), RENAME_EXCHANGE);
    }

    // Every name below a folder with its type, permissions, inode, time and content.
    static std::map<std::string, std::string> snapshot(const std::filesystem::path& folder) {
        std::map<std::string, std::string> all;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            struct stat status {};
            EXPECT_EQ(lstat(entry.path().c_str(), &status), 0);
            auto& text = all[entry.path().string()];
            for (const int64_t number :
                 {int64_t(status.st_mode), int64_t(status.st_ino), int64_t(status.st_mtim.tv_sec),
                  int64_t(status.st_mtim.tv_nsec), int64_t(status.st_nlink)})
                text += std::to_string(number) + " ";
            if (entry.is_regular_file()) text += getFile(entry.path());
        }
        return all;
    }

    void check(const FileItemDescriptor& item) {
        EXPECT_NE(item.size, outsideSize) << item.relativePath;
        EXPECT_NE(item.name, "only outside.txt");
    }
    void check(const std::vector<FileItemDescriptor>& items) {
        for (const auto& item : items)
            check(item);
    }
    void check(const TextFileContents& contents) { EXPECT_EQ(contents.content.find('X'), std::string::npos); }

    template <typename Operation> void attempt(Operation operation) {
        const auto failure = failureOf(operation);
        ++(failure.empty() ? m_succeeded : failure.starts_with("Path is outside") ? m_refused : m_otherwise);
    }

    void runEveryOperation(int number) {
        const auto own = std::to_string(number % 8);
        for (const std::string folder : {"swing", "swing link"}) {
            attempt([&] { check(list(folder)); });
            attempt([&] { check(list(folder + "/deep")); });
            attempt([&] { check(read(folder + "/note.txt")); });
            attempt([&] { check(read(folder + "/deep/note.txt")); });
            attempt([&] { EXPECT_FALSE(files.fileExists(rootID, folder + "/only outside.txt")); });
            attempt([&] { files.confinedURL(rootID, folder + "/note.txt", PathMayBeMissing::no); });
            attempt([&] { files.makeWayTo(rootID, folder + "/way " + own + "/x/new.txt"); });
            attempt([&] { check(createDirectory(folder + "/made " + own + "/x/y")); });
            attempt([&] { check(move(folder + "/a.txt", folder + "/b.txt", true)); });
            attempt([&] { check(move("in.txt", folder + "/moved " + own + "/in.txt", true)); });
            attempt([&] { check(move(folder + "/moved " + own + "/in.txt", "in.txt", true)); });
            attempt([&] { remove(folder + "/gone.txt"); });
        }
        attempt([&] { check(read("leaf.txt")); });
        attempt([&] { check(read("leaf link")); });
        // Each waits for the disk, so not every time.
        if (number % 4 != 0) return;
        attempt([&] { check(write("in.txt", "inside", true)); });
        for (const std::string folder : {"swing", "swing link"}) {
            attempt([&] { check(write(folder + "/a.txt", "inside", true)); });
            attempt([&] { check(write(folder + "/gone.txt", "inside", true)); });
            attempt([&] { check(write(folder + "/write.txt", "inside", true)); });
            attempt([&] { check(write(folder + "/new " + own + "/x.txt", "inside")); });
        }
        renewTarget();
        attempt([&] { check(write("target.txt", "inside", true)); });
    }

    int m_succeeded = 0;
    int m_refused = 0;
    int m_otherwise = 0;
};
WITH_BOTH_WALKS(ExchangedLinks);

TEST_P(ExchangedLinks, NeverLeadAnyOperationOutside) {
    const auto before = snapshot(outside);
    const auto namesBefore = std::distance(std::filesystem::directory_iterator(temporary.path()), {});

    std::atomic<int> exchanged = 0;
    std::atomic<bool> finished = false;
    std::thread exchanger([&] {
        while (!finished) {
            exchange("swing", "swing link");
            exchange("leaf.txt", "leaf link");
            exchange("target.txt", "target link");
            ++exchanged;
        }
    });
    int operations = 0;
    while (exchanged < rounds || operations < 100)
        runEveryOperation(operations++);
    finished = true;
    exchanger.join();

    EXPECT_EQ(snapshot(outside), before);
    // The Trash is the only folder that came to stand beside the root.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(temporary.path()), {}), namesBefore + 1);
    for (const auto& item : trashed()) {
        if (std::filesystem::is_regular_file(std::filesystem::symlink_status(item.place))) {
            EXPECT_EQ(getFile(item.place), "inside");
        }
    }
    // Both happened, or the test would show nothing.
    EXPECT_GT(m_succeeded, 0);
    EXPECT_GT(m_refused, 0);
    RecordProperty("succeeded", m_succeeded);
    RecordProperty("refused", m_refused);
    RecordProperty("otherwise", m_otherwise);
}

} // namespace
} // namespace bridge
