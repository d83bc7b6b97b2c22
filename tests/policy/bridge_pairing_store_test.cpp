#include "policy/bridge_pairing_store.h"

#include "adapters/jsonfile/json_file_user_defaults.h"
#include "base/event_loop.h"
#include "base/json_value.h"
#include "tests/fakes/failing_secure_store.h"
#include "tests/fakes/memory_secure_store.h"
#include "tests/fakes/scripted_http_client.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

namespace bridge {
namespace {

using Call = FailingSecureStore::Call;
using Case = PairingError::Case;
using testing::MatchesRegex;
using testing::SizeIs;

const std::pair<std::string, std::string> itemKey{"com.brindlefox.apple-bridge.agent-server", "credential"};
constexpr auto agentServer = "http://127.0.0.1:3000";
constexpr auto grant = R"({"credential":"s3cret"})";

class Pairing : public testing::Test {
protected:
    Pairing() { restart(); }

    // A new run of the program over what is stored.
    void restart() {
        store.reset();
        defaults = std::make_unique<JSONFileUserDefaults>(folder.file("defaults.json"));
        store = std::make_unique<BridgePairingStore>(*defaults, secrets, client);
        loop.runUntilDone(store->load());
    }
    void pair(const std::string& serverURL = agentServer, const std::string& code = "CODE") {
        loop.runUntilDone(store->pair(serverURL, code));
    }
    void pairWith(const std::string& answer) {
        client.willAnswer(200, answer);
        pair();
    }
    struct Failure {
        std::optional<Case> kind;
        std::string message;
    };
    Failure failure(const std::string& serverURL = agentServer, const std::string& code = "CODE") {
        try {
            pair(serverURL, code);
            return {};
        } catch (const PairingError& error) {
            return {error.kind(), error.what()};
        }
    }
    void storeSecret(const std::string& secret) {
        loop.runUntilDone(memory.replace({itemKey.first, itemKey.second}, secret));
    }

