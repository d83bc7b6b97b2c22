#include "tests/adapters/mpd/mpd_test.h"
#include "tests/support/becomes_true.h"
#include "tests/support/child_process.h"

#include <sys/socket.h>
#include <sys/un.h>

namespace bridge::mpd {
namespace {

// The user's own MPD is a program that the test starts.
class UsersMpd : public MpdTest {
protected:
    Environment environment() const {
        return [this](const char* name) -> std::optional<std::string> {
            if (std::string_view(name) == "XDG_RUNTIME_DIR") return folder.path().string();
            return std::nullopt;
        };
    }
    std::string socket() const { return folder.file("mpd/socket"); }
    void start() {
        std::filesystem::create_directories(folder / "mpd/playlists");
        putFile(folder / "mpd/mpd.conf", "music_directory \"" + music().string() + "\"\nplaylist_directory \"" +
                                             folder.file("mpd/playlists") + "\"\ndb_file \"" + folder.file("mpd/db") +
                                             "\"\nbind_to_address \"" + socket() + "\"\nzeroconf_enabled \"no\"\n" +
                                             silentOutput);
        m_mpd.emplace(std::vector<std::string>{"/usr/bin/mpd", "--no-daemon", "--stderr", folder.file("mpd/mpd.conf")},
                      std::map<std::string, std::string>{}, "");
        if (!becomesTrue([this] { return findRunningMpd(environment()).has_value(); }))
            throw std::runtime_error("mpd does not start");
    }
    void end() { m_mpd.reset(); }
    MpdOptions both() const {
        auto both = options();
        both.environment = environment();
        return both;
    }

private:
    std::optional<ChildProcess> m_mpd;
};

TEST_F(UsersMpd, IsUsedWhenItRuns) {
    addSongs(2);
    start();
    EXPECT_EQ(findRunningMpd(environment()), MpdServer{socket()});
    MpdPlayer users(both());
    EXPECT_TRUE(users.isRunning());
    while (users.contents(call)->items.size() < 2) {
    }
    EXPECT_EQ(users.processID(), -1);
    EXPECT_TRUE(users.contents(call)->items[0].location.has_value());
    const auto trip = users.makePlaylist("Trip", "x", {users.contents(call)->items[0].persistentID}, call);
    EXPECT_TRUE(std::filesystem::exists(folder / "mpd/playlists/Trip.m3u"));
    end();
    // From here on there is the private one, with playlists of its own.
    EXPECT_FALSE(users.isRunning());
    EXPECT_EQ(users.contents(call)->playlists.size(), 0u);
    EXPECT_NE(users.processID(), -1);
    EXPECT_NE(trip, 0u);
}

TEST_F(UsersMpd, IsNotWokenToFindOut) {
    // A service manager's: nobody but us holds it, and we are no MPD.
    std::filesystem::create_directories(folder / "mpd");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::ranges::copy(socket(), address.sun_path);
    const FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    ASSERT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(listener.get(), 1), 0);
    EXPECT_EQ(findRunningMpd(environment()), std::nullopt);
    MpdPlayer users(both());
    EXPECT_FALSE(users.isRunning());
    users.contents(call);
    EXPECT_NE(users.processID(), -1);
    EXPECT_EQ(accept(listener.get(), nullptr, nullptr), -1);
    EXPECT_EQ(errno, EAGAIN);
}

TEST_F(UsersMpd, IsNotAnotherBridges) {
    contents(); // a bridge's, in this very folder
    const auto where = [this](const char* name) -> std::optional<std::string> {
        if (std::string_view(name) == "MPD_HOST") return folder.file("MPD/socket");
        return std::nullopt;
    };
    EXPECT_NE(findRunningMpd(where), MpdServer{folder.file("MPD/socket")});
}

TEST_F(UsersMpd, IsTakenAtItsWordOnAnotherComputer) {
    const auto where = [](const char* name) -> std::optional<std::string> {
        if (std::string_view(name) == "MPD_HOST") return "secret@music.example.com";
        if (std::string_view(name) == "MPD_PORT") return "6601";
        return std::nullopt;
    };
    EXPECT_EQ(findRunningMpd(where), (MpdServer{"music.example.com", "6601", "secret"}));
}

} // namespace
} // namespace bridge::mpd
