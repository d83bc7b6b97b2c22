#include "base/log.h"

#include "base/date.h"
#include "base/event_loop.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace bridge {
namespace {

using namespace std::chrono_literals;

// Standard error as a pipe, while it lives.
class CapturedErrors {
public:
    CapturedErrors() : m_before(dup(STDERR_FILENO)) {
        EXPECT_EQ(pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK), 0);
        dup2(m_pipe[1], STDERR_FILENO);
    }
    ~CapturedErrors() {
        dup2(m_before, STDERR_FILENO);
        for (const int descriptor : {m_before, m_pipe[0], m_pipe[1]})
            close(descriptor);
    }

    // The lines that have come since the last look, without their dates.
    std::vector<std::string> lines() {
        std::string text;
        char buffer[4096];
        for (ssize_t count; (count = read(m_pipe[0], buffer, sizeof buffer)) > 0;)
            text.append(buffer, static_cast<size_t>(count));
        std::vector<std::string> found;
        for (size_t end; (end = text.find('\n')) != std::string::npos; text.erase(0, end + 1)) {
            EXPECT_TRUE(parseDate(text.substr(0, 20))) << text;
            found.push_back(text.substr(21, end - 21));
        }
        EXPECT_EQ(text, "");
        return found;
    }
    // Until nothing more fits, and whoever writes more has to wait.
    void fillAndBlock() {
        const std::string block(4096, 'x');
        while (write(m_pipe[1], block.data(), block.size()) > 0) {
        }
        fcntl(m_pipe[1], F_SETFL, fcntl(m_pipe[1], F_GETFL) & ~O_NONBLOCK);
    }
    void drain() {
        char buffer[4096];
        while (read(m_pipe[0], buffer, sizeof buffer) > 0) {
        }
    }

private:
    int m_before;
    int m_pipe[2] = {-1, -1};
};
using Lines = std::vector<std::string>;

TEST(Log, WritesEachLineAtOnceByItself) {
    CapturedErrors errors;
    log::note("started");
    EXPECT_EQ(errors.lines(), (Lines{"started"}));
    log::request("files.list", 200, 3ms);
    EXPECT_EQ(errors.lines(), (Lines{"files.list 200 3 ms"}));
}

TEST(Log, GathersLinesUntilTheLoopGoesToWait) {
    CapturedErrors errors;
    EventLoop loop;
    log::gatherOn(loop);
    Lines early;
    Lines flushed;
    loop.post([&] {
        log::note("one");
        log::note("two");
        early = errors.lines();
        loop.post([&] {
            flushed = errors.lines();
            loop.stop();
        });
    });
    loop.run();
    EXPECT_EQ(early, Lines{});
    EXPECT_EQ(flushed, (Lines{"one", "two"}));
}

TEST(Log, LinesOfAShellsTurnLeaveAtItsEnd) {
    CapturedErrors errors;
    EventLoop loop;
    log::gatherOn(loop);
    loop.post([] { log::note("served"); });
    loop.turn();
    EXPECT_EQ(errors.lines(), (Lines{"served"}));
}

TEST(Log, CanBeFlushedByHand) {
    CapturedErrors errors;
    EventLoop loop;
    log::gatherOn(loop);
    log::note("last words");
    EXPECT_EQ(errors.lines(), Lines{});
    log::flush();
    log::flush();
    EXPECT_EQ(errors.lines(), (Lines{"last words"}));
}

TEST(Log, LosesNothingWhenTheLoopGoes) {
    CapturedErrors errors;
    std::optional<EventLoop> loop;
    loop.emplace();
    log::gatherOn(*loop);
    log::note("gathered");
    loop.reset();
    EXPECT_EQ(errors.lines(), (Lines{"gathered"}));
    log::note("at once again");
    EXPECT_EQ(errors.lines(), (Lines{"at once again"}));
}

TEST(Log, ThatNobodyReadsIsGivenUpAndHangsNobody) {
    CapturedErrors errors;
    errors.fillAndBlock();
    log::note("lost");
    log::note("lost too");
    errors.drain();
    log::note("heard");
    EXPECT_EQ(errors.lines(), (Lines{"heard"}));
}

} // namespace
} // namespace bridge