    EventLoop loop;
    TemporaryFolder folder;
    MemorySecureStore memory;
    FailingSecureStore secrets{memory};
    ScriptedHTTPClient client;
    std::unique_ptr<JSONFileUserDefaults> defaults;
    std::unique_ptr<BridgePairingStore> store;
};

TEST_F(Pairing, GivesAFreshInstallationAnIdentifierForGood) {
    const auto identifier = store->installationID();
    EXPECT_THAT(identifier, MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
    EXPECT_EQ(defaults->string("agentPairing.installationID"), identifier);
    restart();
    EXPECT_EQ(store->installationID(), identifier);
}

TEST_F(Pairing, GivesEachInstallationItsOwnIdentifier) {
    JSONFileUserDefaults otherDefaults(folder.file("other.json"));
    const BridgePairingStore other(otherDefaults, secrets, client);
    EXPECT_NE(other.installationID(), store->installationID());
}

TEST_F(Pairing, KeepsAStoredIdentifierAsItIs) {
    defaults->setString("agentPairing.installationID", "an older form");
    restart();
    EXPECT_EQ(store->installationID(), "an older form");
}

TEST_F(Pairing, AsksForTheUsualAddressUntilItIsToldAnother) {
    EXPECT_EQ(store->serverURL(), "http://127.0.0.1:3000");
    EXPECT_FALSE(defaults->contains("agentPairing.serverURL"));
    defaults->setString("agentPairing.serverURL", "http://localhost:4000");
    restart();
    EXPECT_EQ(store->serverURL(), "http://localhost:4000");
}

TEST_F(Pairing, IsUnpairedAtFirst) {
    EXPECT_FALSE(store->isPaired());
    EXPECT_FALSE(store->authorizes("Bearer "));
    EXPECT_FALSE(store->authorizes(std::nullopt));
}

TEST_F(Pairing, SendsIdentifierAndCode) {
    pairWith(grant);
    ASSERT_THAT(client.requests(), SizeIs(1));
    const auto& request = client.requests()[0];
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, "http://127.0.0.1:3000/apple-bridge/native/pair");
    EXPECT_EQ(request.headers, (std::map<std::string, std::string>{{"Content-Type", "application/json"}}));
    EXPECT_EQ(request.timeout, std::chrono::seconds(10));
    EXPECT_EQ(request.body, R"({"code":"CODE","installationId":")" + store->installationID() + "\"}");
}

TEST_F(Pairing, StoresTheCredentialAndTheAddress) {
    pairWith(grant);
    EXPECT_TRUE(store->isPaired());
    EXPECT_EQ(store->credential(), "s3cret");
    EXPECT_EQ(memory.items(), (MemorySecureStore::Items{{itemKey, "s3cret"}}));
    EXPECT_EQ(defaults->string("agentPairing.serverURL"), "http://127.0.0.1:3000");
    restart();
    EXPECT_TRUE(store->isPaired());
    EXPECT_TRUE(store->authorizes("Bearer s3cret"));
}

TEST_F(Pairing, KeepsTheCredentialOutOfTheSettings) {
    pairWith(grant);
    for (const auto* key : {"agentPairing.credential", "credential"})
        EXPECT_FALSE(defaults->contains(key));
}

TEST_F(Pairing, PutsThePathBehindTheAddressWithOneSlash) {
    const std::pair<const char*, const char*> cases[] = {
        {"http://localhost", "http://localhost/apple-bridge/native/pair"},
        {"http://localhost:3000/", "http://localhost:3000/apple-bridge/native/pair"},
        {"http://[::1]:3000///", "http://[::1]:3000/apple-bridge/native/pair"},
        {"http://localhost:3000/agent", "http://localhost:3000/agent/apple-bridge/native/pair"},
        {"http://localhost:3000/agent/", "http://localhost:3000/agent/apple-bridge/native/pair"},
    };
    for (const auto& [given, endpoint] : cases) {
        client.willAnswer(200, grant);
        pair(given);
        EXPECT_EQ(client.requests().back().url, endpoint);
    }
}

TEST_F(Pairing, SavesTheAddressWithoutSlashesAtItsEnd) {
    client.willAnswer(200, grant);
    pair(" \n HTTP://LocalHost:4000/agent// \r\n");
    EXPECT_EQ(store->serverURL(), "HTTP://LocalHost:4000/agent");
    EXPECT_EQ(defaults->string("agentPairing.serverURL"), "HTTP://LocalHost:4000/agent");
}

TEST_F(Pairing, TrimsTheCodeAndMakesItUpperCase) {
    client.willAnswer(200, grant);
    pair(agentServer, " \n\tab-12 cd\u00e9ß \u00a0\n");
    const auto body = parseJSON(client.requests().back().body);
    EXPECT_EQ(*body.object()->at("code").string(), "AB-12 CDÉSS");
}

TEST_F(Pairing, RefusesAnEmptyCodeWithoutAskingAnybody) {
    for (const auto* code : {"", " ", "\n\r\n\t ", "\u00a0\u2003"}) {
        const auto refused = failure(agentServer, code);
        EXPECT_EQ(refused.kind, Case::invalidCode);
        EXPECT_EQ(refused.message, "Enter the one-time code generated by Agent Server.");
    }
    EXPECT_TRUE(client.requests().empty());
}

TEST_F(Pairing, RefusesAnAddressThatIsNotLocalWithoutAskingAnybody) {
    for (const auto* address :
         {"https://127.0.0.1:3000", "http://example.com", "http://127.0.0.1@evil.example", "", "  "}) {
        const auto refused = failure(address);
        EXPECT_EQ(refused.kind, Case::invalidServerURL) << address;
        EXPECT_EQ(refused.message, "Use a local Agent Server URL such as http://127.0.0.1:3000.");
    }
    EXPECT_TRUE(client.requests().empty());
}

TEST_F(Pairing, LooksAtTheAddressBeforeTheCode) {
    EXPECT_EQ(failure("http://example.com", "").kind, Case::invalidServerURL);
}

TEST_F(Pairing, TakesEverySuccessfulStatus) {
    for (const int status : {200, 201, 204, 299}) {
        client.willAnswer(status, R"({"credential":"of )" + std::to_string(status) + "\",\"more\":1}");
        pair();
        EXPECT_EQ(store->credential(), "of " + std::to_string(status));
    }
}

TEST_F(Pairing, ShowsTheServersOwnRefusal) {
    client.willAnswer(403, R"({"error":"Code expired."})");
    const auto refused = failure();
    EXPECT_EQ(refused.kind, Case::server);
    EXPECT_EQ(refused.message, "Code expired.");
}

