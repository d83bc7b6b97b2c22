#include "app/instance_socket.h"
#include "app/only_instance.h"
#include "base/platform_error.h"
#include "tests/support/temporary_folder.h"

#include <future>
#include <gtest/gtest.h>
#include <mutex>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <vector>

namespace bridge {
namespace {

using namespace std::chrono_literals;

// A bridge that runs, as far as later starts notice: it answers from a thread of its own.
class OtherBridge {
public:
    // Asked to give way it says yes, and still holds the lock until it is asked so long after that.
    OtherBridge(const std::string& folder, InstanceAnswer answer, std::chrono::milliseconds takesToEnd = 0ms)
        : m_takesToEnd(takesToEnd), m_lock(InstanceLock::take(folder)) {
        std::promise<void> ready;
        auto isReady = ready.get_future();
        m_thread = std::thread([this, folder, answer, &ready] { serve(folder, answer, ready); });
        isReady.get();
    }
    ~OtherBridge() {
        {
            std::lock_guard lock(m_mutex);
            if (m_loop) m_loop->stop(); // it may have given way
        }
        m_thread.join();
    }
    std::vector<InstanceMessage> heard() {
        std::lock_guard lock(m_mutex);
        return m_heard;
    }

private:
    void serve(const std::string& folder, InstanceAnswer answer, std::promise<void>& ready) {
        EventLoop loop;
        m_loop = &loop;
        std::optional<InstanceSocket> socket(std::in_place, loop, folder, [&](const InstanceMessage& message) {
            std::lock_guard lock(m_mutex);
            m_heard.push_back(message);
            if (message.wish != InstanceWish::giveWay) return answer;
            const auto now = std::chrono::steady_clock::now();
            if (!m_gaveWay) m_gaveWay = now;
            if (now - *m_gaveWay >= m_takesToEnd) loop.stop();
            return InstanceAnswer::done;
        });
        ready.set_value();
        loop.run();
        socket.reset();
        m_lock.reset();
        std::lock_guard lock(m_mutex);
        m_loop = nullptr;
    }

    std::chrono::milliseconds m_takesToEnd;
    std::optional<std::chrono::steady_clock::time_point> m_gaveWay;
    std::optional<InstanceLock> m_lock;
    EventLoop* m_loop = nullptr;
    std::mutex m_mutex;
    std::vector<InstanceMessage> m_heard;
    std::thread m_thread;
};

struct Instance : testing::Test {
    TemporaryFolder folder;
    const std::string path = folder.path().string();

