#include "tests/app/installation.h"

namespace bridge {
namespace {

using Behaviour = StandInAgentServer::Behaviour;
using Call = FailingSecureStore::Call;

constexpr const char* paired = "Paired securely. Unauthenticated requests are now rejected.";
constexpr const char* unpaired = "Unpaired. Apple Bridge will reject every request until it is paired again.";

class Pairing : public InstallationTest {
protected:
    Pairing() { run->start(); }

    // The message after an attempt with a good code at an Agent Server that misbehaves.
    std::string attempt(Behaviour behaviour) {
        agentServer.behave(behaviour);
        run->pair(agentServer);
        return message();
    }
    const std::string& credential() { return m_credential = agentServer.credentials().back(); }

private:
    std::string m_credential;
};

TEST_F(Pairing, LetsTheAgentServerInAndNobodyElse) {
    run->pair(agentServer);
    EXPECT_EQ(message(), paired);
    EXPECT_TRUE(model().isPaired.get());
    EXPECT_EQ(model().agentServerURL.get(), agentServer.url());
    EXPECT_EQ(run->health(credential()), served);
    EXPECT_EQ(run->health("somebody else's"), refusedStranger);
    EXPECT_EQ(agentServer.received().size(), 1U);
}

TEST_F(Pairing, ShowsThatItIsUnderWay) {
    std::vector<bool> progress;
    std::vector<size_t> requestsByThen;
    const auto watch = model().pairingInProgress.observe([&](bool underWay) {
        progress.push_back(underWay);
        requestsByThen.push_back(agentServer.received().size());
    });
    run->pair(agentServer);
    EXPECT_EQ(progress, (std::vector{true, false}));
    EXPECT_EQ(requestsByThen, (std::vector<size_t>{0, 1}));

    agentServer.behave(Behaviour::hangingUp);
    run->pair(agentServer);
    EXPECT_EQ(progress, (std::vector{true, false, true, false}));
}

TEST_F(Pairing, IsOverBeforeItsOutcomeIsTold) {
    std::vector<std::string> told;
    const auto first = model().pairingInProgress.observe(
        [&](bool underWay) { told.emplace_back(underWay ? "under way" : "not under way"); });
    const auto second = model().isPaired.observe([&](bool) { told.emplace_back("paired"); });
    const auto third =
        model().pairingStatusMessage.observe([&](const std::optional<std::string>&) { told.emplace_back("message"); });
    run->pair(agentServer);
    EXPECT_EQ(told, (std::vector<std::string>{"under way", "not under way", "paired", "message"}));
}

TEST_F(Pairing, SecondClickWhileOneIsUnderWayChangesNothing) {
    agentServer.behave(Behaviour::silent);
    {
        auto first = model().pair("CODE");
        first.start();
        auto second = model().pair("CODE");
        second.start();
        EXPECT_TRUE(second.done());
        EXPECT_FALSE(first.done());
        EXPECT_TRUE(model().pairingInProgress.get());
    }
    // Dropped half-way: over, and nothing was decided.
    EXPECT_FALSE(model().pairingInProgress.get());
    EXPECT_EQ(model().pairingStatusMessage.get(), std::nullopt);
}

TEST_F(Pairing, TakesTheLastOutcomeAway) {
    run->pair(agentServer.url(), "WRONG");
    std::vector<std::string> messages;
    const auto watch = model().pairingStatusMessage.observe(
        [&](const std::optional<std::string>& now) { messages.push_back(now.value_or("nothing")); });
    run->pair(agentServer);
    EXPECT_EQ(messages, (std::vector<std::string>{"nothing", paired}));
}

TEST_F(Pairing, UnpairingMeanwhileWins) {
    model().agentServerURL.set(agentServer.url());
    std::vector<bool> pairedThen;
    const auto watch = model().isPaired.observe([&](bool now) { pairedThen.push_back(now); });
    auto pairing = model().pair(agentServer.issueCode());
    auto unpairing = model().unpair();
    pairing.start();
    unpairing.start();
    EXPECT_FALSE(unpairing.done());
    run->finish(std::move(pairing));
    run->finish(std::move(unpairing));
    EXPECT_EQ(agentServer.credentials().size(), 1u);
    EXPECT_TRUE(pairedThen.empty());
    EXPECT_FALSE(model().pairingInProgress.get());
    EXPECT_EQ(message(), unpaired);
    EXPECT_EQ(run->health(credential()), refusedUnpaired);
    restart();
    run->start();
    EXPECT_FALSE(model().isPaired.get());
}

TEST_F(Pairing, UnpairingMeanwhileLocksOutAtOnce) {
    run->pair(agentServer);
    agentServer.behave(Behaviour::silent);
    auto pairing = model().pair(agentServer.issueCode());
    auto unpairing = model().unpair();
    pairing.start();
    unpairing.start();
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_EQ(run->health(credential()), refusedUnpaired);
}

TEST_F(Pairing, AfterAnUnpairingThatIsUnderWayCounts) {
    run->pair(agentServer);
    agentServer.behave(Behaviour::silent);
    auto dropped = std::make_optional(model().pair(agentServer.issueCode()));
    auto unpairing = model().unpair();
    dropped->start();
    unpairing.start();
    dropped.reset();
    agentServer.behave(Behaviour::honest);
    run->finish(std::move(unpairing));
    run->pair(agentServer);
    EXPECT_EQ(message(), paired);
    EXPECT_TRUE(model().isPaired.get());
    EXPECT_EQ(run->health(credential()), served);
}

TEST_F(Pairing, QuittingMeanwhileDecidesNothing) {
    agentServer.behave(Behaviour::silent);
    model().agentServerURL.set(agentServer.url());
    model().perform(model().pair(agentServer.issueCode()));
    EXPECT_TRUE(model().pairingInProgress.get());
    restart();
    run->start();
    EXPECT_FALSE(model().isPaired.get());
    agentServer.behave(Behaviour::honest);
    run->pair(agentServer);
    EXPECT_EQ(message(), paired);
}

// The same exchanges, for people without patience.
class HurriedClient : public HTTPClient {
public:
    explicit HurriedClient(HTTPClient& real) : m_real(real) {}
    Task<HTTPResponse> send(HTTPRequest request) override {
        asked.push_back(request.timeout);
        request.timeout = std::chrono::milliseconds(1);
        return m_real.send(std::move(request));
    }
    std::vector<std::chrono::milliseconds> asked;

private:
    HTTPClient& m_real;
};

TEST_F(Pairing, SaysWhenTheAgentServerIsTooSlow) {
    EventLoop loop;
    auto platform = openEmbeddedPlatform(loop, folder.file("another profile"));
    CurlHTTPClient real(loop);
    auto hurried = std::make_unique<HurriedClient>(real);
    auto& client = *hurried;
    platform.httpClient = std::move(hurried);
    BridgeCapabilityPolicy policy(*platform.defaults);
    BridgeModel other(loop, platform, policy);
    agentServer.behave(Behaviour::silent);
    other.agentServerURL.set(agentServer.url());
    loop.runUntilDone(other.pair(agentServer.issueCode()));
    const auto told = other.pairingStatusMessage.get().value_or("");
    EXPECT_TRUE(told.starts_with("Pairing failed: ") && told.find("imed out") != std::string::npos) << told;
    EXPECT_FALSE(other.isPaired.get());
    EXPECT_FALSE(other.pairingInProgress.get());
    EXPECT_EQ(client.asked, (std::vector<std::chrono::milliseconds>{std::chrono::seconds(10)}));
}

TEST_F(Pairing, SaysWhenThereIsNoAgentServer) {
    // Of the tests' own network nobody listens there.
    run->pair("http://127.0.0.1:1", "CODE");
    EXPECT_TRUE(message().starts_with("Pairing failed: ") && message().find("onnect") != std::string::npos)
        << message();
}

TEST_F(Pairing, SaysWhenTheAddressIsNotLocal) {
    for (const auto* url : {"", "https://127.0.0.1:3000", "http://192.168.0.1:3000", "http://example.com", "3000"}) {
        run->pair(url, agentServer.issueCode());
        EXPECT_EQ(message(), "Pairing failed: Use a local Agent Server URL such as http://127.0.0.1:3000.") << url;
        EXPECT_EQ(model().agentServerURL.get(), "http://127.0.0.1:3000");
    }
    EXPECT_FALSE(model().isPaired.get());
}

TEST_F(Pairing, SaysWhenThereIsNoCode) {
    for (const auto* code : {"", "  ", "\n\t"}) {
        run->pair(agentServer.url(), code);
        EXPECT_EQ(message(), "Pairing failed: Enter the one-time code generated by Agent Server.");
    }
    EXPECT_TRUE(agentServer.received().empty());
}

TEST_F(Pairing, SaysWhatTheAgentServerSaid) {
    run->pair(agentServer.url(), "WRONG");
    EXPECT_EQ(message(), "Pairing failed: The pairing code is invalid or was already used.");
    agentServer.answerWith(503, R"({"error":"Grüße: zu spät."})");
    run->pair(agentServer);
    EXPECT_EQ(message(), "Pairing failed: Grüße: zu spät.");
    EXPECT_FALSE(model().isPaired.get());
}

TEST_F(Pairing, SpeaksForAnAgentServerThatDoesNot) {
    EXPECT_EQ(attempt(Behaviour::failingInText), "Pairing failed: Agent Server rejected the pairing request.");
    EXPECT_EQ(attempt(Behaviour::redirecting), "Pairing failed: Agent Server rejected the pairing request.");
}

TEST_F(Pairing, SaysWhenTheAnswerIsNoCredential) {
    const std::string invalid = "Pairing failed: Agent Server returned an invalid pairing response.";
    EXPECT_EQ(attempt(Behaviour::withoutCredential), invalid);
    EXPECT_EQ(attempt(Behaviour::emptyCredential), invalid);
}

TEST_F(Pairing, SaysWhenTheConnectionFails) {
    for (const auto behaviour : {Behaviour::hangingUp, Behaviour::notHTTP, Behaviour::flooding}) {
        const auto failure = attempt(behaviour);
        EXPECT_TRUE(failure.starts_with("Pairing failed: ")) << failure;
        EXPECT_GT(failure.size(), std::string_view("Pairing failed: ").size());
    }
    EXPECT_FALSE(model().isPaired.get());
}

TEST_F(Pairing, SaysWhenTheCredentialCanNotBeKept) {
    run->secureStore.fail({Call::replace}, -25308);
    run->pair(agentServer);
    EXPECT_EQ(message(), "Pairing failed: Could not securely store the pairing credential (Keychain error -25308).");
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_EQ(run->health(credential()), refusedUnpaired);

    run->secureStore.recover();
    run->pair(agentServer);
    EXPECT_EQ(message(), paired);
}

TEST_F(Pairing, AFailureLeavesThePairedAgentServerIn) {
    run->pair(agentServer);
    const auto former = credential();
    std::vector<bool> changes;
    const auto watch = model().isPaired.observe([&](bool now) { changes.push_back(now); });

    run->pair(agentServer.url(), "WRONG");
    run->pair("http://example.com", agentServer.issueCode());
    attempt(Behaviour::withoutCredential);
    agentServer.behave(Behaviour::honest);
    run->secureStore.fail({Call::replace}, 1);
    run->pair(agentServer);
    EXPECT_TRUE(changes.empty());
    EXPECT_TRUE(model().isPaired.get());
    EXPECT_EQ(model().agentServerURL.get(), agentServer.url());
    EXPECT_EQ(run->health(former), served);
}

TEST_F(Pairing, AnewLocksTheFormerCredentialOut) {
    run->pair(agentServer);
    const auto former = credential();
    run->pair(agentServer);
    EXPECT_EQ(run->health(former), refusedStranger);
    EXPECT_EQ(run->health(credential()), served);
}

TEST_F(Pairing, EndsWithUnpairingAndEveryRequestIsRefused) {
    run->pair(agentServer);
    run->unpair();
    EXPECT_EQ(message(), unpaired);
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_EQ(run->health(credential()), refusedUnpaired);
    EXPECT_EQ(run->health(""), refusedUnpaired);

    restart();
    run->start();
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_EQ(run->health(credential()), refusedUnpaired);
}

TEST_F(Pairing, UnpairingTwiceIsNoError) {
    run->unpair();
    run->unpair();
    EXPECT_EQ(message(), unpaired);
}

TEST_F(Pairing, IsOverForThisRunAlsoWhenTheCredentialStays) {
    run->pair(agentServer);
    run->secureStore.fail({Call::remove}, -25244);
    run->unpair();
    EXPECT_EQ(message(), "Unpairing failed: Could not securely store the pairing credential (Keychain error -25244).");
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_EQ(run->health(credential()), refusedUnpaired);
}

TEST_F(Pairing, UnpairingStopsNoLaterPairing) {
    run->pair(agentServer);
    run->unpair();
    run->pair(agentServer);
    EXPECT_EQ(message(), paired);
    EXPECT_EQ(run->health(credential()), served);
}

} // namespace
} // namespace bridge