TEST_F(Pairing, SpeaksForAServerThatRefusesWithoutWords) {
    const std::pair<int, const char*> answers[] = {{500, "<html>oops</html>"},
                                                   {500, ""},
                                                   {403, "{}"},
                                                   {403, R"({"error":5})"},
                                                   {404, "null"},
                                                   {307, ""},
                                                   {199, grant},
                                                   {300, grant}};
    for (const auto& [status, body] : answers) {
        client.willAnswer(status, body);
        const auto refused = failure();
        EXPECT_EQ(refused.kind, Case::server);
        EXPECT_EQ(refused.message, "Agent Server rejected the pairing request.") << status << body;
    }
    EXPECT_FALSE(store->isPaired());
}

TEST_F(Pairing, RefusesAnAnswerThatIsNoCredential) {
    for (const auto* body : {"", "{}", "null", "[]", "not JSON", R"({"credential":null})", R"({"credential":5})",
                             R"({"Credential":"s3cret"})", R"({"credential":""})"}) {
        client.willAnswer(200, body);
        const auto refused = failure();
        EXPECT_EQ(refused.kind, Case::invalidResponse) << body;
        EXPECT_EQ(refused.message, "Agent Server returned an invalid pairing response.");
    }
    EXPECT_TRUE(memory.items().empty());
}

TEST_F(Pairing, RefusesACredentialThatNoHeaderCanCarry) {
    for (const auto* credential : {"a\\r\\nb", "a\\nb", "\\u0000", "a\\tb", "a\\u007f", "\\u001f", " a", "a ", " "}) {
        client.willAnswer(200, std::string(R"({"credential":")") + credential + "\"}");
        EXPECT_EQ(failure().kind, Case::invalidResponse) << credential;
    }
    EXPECT_TRUE(memory.items().empty());
}

TEST_F(Pairing, ShowsWhyNobodyAnswered) {
    client.willFail("Couldn't connect to server");
    const auto refused = failure();
    EXPECT_EQ(refused.kind, Case::server);
    EXPECT_EQ(refused.message, "Couldn't connect to server");
}

TEST_F(Pairing, ShowsTheStatusOfASecureStoreThatFails) {
    secrets.fail({Call::replace}, -25293);
    client.willAnswer(200, grant);
    const auto refused = failure();
    EXPECT_EQ(refused.kind, Case::keychain);
    EXPECT_EQ(refused.message, "Could not securely store the pairing credential (Keychain error -25293).");
}

TEST_F(Pairing, AFailureLeavesTheOldPairing) {
    pairWith(grant);
    const auto stored = memory.items();
    const auto expectUnchanged = [&] {
        EXPECT_EQ(store->credential(), "s3cret");
        EXPECT_EQ(store->serverURL(), agentServer);
        EXPECT_EQ(defaults->string("agentPairing.serverURL"), agentServer);
        EXPECT_EQ(memory.items(), stored);
    };
    const auto other = "http://localhost:4000";
    failure("http://example.com");
    expectUnchanged();
    failure(other, "");
    expectUnchanged();
    client.willFail("refused");
    failure(other);
    expectUnchanged();
    client.willAnswer(403, R"({"error":"no"})");
    failure(other);
    expectUnchanged();
    client.willAnswer(200, R"({"credential":""})");
    failure(other);
    expectUnchanged();
    secrets.fail({Call::replace}, 1);
    client.willAnswer(200, R"({"credential":"new"})");
    failure(other);
    expectUnchanged();
}

TEST_F(Pairing, AuthorizesTheCredentialToTheByteAndNothingElse) {
    pairWith(grant);
    EXPECT_TRUE(store->authorizes("Bearer s3cret"));
    EXPECT_FALSE(store->authorizes(std::nullopt));
    for (const auto* header : {"", "s3cret", "Bearer", "Bearer ", "Bearer s3cre", "Bearer s3crett", "Bearer s3creT",
                               "Bearer S3cret", "Bearer  s3cret", "Bearer s3cret ", "bearer s3cret", "BEARER s3cret",
                               "Bearer\ts3cret", " Bearer s3cret", "Basic s3cret", "Bearer s3creu", "Bearer t3cret"})
        EXPECT_FALSE(store->authorizes(header)) << header;
    EXPECT_FALSE(store->authorizes(std::string_view("Bearer s3cret\0", 14)));
}

TEST_F(Pairing, ComparesBytesBeyondASCII) {
    pairWith(R"({"credential":"clé-🦊"})");
    EXPECT_TRUE(store->authorizes("Bearer clé-🦊"));
    // The same letters, composed otherwise.
    EXPECT_FALSE(store->authorizes("Bearer cle\u0301-🦊"));
}

