#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace bridge {
namespace {

const std::string health = requestBytes("GET", "/health");

bool canConnect(const char* address) {
    const FileDescriptor client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(32123);
    inet_pton(AF_INET, address, &place.sin_addr);
    return connect(client.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0;
}

TEST(Listener, IsThereOn127001Alone) {
    const RunningBridge bridge;
    EXPECT_TRUE(canConnect("127.0.0.1"));
    EXPECT_FALSE(canConnect("127.0.0.2"));
    const FileDescriptor client(socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in6 place{};
    place.sin6_family = AF_INET6;
    place.sin6_port = htons(32123);
    place.sin6_addr = in6addr_loopback;
    EXPECT_NE(connect(client.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
}

TEST(Listener, SecondOneFailsSaysSoAndCanBeStartedLater) {
    auto first = std::make_unique<RunningBridge>();
    EventLoop loop;
    const TemporaryFolder folder;
    auto platform = openEmbeddedPlatform(loop, folder.path());
    BridgeCapabilityPolicy policy(*platform.defaults);
    BridgeModel second(loop, platform, policy);
    std::vector<size_t> states;
    const auto subscription =
        second.httpServer.state.observe([&](const BridgeServerState& state) { states.push_back(state.index()); });
    loop.runUntilDone(second.start());
    const auto failed = std::get<ServerFailed>(second.httpServer.state.get());
    EXPECT_EQ(failed.message, "127.0.0.1:32123: address already in use");
    first.reset();
    second.httpServer.start();
    EXPECT_EQ(second.httpServer.state.get(), BridgeServerState(ServerListening{32123}));
    second.httpServer.start();
    second.httpServer.stop();
    EXPECT_EQ(second.httpServer.state.get(), BridgeServerState(ServerStopped()));
    EXPECT_EQ(states, (std::vector<size_t>{1, 3, 1, 2, 0}));
}

TEST(Connections, OpenOnesGoWithTheServer) {
    auto bridge = std::make_unique<RunningBridge>();
    WireClient silent, halfWay;
    halfWay.send("POST /v1/execute HTTP/1.1\r\nContent-Length: 100\r\n\r\n{");
    EXPECT_EQ(exchange(health).status, 200);
    bridge.reset();
    EXPECT_EQ(silent.receiveAll(), "");
    EXPECT_EQ(halfWay.receiveAll(), "");
}

TEST(Connections, AThousandHalfSentRequestsHarmNobody) {
    const RunningBridge bridge;
    std::vector<WireClient> clients(1000);
    for (size_t index = 0; index < clients.size(); ++index)
        clients[index].send(std::string_view(health).substr(0, index % health.size()));
    EXPECT_EQ(exchange(health).status, 200);
    for (size_t index = 0; index < clients.size(); ++index)
        clients[index].send(std::string_view(health).substr(index % health.size()));
    for (auto& client : clients)
        EXPECT_EQ(readAnswer(client.receiveAll()).status, 200);
}

TEST(Connections, VanishedPeersHarmNobody) {
    const RunningBridge bridge;
    for (int round = 0; round < 300; ++round) {
        WireClient client;
        if (round % 3 == 1) client.send(health.substr(0, 20));
        if (round % 3 == 2) client.send(health);
        client.vanish();
    }
    EXPECT_EQ(exchange(health).status, 200);
}

TEST(Connections, PeerThatNeverReadsKeepsNobodyWaiting) {
    const RunningBridge bridge;
    for (int index = 0; index < 2000; ++index)
        putFile(bridge.documents() / (std::string(200, 'n') + std::to_string(index)), "");
    const auto bytes =
        requestBytes("POST", "/v1/execute",
                     R"({"operation":"files.list","payload":{"path":"","rootID":")" + bridge.rootID() + "\"}}");
    std::vector<WireClient> lazy(8);
    for (auto& client : lazy)
        client.send(bytes);
    EXPECT_EQ(exchange(health).status, 200);
    EXPECT_EQ(readAnswer(lazy[3].receiveAll()).result().array()->size(), 2000u);
}

// The bridge in a process that may open only so many descriptors; whatever the test opens is not counted with it.
class CrampedBridge {
public:
    explicit CrampedBridge(rlim_t descriptors) {
        int ready[2];
        if (pipe2(ready, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        m_pid = fork();
        if (m_pid == 0) {
            const rlimit limit{descriptors, descriptors};
            setrlimit(RLIMIT_NOFILE, &limit);
            const RunningBridge bridge;
            if (write(ready[1], "r", 1) == 1) pause();
            _exit(0);
        }
        char byte;
        close(ready[1]);
        if (read(ready[0], &byte, 1) != 1) throw std::runtime_error("the cramped bridge did not start");
        close(ready[0]);
    }
    ~CrampedBridge() {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }

private:
    pid_t m_pid = -1;
};

TEST(Connections, MoreThanThereAreDescriptorsForLeaveItServing) {
    const CrampedBridge bridge(150);
    std::vector<WireClient> clients(400);
    for (auto& client : clients)
        client.send("GET /heal");
    EXPECT_EQ(exchange(health).status, 200);
    // Those that were given up for newer ones were told why.
    const auto answer = readAnswer(clients[0].receiveAll());
    EXPECT_EQ(answer.code(), "bad_request");
    clients.back().send("th HTTP/1.1\r\n\r\n");
    EXPECT_EQ(readAnswer(clients.back().receiveAll()).code(), "unauthorized");
    clients.clear();
    EXPECT_EQ(exchange(health).status, 200);
}

TEST(Connections, LimitTooLowForAnythingElseLeavesItServing) {
    const CrampedBridge bridge(40);
    std::vector<WireClient> clients(100);
    EXPECT_EQ(exchange(health).status, 200);
}

TEST(Connections, UnfinishedRequestsTogetherAreBounded) {
    const CrampedBridge bridge(2000);
    const std::string most = "POST / HTTP/1.1\r\nContent-Length: 1048000\r\n\r\n" + std::string(1'000'000, 'x');
    std::vector<WireClient> clients(300);
    for (auto& client : clients)
        client.send(most);
    EXPECT_EQ(exchange(health).status, 200);
    // 300 MB were sent and at most 128 MiB are kept: the oldest had to go, the newest may still finish.
    EXPECT_EQ(readAnswer(clients[0].receiveAll()).code(), "bad_request");
    EXPECT_EQ(readAnswer(clients[150].receiveAll()).code(), "bad_request");
    clients[299].send(std::string(48'000, 'x'));
    EXPECT_EQ(readAnswer(clients[299].receiveAll()).code(), "unauthorized");
}

TEST(Connections, TinyHeadersCountForTheMemoryTheyTake) {
    const CrampedBridge bridge(2000);
    std::string head = "POST / HTTP/1.1\r\nContent-Length: 9\r\n";
    for (int index = 0; head.size() < 990'000; ++index)
        head += std::to_string(index) + ":x\r\n";
    std::vector<WireClient> clients(20);
    for (auto& client : clients)
        client.send(head + "\r\n{");
    EXPECT_EQ(exchange(health).status, 200);
    EXPECT_EQ(readAnswer(clients[0].receiveAll()).code(), "bad_request");
    clients[19].send("12345678");
    EXPECT_EQ(readAnswer(clients[19].receiveAll()).code(), "unauthorized");
}

TEST(Connections, AnswerUnderWayIsNotCutForNewcomers) {
    const CrampedBridge bridge(150);
    // No reader takes it at once: far more than a socket's buffers hold.
    const std::string read =
        R"({"operation":"files.read_text","payload":{"maximumBytes":1000000,"path":"big","rootID":")";
    const auto roots = call("files.roots.list").result();
    const auto rootID = *(*roots.array())[0].object()->at("id").string();
    const std::string text(1'000'000, '\x01'); // six bytes each in JSON
    putFile(*(*roots.array())[0].object()->at("path").string() + "/big", text);
    WireClient slow;
    slow.send(requestBytes("POST", "/v1/execute", read + rootID + "\"}}"));
    std::vector<WireClient> newcomers(300);
    EXPECT_EQ(exchange(health).status, 200);
    EXPECT_EQ(*readAnswer(slow.receiveAll()).result().object()->at("content").string(), text);
}

} // namespace
} // namespace bridge