    auto become(InstanceWish wish, bool hasDisplay, std::chrono::milliseconds patience = 30s) {
        return becomeOnlyInstance(path, {{wish, "token"}, hasDisplay, patience});
    }
};

TEST_F(Instance, IsTheOnlyOneWhereNoneRuns) {
    EXPECT_TRUE(std::holds_alternative<InstanceLock>(become(InstanceWish::showDashboard, true)));
}

TEST_F(Instance, MakesTheOneThatRunsShowItsDashboard) {
    OtherBridge other(path, InstanceAnswer::done);
    const auto result = become(InstanceWish::showDashboard, true);
    ASSERT_TRUE(std::holds_alternative<RunningAlready>(result));
    EXPECT_EQ(std::get<RunningAlready>(result).answer, InstanceAnswer::done);
    ASSERT_EQ(other.heard().size(), 1u);
    EXPECT_EQ(other.heard()[0].wish, InstanceWish::showDashboard);
    EXPECT_EQ(other.heard()[0].activationToken, "token");
}

TEST_F(Instance, LeavesAnotherWithoutADisplayAloneWhenItHasNoneItself) {
    OtherBridge other(path, InstanceAnswer::noDisplay);
    const auto result = become(InstanceWish::showDashboard, false);
    ASSERT_TRUE(std::holds_alternative<RunningAlready>(result));
    EXPECT_EQ(std::get<RunningAlready>(result).answer, InstanceAnswer::noDisplay);
}

TEST_F(Instance, TakesThePlaceOfOneWithoutADisplay) {
    OtherBridge other(path, InstanceAnswer::noDisplay);
    EXPECT_TRUE(std::holds_alternative<InstanceLock>(become(InstanceWish::nothing, true)));
    EXPECT_EQ(other.heard().back().wish, InstanceWish::giveWay);
}

TEST_F(Instance, WaitsLongerForOneThatMakesRoomThanForAnAnswer) {
    OtherBridge other(path, InstanceAnswer::noDisplay, 5100ms);
    EXPECT_TRUE(std::holds_alternative<InstanceLock>(become(InstanceWish::nothing, true, 5s)));
}

TEST_F(Instance, GivesUpOnOneThatSaysItMakesRoomAndDoesNot) {
    OtherBridge other(path, InstanceAnswer::noDisplay, 1h);
    EXPECT_THROW(becomeOnlyInstance(path, {{InstanceWish::nothing, {}}, true, 30s, 1ms}), PlatformError);
}

TEST_F(Instance, IsNotHinderedByWhatADeadOneLeft) {
    putFile(folder / "lock", "");
    putFile(folder / "socket", "");
    const auto lock = become(InstanceWish::showDashboard, true);
    ASSERT_TRUE(std::holds_alternative<InstanceLock>(lock));
    EventLoop loop;
    const InstanceSocket socket(loop, path, [](const InstanceMessage&) { return InstanceAnswer::done; });
    EXPECT_TRUE(std::filesystem::is_socket(folder / "socket"));
}

TEST_F(Instance, GivesUpOnOneThatRunsAndDoesNotAnswer) {
    const auto held = InstanceLock::take(path);
    EXPECT_THROW(become(InstanceWish::showDashboard, true, 1ms), PlatformError);
}

TEST_F(Instance, CanBeLockedOnceAtATime) {
    auto first = InstanceLock::take(path);
    EXPECT_TRUE(first);
    EXPECT_FALSE(InstanceLock::take(path));
    first.reset();
    EXPECT_TRUE(InstanceLock::take(path));
}

TEST_F(Instance, IsNotDisturbedByVisitorsThatTalkNonsense) {
    OtherBridge other(path, InstanceAnswer::done);
    for (const auto& nonsense : {std::string("\n"), std::string(5000, 'x'), std::string("shout\n"), std::string()}) {
        const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_un place{};
        place.sun_family = AF_UNIX;
        (path + "/socket").copy(place.sun_path, sizeof place.sun_path - 1);
        ASSERT_EQ(connect(socket.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
        send(socket.get(), nonsense.data(), nonsense.size(), MSG_NOSIGNAL);
        shutdown(socket.get(), SHUT_WR);
        char answer = 0;
        EXPECT_LE(read(socket.get(), &answer, 1), 0);
    }
    EXPECT_TRUE(tellRunningInstance(path, {InstanceWish::nothing, {}}, 30s));
    EXPECT_EQ(other.heard().size(), 1u);
}

TEST_F(Instance, RemovesItsSocketAtTheEnd) {
    EventLoop loop;
    std::optional<InstanceSocket> socket(std::in_place, loop, path,
                                         [](const InstanceMessage&) { return InstanceAnswer::done; });
    socket.reset();
    EXPECT_FALSE(std::filesystem::exists(folder / "socket"));
}

TEST_F(Instance, SaysWhenThePathIsTooLongForASocket) {
    const auto deep = path + "/" + std::string(120, 'x');
    std::filesystem::create_directory(deep);
    EventLoop loop;
    EXPECT_THROW(InstanceSocket(loop, deep, [](const InstanceMessage&) { return InstanceAnswer::done; }),
                 PlatformError);
    EXPECT_FALSE(tellRunningInstance(deep, {}, 1ms));
}

TEST(InstanceMessages, SurviveTheirWay) {
    for (const auto wish : {InstanceWish::nothing, InstanceWish::showDashboard, InstanceWish::giveWay}) {
        auto line = encode(InstanceMessage{wish, "a-token_TIME12"});
        ASSERT_EQ(line.back(), '\n');
        line.pop_back();
        const auto decoded = decodeInstanceMessage(line);
        ASSERT_TRUE(decoded);
        EXPECT_EQ(decoded->wish, wish);
        EXPECT_EQ(decoded->activationToken, "a-token_TIME12");
    }
    EXPECT_EQ(encode(InstanceMessage{InstanceWish::showDashboard, "two\nlines"}), "show \n");
    EXPECT_FALSE(decodeInstanceMessage("shout"));
}

class InstanceFolder : public testing::Test {
protected:
    ~InstanceFolder() override {
        if (m_before)
            setenv("XDG_RUNTIME_DIR", m_before->c_str(), 1);
        else
            unsetenv("XDG_RUNTIME_DIR");
    }
    TemporaryFolder folder;

private:
    std::optional<std::string> m_before =
        getenv("XDG_RUNTIME_DIR") ? std::optional<std::string>(getenv("XDG_RUNTIME_DIR")) : std::nullopt;
};

TEST_F(InstanceFolder, IsInTheRuntimeFolderAndTheUsersAlone) {
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    const auto path = instanceFolder(folder.file("profile"));
    EXPECT_EQ(path, folder.file("brindlefox-apple-bridge"));
    struct stat status {};
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700u);
    EXPECT_FALSE(std::filesystem::exists(folder / "profile"));
}

TEST_F(InstanceFolder, IsTheProfileWhereTheRuntimeFolderIsMissingOrOpenToOthers) {
    std::filesystem::create_directory(folder / "open");
    std::filesystem::permissions(folder / "open", std::filesystem::perms::all);
    for (const auto& unusable : {std::string(), folder.file("missing"), folder.file("open"), std::string("relative")}) {
        setenv("XDG_RUNTIME_DIR", unusable.c_str(), 1);
        EXPECT_EQ(instanceFolder(folder.file("above/profile")), folder.file("above/profile"));
    }
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(instanceFolder(folder.file("above/profile")), folder.file("above/profile"));
}

TEST_F(InstanceFolder, IsRefusedWhenOthersCanWriteThere) {
    setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
    std::filesystem::create_directory(folder / "brindlefox-apple-bridge");
    std::filesystem::permissions(folder / "brindlefox-apple-bridge", std::filesystem::perms::all);
    EXPECT_THROW(instanceFolder(folder.file("profile")), PlatformError);
}

} // namespace
} // namespace bridge