TEST_F(Pairing, AStoredEmptyCredentialCountsAsUnpaired) {
    storeSecret("");
    restart();
    EXPECT_EQ(store->credential(), "");
    EXPECT_FALSE(store->isPaired());
    // Two empty texts are equal; it is isPaired() that keeps the door shut.
    EXPECT_TRUE(store->authorizes("Bearer "));
    EXPECT_FALSE(store->authorizes("Bearer x"));
}

TEST_F(Pairing, ASecureStoreThatCanNotBeReadIsHeardOfAndMayRecover) {
    storeSecret("s3cret");
    secrets.fail({Call::read}, 2);
    EXPECT_THROW(restart(), PlatformError);
    EXPECT_FALSE(store->isPaired());
    secrets.recover();
    loop.runUntilDone(store->load());
    EXPECT_TRUE(store->isPaired());
}

TEST_F(Pairing, UnpairingForgetsTheCredentialForGood) {
    pairWith(grant);
    loop.runUntilDone(store->unpair());
    EXPECT_FALSE(store->isPaired());
    EXPECT_EQ(store->credential(), std::nullopt);
    EXPECT_FALSE(store->authorizes("Bearer s3cret"));
    EXPECT_TRUE(memory.items().empty());
    restart();
    EXPECT_FALSE(store->isPaired());
}

TEST_F(Pairing, UnpairingKeepsIdentifierAndAddress) {
    client.willAnswer(200, grant);
    pair("http://localhost:4000");
    const auto identifier = store->installationID();
    loop.runUntilDone(store->unpair());
    restart();
    EXPECT_EQ(store->installationID(), identifier);
    EXPECT_EQ(store->serverURL(), "http://localhost:4000");
}

TEST_F(Pairing, UnpairingWhenUnpairedSucceeds) {
    loop.runUntilDone(store->unpair());
    EXPECT_FALSE(store->isPaired());
}

TEST_F(Pairing, AnUnpairingThatCanNotRemoveShutsTheDoorAndSaysSo) {
    pairWith(grant);
    secrets.fail({Call::remove}, 7);
    try {
        loop.runUntilDone(store->unpair());
        ADD_FAILURE() << "nothing was said";
    } catch (const PairingError& error) {
        EXPECT_EQ(error.kind(), Case::keychain);
    }
    EXPECT_FALSE(store->isPaired());
    EXPECT_FALSE(store->authorizes("Bearer s3cret"));
}

TEST_F(Pairing, ASecondExchangeWaitsForTheFirst) {
    client.hold();
    client.willAnswer(200, R"({"credential":"first"})");
    client.willAnswer(200, R"({"credential":"second"})");
    auto first = store->pair("http://localhost:1", "ONE");
    auto second = store->pair("http://localhost:2", "TWO");
    first.start();
    second.start();
    EXPECT_THAT(client.requests(), SizeIs(1));

    client.releaseOne();
    first.take();
    EXPECT_EQ(store->credential(), "first");
    EXPECT_EQ(store->serverURL(), "http://localhost:1");
    EXPECT_THAT(client.requests(), SizeIs(2));

    client.releaseOne();
    second.take();
    EXPECT_EQ(store->credential(), "second");
    EXPECT_EQ(store->serverURL(), "http://localhost:2");
}

TEST_F(Pairing, UnpairingDuringAnExchangeHasTheLastWord) {
    pairWith(grant);
    client.hold();
    client.willAnswer(200, R"({"credential":"late"})");
    auto exchange = store->pair(agentServer, "CODE");
    exchange.start();
    auto unpairing = store->unpair();
    unpairing.start();
    EXPECT_FALSE(store->isPaired());
    client.releaseOne();
    exchange.take();
    unpairing.take();
    EXPECT_FALSE(store->isPaired());
    EXPECT_TRUE(memory.items().empty());
}

TEST_F(Pairing, ADroppedExchangeChangesNothingAndBlocksNobody) {
    client.hold();
    {
        auto dropped = store->pair(agentServer, "CODE");
        dropped.start();
        EXPECT_EQ(client.waiting(), 1U);
    }
    EXPECT_EQ(client.waiting(), 0U);
    EXPECT_FALSE(store->isPaired());
    client.willAnswer(200, grant);
    auto next = store->pair(agentServer, "CODE");
    next.start();
    client.releaseOne();
    next.take();
    EXPECT_TRUE(store->isPaired());
}

} // namespace
} // namespace bridge
