#include "adapters/applescript/errors.h"
#include "tests/adapters/mpd/mpd_test.h"

#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>

namespace bridge::mpd {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

class MpdFaults : public MpdTest {
protected:
    void signalMpd(int signal) { ASSERT_EQ(kill(player().processID(), signal), 0); }
    void killMpd() {
        signalMpd(SIGKILL);
        while (player().isRunning()) {
        }
    }
};

TEST_F(MpdFaults, AKilledMpdComesBack) {
    addSongs(2);
    const auto trip = player().makePlaylist("Trip", "x", songs(), call);
    const auto before = *contents();
    killMpd();
    EXPECT_EQ(contents()->items, before.items);
    EXPECT_EQ(contents()->playlists, before.playlists);
    killMpd();
    player().addSongs(trip, songs(), call);
    EXPECT_THAT(contents()->playlists.at(0).items, SizeIs(4));
}

TEST_F(MpdFaults, AnMpdKilledUnderARequestIsItsError) {
    addSongs(1);
    contents();
    signalMpd(SIGSTOP);
    std::string failure;
    std::thread asking([&] { failure = failureOf([&] { contents(); }); });
    signalMpd(SIGKILL);
    asking.join();
    // It had been asked, or the request came late enough to be served by the next one.
    EXPECT_THAT(failure, testing::AnyOf("", HasSubstr("MPD")));
    EXPECT_THAT(songs(), SizeIs(1));
}

TEST_F(MpdFaults, AnMpdThatHangsIsGivenUpInTime) {
    addSongs(1);
    contents();
    signalMpd(SIGSTOP);
    for (int attempt = 0; attempt < 2; ++attempt) {
        Call shortly(std::chrono::milliseconds(50));
        try {
            player().contents(shortly);
            ADD_FAILURE() << "It answered.";
        } catch (const ScriptError& error) {
            EXPECT_EQ(error.number(), ScriptError::timedOut);
            EXPECT_EQ(std::string(error.what()), "MPD did not answer in time.");
        }
    }
    signalMpd(SIGCONT);
    EXPECT_THAT(songs(), SizeIs(1));
}

TEST_F(MpdFaults, ACallThatIsGivenUpEndsAtOnce) {
    addSongs(1);
    contents();
    signalMpd(SIGSTOP);
    Call patient(std::chrono::hours(1));
    std::thread impatient([&] { patient.cancel(); });
    EXPECT_NE(failureOf([&] { player().contents(patient); }), "");
    impatient.join();
    signalMpd(SIGCONT);
    EXPECT_THAT(songs(), SizeIs(1));
}

TEST_F(MpdFaults, AStoppedMpdEndsWithTheBridge) {
    contents();
    const auto process = player().processID();
    signalMpd(SIGSTOP);
    restart();
    EXPECT_EQ(kill(process, 0), -1);
}

TEST_F(MpdFaults, AnMpdEndsWithABridgeThatIsKilled) {
    int report[2];
    ASSERT_EQ(pipe(report), 0);
    const pid_t bridge = fork();
    if (bridge == 0) {
        contents();
        const auto process = player().processID();
        _exit(write(report[1], &process, sizeof process) == sizeof process ? pause() : 1);
    }
    close(report[1]);
    pid_t process = -1;
    ASSERT_EQ(read(report[0], &process, sizeof process), static_cast<ssize_t>(sizeof process));
    close(report[0]);
    // Becomes readable when the process ends, whoever reaps it (pidfd_open(2)).
    pollfd ended{static_cast<int>(syscall(SYS_pidfd_open, process, 0)), POLLIN, 0};
    ASSERT_GE(ended.fd, 0);
    kill(bridge, SIGKILL);
    waitpid(bridge, nullptr, 0);
    EXPECT_EQ(poll(&ended, 1, 60000), 1);
    close(ended.fd);
}

TEST_F(MpdFaults, AnMpdThatDoesNotStartTellsWhy) {
    auto broken = options();
    broken.own.output = "no such word\n";
    MpdPlayer none(broken);
    EXPECT_THAT(failureOf([&] { none.contents(call); }), testing::StartsWith("MPD did not start: "));
    EXPECT_FALSE(none.isRunning());
}

TEST_F(MpdFaults, ADamagedSidecarIsNoReasonToForgetIt) {
    const auto trip = player().makePlaylist("Trip", "x", {}, call);
    restart();
    for (const auto& entry : std::filesystem::directory_iterator(folder / "MPD"))
        if (entry.path().extension() == ".json") putFile(entry.path(), "{");
    EXPECT_THAT(failureOf([&] { contents(); }), HasSubstr("What is known of the playlists is damaged"));
    EXPECT_NE(trip, 0u);
}

} // namespace
} // namespace bridge::mpd
