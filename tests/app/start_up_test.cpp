#include "adapters/jsonfile/consent_file.h"
#include "app/no_consent_prompt.h"
#include "tests/app/installation.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace bridge {
namespace {

using State = BridgePermissionState;

class StartUp : public InstallationTest {
protected:
    std::vector<State> permissions() {
        return {model().calendarPermission.get(), model().remindersPermission.get(), model().contactsPermission.get(),
                model().musicPermission.get(), model().locationPermission.get()};
    }
};

// Somebody else on the bridge's port.
FileDescriptor takePort() {
    FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const int on = 1;
    setsockopt(socket.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(32123);
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(bind(socket.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
    EXPECT_EQ(listen(socket.get(), 1), 0);
    return socket;
}

TEST_F(StartUp, KnowsNothingBeforeItBegins) {
    EXPECT_EQ(permissions(), std::vector(5, State::unknown));
    EXPECT_TRUE(model().calendars.get().empty());
    EXPECT_TRUE(model().reminderLists.get().empty());
    EXPECT_TRUE(model().allowedCalendarIDs.get().empty());
    EXPECT_TRUE(model().allowedReminderListIDs.get().empty());
    EXPECT_TRUE(model().enabledCapabilities.get().empty());
    EXPECT_EQ(model().agentServerURL.get(), "http://127.0.0.1:3000");
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_FALSE(model().pairingInProgress.get());
    EXPECT_EQ(model().pairingStatusMessage.get(), std::nullopt);
    EXPECT_EQ(model().lastError.get(), std::nullopt);
    EXPECT_EQ(model().httpServer.state.get(), BridgeServerState(ServerStopped()));
}

TEST_F(StartUp, AFreshInstallationEnablesNothingAndServesNobody) {
    run->start();
    EXPECT_EQ(permissions(), std::vector(5, State::notDetermined));
    EXPECT_TRUE(model().enabledCapabilities.get().empty());
    EXPECT_TRUE(model().files.roots.get().empty());
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_EQ(model().lastError.get(), std::nullopt);
    EXPECT_EQ(model().httpServer.state.get(), BridgeServerState(ServerListening{32123}));
    EXPECT_EQ(run->health(""), refusedUnpaired);
}

TEST_F(StartUp, FoldersOfAnOlderVersionEnableEverything) {
    run.reset();
    putFile(folder / profile::defaults, R"({"authorizedFileRoots.v1":"W10="})");
    restart();
    run->start();
    EXPECT_EQ(model().enabledCapabilities.get().size(), capabilityCount);
}

TEST_F(StartUp, PublishesWhatTheUserAllowed) {
    NoConsentPrompt nobody;
    ConsentFile consent(folder / profile::consent, nobody);
    consent.setStatus(PrivacyService::calendar, 3);
    consent.setStatus(PrivacyService::reminders, 4);
    consent.setStatus(PrivacyService::contacts, 4);
    consent.setStatus(PrivacyService::music, std::nullopt);
    consent.setStatus(PrivacyService::location, 4);
    restart();
    run->policy.setEnabled(BridgeCapability::filesRead, true);
    run->start();
    EXPECT_EQ(permissions(),
              (std::vector{State::fullAccess, State::writeOnly, State::limited, State::unavailable, State::unknown}));
    EXPECT_EQ(model().enabledCapabilities.get(), std::set{BridgeCapability::filesRead});
}

TEST_F(StartUp, ServesOnlyOnceEverythingElseIsKnown) {
    run->start();
    run->pair(agentServer);
    run->policy.setEnabled(BridgeCapability::filesRead, true);
    restart();

    std::vector<bool> knewAll;
    const auto watch = model().httpServer.state.observe([&](const BridgeServerState&) {
        knewAll.push_back(model().isPaired.get() && model().calendarPermission.get() == State::notDetermined &&
                          model().enabledCapabilities.get().size() == 1);
    });
    run->start();
    EXPECT_EQ(knewAll, (std::vector{true, true})); // starting, listening
}

TEST_F(StartUp, RefreshFollowsTheSwitches) {
    run->start();
    run->policy.setEnabled(BridgeCapability::directions, true);
    EXPECT_TRUE(model().enabledCapabilities.get().empty());
    run->loop.runUntilDone(model().refresh());
    EXPECT_EQ(model().enabledCapabilities.get(), std::set{BridgeCapability::directions});
}

TEST_F(StartUp, ASecureStoreThatFailsIsNotFatal) {
    run->start();
    run->pair(agentServer);
    restart();
    run->secureStore.fail({FailingSecureStore::Call::read}, -25308);
    run->start();
    EXPECT_EQ(model().lastError.get(), "The pairing credential could not be read: The secure store fails on purpose.");
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_EQ(model().httpServer.state.get(), BridgeServerState(ServerListening{32123}));
    EXPECT_EQ(run->health(agentServer.credentials().at(0)), refusedUnpaired);

    // The credential was not lost, only out of reach.
    run->secureStore.recover();
    run->loop.runUntilDone(model().refreshOnOpening());
    EXPECT_FALSE(model().isPaired.get());
    EXPECT_NE(model().lastError.get(), std::nullopt);
    run->loop.runUntilDone(model().refresh());
    EXPECT_TRUE(model().isPaired.get());
    EXPECT_EQ(model().lastError.get(), std::nullopt);
    EXPECT_EQ(run->health(agentServer.credentials().at(0)), served);

    restart();
    run->start();
    EXPECT_EQ(run->health(agentServer.credentials().at(0)), served);
}

TEST_F(StartUp, APairingMakesUpForACredentialThatCanNotBeRead) {
    run->secureStore.fail({FailingSecureStore::Call::read}, -25308);
    run->start();
    EXPECT_NE(model().lastError.get(), std::nullopt);
    run->pair(agentServer);
    EXPECT_EQ(model().lastError.get(), std::nullopt);
    EXPECT_TRUE(model().isPaired.get());
}

TEST_F(StartUp, ATakenPortIsNotFatal) {
    auto other = takePort();
    run->start();
    const auto* failed = std::get_if<ServerFailed>(&model().httpServer.state.get());
    ASSERT_TRUE(failed);
    EXPECT_EQ(failed->message, "127.0.0.1:32123: address already in use");
    run->pair(agentServer);
    EXPECT_TRUE(model().isPaired.get());

    model().httpServer.start();
    EXPECT_TRUE(std::holds_alternative<ServerFailed>(model().httpServer.state.get()));
    other = {};
    model().httpServer.start();
    EXPECT_EQ(model().httpServer.state.get(), BridgeServerState(ServerListening{32123}));
    EXPECT_EQ(run->health(agentServer.credentials().at(0)), served);
}

TEST_F(StartUp, ARestartFindsEverythingAsItWas) {
    run->start();
    run->pair(agentServer);
    std::filesystem::create_directory(folder / "First");
    std::filesystem::create_directory(folder / "Second");
    ASSERT_TRUE(model().files.addFolder(folder.file("First")));
    ASSERT_TRUE(model().files.addFolder(folder.file("Second")));
    run->policy.setGroupEnabled(BridgeCapabilityGroup::music, true);
    const auto installationID = model().pairingStore.installationID();
    const auto roots = model().files.roots.get();
    const auto capabilities = run->policy.enabledCapabilities();

    restart();
    EXPECT_EQ(model().files.roots.get(), roots);
    EXPECT_EQ(model().agentServerURL.get(), agentServer.url());
    run->start();
    EXPECT_TRUE(model().isPaired.get());
    EXPECT_EQ(model().pairingStore.installationID(), installationID);
    EXPECT_EQ(model().enabledCapabilities.get(), capabilities);
    EXPECT_EQ(run->health(agentServer.credentials().at(0)), served);
}

} // namespace
} // namespace bridge
