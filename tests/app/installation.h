#pragma once

#include "adapters/curl/curl_http_client.h"
#include "adapters/jsonfile/consent_file.h"
#include "app/bridge_model.h"
#include "app/process.h"
#include "base/log.h"
#include "base/record.h"
#include "tests/fakes/failing_event_store.h"
#include "tests/fakes/failing_secure_store.h"
#include "tests/fakes/memory_folder_chooser.h"
#include "tests/fakes/memory_login_item.h"
#include "tests/fakes/memory_privacy_settings.h"
#include "tests/fakes/sample_event_store.h"
#include "tests/fakes/scripted_consent_prompt.h"
#include "tests/support/temporary_folder.h"
#include "tools/agent_server/stand_in_agent_server.h"

#include <fcntl.h>
#include <gtest/gtest.h>

namespace bridge {

inline FailingSecureStore& putFailingStoreBefore(SecureStore& real, Platform& platform) {
    auto failing = std::make_unique<FailingSecureStore>(real);
    auto& seen = *failing;
    platform.secureStore = std::move(failing);
    return seen;
}

inline FailingEventStore& putFailingStoreBefore(EventStore& real, Platform& platform) {
    auto failing = std::make_unique<FailingEventStore>(real);
    auto& seen = *failing;
    platform.eventStore = std::move(failing);
    return seen;
}

// Puts it in the place of the one that is there.
template <typename Fake, typename Port> Fake& replaceBy(std::unique_ptr<Fake> fake, std::unique_ptr<Port>& place) {
    auto& seen = *fake;
    place = std::move(fake);
    return seen;
}

// One run of the program over a folder, put together as the program does it. Its stores can be made to fail, and the
// user is the test.
class ProgramRun {
public:
    // The calendars are the test's own and outlive the run.
    ProgramRun(const TemporaryFolder& folder, EventStore& calendars)
        : platform(openEmbeddedPlatform(loop, folder.path(), std::make_unique<ScriptedConsentPrompt>())),
          eventStore(putFailingStoreBefore(calendars, platform)) {}

    void start() { loop.runUntilDone(model.start()); }
    void pair(StandInAgentServer& agentServer) { pair(agentServer.url(), agentServer.issueCode()); }
    void pair(const std::string& url, const std::string& code) {
        model.agentServerURL.set(url);
        loop.runUntilDone(model.pair(code));
    }
    void unpair() { loop.runUntilDone(model.unpair()); }

    // Of a task that was started.
    void finish(Task<> task) {
        while (!task.done())
            loop.waitOnce();
        task.take();
    }

    // GET /health over the wire: the status, and the code of an error.
    std::pair<int, std::string> health(const std::string& credential) {
        CurlHTTPClient client(loop);
        const std::string authorization = "Bearer " + credential;
        const HTTPRequest request{
            "GET", "http://127.0.0.1:32123/health", {{"Authorization", authorization}}, "", std::chrono::seconds(60)};
        const auto response = loop.runUntilDone(client.send(request));
        const auto answer = parseJSON(response.body);
        const auto error = answer.object()->find("error");
        if (error == answer.object()->end()) return {response.status, ""};
        return {response.status, *error->second.object()->at("code").string()};
    }

    EventLoop loop;
    Platform platform;
    FailingEventStore& eventStore;
    std::unique_ptr<SecureStore> secrets = std::move(platform.secureStore);
    FailingSecureStore& secureStore = putFailingStoreBefore(*secrets, platform);
    ScriptedConsentPrompt& user = dynamic_cast<ScriptedConsentPrompt&>(*platform.consentPrompt);
    ConsentFile& consent = dynamic_cast<ConsentFile&>(*platform.authorization);
    MemoryFolderChooser& folderChooser = replaceBy(std::make_unique<MemoryFolderChooser>(), platform.folderChooser);
    MemoryLoginItem& loginItem = replaceBy(std::make_unique<MemoryLoginItem>(), platform.loginItem);
    MemoryPrivacySettings& privacySettings =
        replaceBy(std::make_unique<MemoryPrivacySettings>(), platform.privacySettings);
    BridgeCapabilityPolicy policy{*platform.defaults};
    BridgeModel model{loop, platform, policy};
};

class InstallationTest : public testing::Test {
protected:
    InstallationTest() {
        prepareProcess();
        log::writeTo(m_nowhere.get());
        restart();
    }
    ~InstallationTest() override {
        run.reset();
        log::writeTo(STDERR_FILENO);
    }

    void restart() {
        run.reset();
        run = std::make_unique<ProgramRun>(folder, calendars);
    }
    BridgeModel& model() { return run->model; }
    std::string message() { return model().pairingStatusMessage.get().value_or(""); }
    JSONValue::Object storedDefaults() const { return *parseJSON(getFile(folder / profile::defaults)).object(); }

    TemporaryFolder folder;
    SampleEventStore calendars;
    StandInAgentServer agentServer;
    std::unique_ptr<ProgramRun> run;

private:
    FileDescriptor m_nowhere{open("/dev/null", O_WRONLY | O_CLOEXEC)};
};

// What health() answers.
using Health = std::pair<int, std::string>;
inline const Health served{200, ""};
inline const Health refusedUnpaired{401, "pairing_required"};
inline const Health refusedStranger{401, "unauthorized"};

} // namespace bridge
