#include "policy/bridge_pairing_store.h"

#include "adapters/curl/curl_http_client.h"
#include "adapters/jsonfile/file_secure_store.h"
#include "adapters/jsonfile/json_file_user_defaults.h"
#include "tests/support/temporary_folder.h"
#include "tools/agent_server/stand_in_agent_server.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace bridge {
namespace {

using Behaviour = StandInAgentServer::Behaviour;
using Case = PairingError::Case;

// The whole exchange over a real connection, with the stores of a machine without a keyring.
class PairingExchange : public testing::Test {
protected:
    void pair(const std::string& url, const std::string& code) { loop.runUntilDone(store.pair(url, code)); }
    std::optional<Case> failure(Behaviour behaviour) {
        server.behave(behaviour);
        try {
            pair(server.url(), server.issueCode());
        } catch (const PairingError& error) {
            message = error.what();
            return error.kind();
        }
        return std::nullopt;
    }

    EventLoop loop;
    TemporaryFolder folder;
    StandInAgentServer server;
    JSONFileUserDefaults defaults{folder.file("defaults.json")};
    FileSecureStore secrets{folder.file("secrets.json")};
    CurlHTTPClient client{loop};
    BridgePairingStore store{defaults, secrets, client};
    std::string message;
};

TEST_F(PairingExchange, TradesACodeForACredential) {
    auto code = server.issueCode();
    std::transform(code.begin(), code.end(), code.begin(), [](unsigned char letter) { return std::tolower(letter); });
    pair(server.url() + "/", "  " + code + "\n");
    EXPECT_TRUE(store.authorizes("Bearer " + server.credentials().at(0)));
    EXPECT_EQ(store.credential()->size(), 43U);

    const auto received = server.received().at(0);
    EXPECT_EQ(received.method, "POST");
    EXPECT_EQ(received.path, "/apple-bridge/native/pair");
    EXPECT_EQ(received.headers.at("content-type"), "application/json");

    BridgePairingStore nextRun(defaults, secrets, client);
    loop.runUntilDone(nextRun.load());
    EXPECT_EQ(nextRun.credential(), store.credential());
    EXPECT_EQ(nextRun.serverURL(), server.url());
}

TEST_F(PairingExchange, ReachesAServerByItsNameAndBelowAPath) {
    pair("http://LOCALHOST:" + std::to_string(server.port()) + "/agent/", server.issueCode());
    EXPECT_TRUE(store.isPaired());
    EXPECT_EQ(server.received().at(0).path, "/agent/apple-bridge/native/pair");
}

TEST_F(PairingExchange, ACodeIsGoodForOnePairing) {
    const auto code = server.issueCode();
    pair(server.url(), code);
    const auto credential = store.credential();
    EXPECT_THROW(pair(server.url(), code), PairingError);
    EXPECT_EQ(store.credential(), credential);
}

TEST_F(PairingExchange, ShowsTheServersOwnRefusal) {
    try {
        pair(server.url(), "WRONG");
        ADD_FAILURE() << "paired";
    } catch (const PairingError& error) {
        EXPECT_EQ(error.kind(), Case::server);
        EXPECT_STREQ(error.what(), "The pairing code is invalid or was already used.");
    }
}

TEST_F(PairingExchange, FollowsNoRedirect) {
    EXPECT_EQ(failure(Behaviour::redirecting), Case::server);
    EXPECT_EQ(message, "Agent Server rejected the pairing request.");
    EXPECT_EQ(server.redirectVisits(), 0);
}

TEST_F(PairingExchange, SpeaksForAServerThatBreaks) {
    EXPECT_EQ(failure(Behaviour::failingInText), Case::server);
    EXPECT_EQ(message, "Agent Server rejected the pairing request.");
}

TEST_F(PairingExchange, RefusesAnswersWithoutACredential) {
    EXPECT_EQ(failure(Behaviour::withoutCredential), Case::invalidResponse);
    EXPECT_EQ(failure(Behaviour::emptyCredential), Case::invalidResponse);
}

TEST_F(PairingExchange, ReportsAServerThatMisbehaves) {
    for (const auto behaviour : {Behaviour::flooding, Behaviour::hangingUp, Behaviour::notHTTP}) {
        EXPECT_EQ(failure(behaviour), Case::server);
        EXPECT_NE(message, "");
    }
    EXPECT_FALSE(store.isPaired());
}

TEST_F(PairingExchange, ADroppedExchangeHangsUp) {
    server.behave(Behaviour::silent);
    {
        auto dropped = store.pair(server.url(), server.issueCode());
        dropped.start();
        server.waitForRequests(1);
    }
    server.waitForHangUps(1);
    EXPECT_FALSE(store.isPaired());
}

} // namespace
} // namespace bridge
