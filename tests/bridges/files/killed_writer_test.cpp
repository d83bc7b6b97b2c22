#include "tests/bridges/files/file_bridge_test.h"

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>

namespace bridge {
namespace {

class KilledWriter : public FileBridgeTest {
protected:
    // Writes one content after the other until it is killed; a byte in the pipe for each write.
    [[noreturn]] void writeForever(int progress, const std::string& one, const std::string& other) {
        while (true) {
            for (const auto* content : {&one, &other}) {
                if (!failureOf([&] { write("note.txt", *content, true); }).empty()) _exit(1);
                if (::write(progress, "w", 1) != 1) _exit(2);
            }
        }
    }
};
WITH_BOTH_WALKS(KilledWriter);

TEST_P(KilledWriter, LeavesTheWholeOldOrTheWholeNewContent) {
    const std::string one(300'000, 'a');
    const std::string other(70'000, 'b');
    write("note.txt", one);
    for (int round = 0; round < 24; ++round) {
        int progress[2];
        ASSERT_EQ(pipe2(progress, O_CLOEXEC), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) writeForever(progress[1], one, other);
        close(progress[1]);
        char byte;
        for (int writes = 0; writes <= round % 3; ++writes)
            ASSERT_EQ(::read(progress[0], &byte, 1), 1);
        // A little later each time, so that every step of a write is met.
        for (std::atomic<int> spin = 0; spin < round * 20'000;)
            ++spin;
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        close(progress[0]);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the writer failed by itself";

        const auto content = getFile(root / "note.txt");
        ASSERT_TRUE(content == one || content == other) << content.size() << " bytes";
    }
    EXPECT_EQ(names(""), std::vector<std::string>{"note.txt"});
}

} // namespace
} // namespace bridge
